# The clipboard among applications, in an embedded desktop of their own.
if(ORVEL_SESSION)
    orvel_bench(pasteboard_bench OWN_MAIN
        SOURCES pasteboard_bench.cpp services_bench_main.cpp rig_run.cpp
        LIBS orvel_rig platform_x11 platform_qt_core Qt6::Core)
    add_dependencies(pasteboard_bench orvel_rig_clients)
endif()
