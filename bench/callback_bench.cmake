orvel_bench(callback_bench OWN_MAIN SOURCES callback_bench.cpp counting_allocator.cpp
    LIBS engine platform_memory platform_x11_files)
