# Drives the program itself, in an embedded desktop of its own.
if(TARGET orvel-session)
    orvel_bench(session_latency_bench OWN_MAIN
        SOURCES session_latency_bench.cpp rig_run.cpp
        LIBS orvel_rig)
    target_compile_definitions(session_latency_bench PRIVATE ORVEL_BUILD_DIR="${CMAKE_BINARY_DIR}")
    add_dependencies(session_latency_bench programs orvel_rig_clients)
endif()
