# Asks a real application, in an embedded desktop of its own.
if(TARGET orvel-session)
    orvel_bench(text_caret_bench OWN_MAIN SOURCES text_caret_bench.cpp rig_run.cpp
        LIBS orvel_rig platform_x11 platform_qt_core Qt6::Core)
endif()
