# Drives the program itself, in an embedded desktop of its own.
if(TARGET orvel-session)
    orvel_bench(panel_bench SOURCES panel_bench.cpp LIBS orvel_rig)
    target_compile_definitions(panel_bench PRIVATE ORVEL_PROGRAM="$<TARGET_FILE:orvel>")
    add_dependencies(panel_bench programs)
endif()
