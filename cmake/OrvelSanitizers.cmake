# Instrumentation is a property of a whole build, never of one target: mixing instrumented and
# plain objects gives false reports.
if(ORVEL_SANITIZE)
    list(JOIN ORVEL_SANITIZE "," sanitizers)
    add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${sanitizers})
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        add_compile_options(-fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/sanitizer_ignore.txt)
    endif()
endif()

if(ORVEL_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "ORVEL_FUZZ needs clang: use the preset 'fuzz'")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(ORVEL_COVERAGE)
    add_compile_options(--coverage -fprofile-abs-path)
    add_link_options(--coverage)
endif()
