# The settings panel of the program itself.
add_library(orvel_panel_session OBJECT panel_session.cpp)
orvel_defaults(orvel_panel_session)
target_compile_definitions(orvel_panel_session PRIVATE ORVEL_PROGRAM="$<TARGET_FILE:orvel>")
target_link_libraries(orvel_panel_session PUBLIC orvel_tap_session)
add_dependencies(orvel_panel_session orvel orvel-session)

foreach(test panel_tray_test panel_notifier_test panel_onboarding_test panel_appearance_test panel_access_test
        panel_surroundings_test)
    orvel_test(${test}
        SOURCES ${test}.cpp
        LIBS orvel_panel_session orvel_tap_session orvel_session_test
        LABELS session WHOLE)
endforeach()
