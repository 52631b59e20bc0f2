# The event path in a process of its own, with rules that the tests give it.
add_executable(orvel-tap-host tap_host.cpp)
orvel_defaults(orvel-tap-host)
target_link_libraries(orvel-tap-host PRIVATE platform_x11 Qt6::Core)
add_library(orvel_tap_session OBJECT tap_session.cpp)
orvel_defaults(orvel_tap_session)
target_compile_definitions(orvel_tap_session PRIVATE ORVEL_TAP_HOST="$<TARGET_FILE:orvel-tap-host>")
target_link_libraries(orvel_tap_session PUBLIC orvel_session_test PRIVATE orvel::x11_libraries)
add_dependencies(orvel_tap_session orvel-tap-host)

foreach(test tap_keys_test tap_layouts_test tap_surroundings_test tap_pointer_test tap_death_test)
    orvel_test(${test}
        SOURCES ${test}.cpp
        LIBS orvel_tap_session orvel_session_test
        LABELS session WHOLE)
endforeach()

orvel_test(caret_key_delay_test
    SOURCES caret_key_delay_test.cpp
    LIBS orvel_tap_session orvel_session_test
    LABELS session WHOLE)

# The program itself, as a user starts it.
foreach(test orvel_run_test orvel_habits_test orvel_editor_test input_method_habits_test session_faults_test)
    orvel_test(${test}
        SOURCES ${test}.cpp
        LIBS orvel_tap_session orvel_session_test
        LABELS session WHOLE)
    target_compile_definitions(${test} PRIVATE ORVEL_PROGRAM="$<TARGET_FILE:orvel>")
    add_dependencies(${test} orvel orvel-session)
endforeach()
orvel_test(resident_test
    SOURCES resident_test.cpp
    LIBS orvel_tap_session orvel_session_test
    LABELS session WHOLE)
add_dependencies(resident_test orvel orvel-session orvel-force-quit)
if(ORVEL_SESSION_TESTS)
    add_test(NAME demo_desktop
        COMMAND demo-desktop --program $<TARGET_FILE:orvel>
            --screenshot ${CMAKE_CURRENT_BINARY_DIR}/demo.png)
    set_tests_properties(demo_desktop PROPERTIES LABELS session TIMEOUT 180)
endif()
