include(GoogleTest)

# orvel_test(NAME SOURCES... LIBS... [LABELS unit|session|view] [TIMEOUT s] [SERIAL] [WHOLE] [OWN_MAIN])
#
# One GoogleTest program. Each of its cases becomes one test of ctest, or with WHOLE the program
# as it is (for suites whose fixture is expensive, such as a real X server).
#   unit     needs nothing but the process; also runs under the sanitizers
#   view     Qt without a screen; also runs under the sanitizers
#   session  starts a real X server; one at a time, beside tests of the other kinds
# Further labels name groups for `ctest -L`.
# Tests run in the top folder of the sources and find the build in ORVEL_BUILD_DIR.
function(orvel_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "SERIAL;WHOLE;OWN_MAIN" "TIMEOUT" "SOURCES;LIBS;LABELS")
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unknown arguments: ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT ARG_LABELS)
        set(ARG_LABELS unit)
    endif()
    set(kinds ${ARG_LABELS})
    list(FILTER kinds INCLUDE REGEX "^(unit|session|view)$")
    list(LENGTH kinds count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "${name}: exactly one of the labels unit, session and view, not '${ARG_LABELS}'")
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
        if("session" IN_LIST ARG_LABELS)
            set(ARG_TIMEOUT 180)
        endif()
    endif()

    add_executable(${name} ${ARG_SOURCES})
    if(kinds STREQUAL "session" AND NOT ORVEL_SESSION_TESTS)
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL TRUE)
    else()
        add_dependencies(tests ${name})
    endif()
    orvel_defaults(${name})
    # The macros of GoogleTest leave variadic arguments out.
    target_compile_options(${name} PRIVATE -Wno-gnu-zero-variadic-macro-arguments)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest Threads::Threads)
    if(NOT ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE GTest::gmock_main)
    endif()

    if(kinds STREQUAL "session" AND NOT ORVEL_SESSION_TESTS)
        return()
    endif()
    set(properties TIMEOUT ${ARG_TIMEOUT})
    if(kinds STREQUAL "session")
        list(APPEND properties RESOURCE_LOCK desktop)
    endif()
    if(ARG_SERIAL)
        list(APPEND properties RUN_SERIAL TRUE)
    endif()
    set(environment "ORVEL_SOURCE_DIR=${CMAKE_SOURCE_DIR};ORVEL_BUILD_DIR=${CMAKE_BINARY_DIR}")
    if("view" IN_LIST ARG_LABELS)
        list(APPEND environment QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software)
    endif()
    if(ARG_WHOLE)
        add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
        set_tests_properties(${name} PROPERTIES ${properties}
            ENVIRONMENT "${environment}" LABELS "${ARG_LABELS}")
    else()
        gtest_discover_tests(${name}
            DISCOVERY_MODE PRE_TEST
            DISCOVERY_TIMEOUT 60
            TEST_LIST ${name}_cases
            WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
            PROPERTIES ${properties})
        # Lists do not survive the way through gtest_discover_tests: set them once the cases are known.
        set(lists ${CMAKE_CURRENT_BINARY_DIR}/${name}_lists.cmake)
        file(CONFIGURE OUTPUT ${lists} @ONLY CONTENT
            [[set_tests_properties(${@name@_cases} PROPERTIES ENVIRONMENT "@environment@" LABELS "@ARG_LABELS@")
]])
        set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${lists})
    endif()
endfunction()

# orvel_fuzzer(NAME SOURCES... LIBS... [CORPUS dir]): a libFuzzer program, listed for `make fuzz`.
function(orvel_fuzzer name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "CORPUS" "SOURCES;LIBS")
    add_executable(${name} ${ARG_SOURCES})
    orvel_defaults(${name})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
    set(corpus "")
    if(ARG_CORPUS)
        get_filename_component(corpus ${ARG_CORPUS} ABSOLUTE)
    endif()
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzzers)
    add_dependencies(fuzzers ${name})
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/fuzzers/${name}.corpus CONTENT "${corpus}\n")
endfunction()

# orvel_bench(NAME SOURCES... LIBS...): a Google Benchmark program, built by the target `benches`.
function(orvel_bench name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "OWN_MAIN" "" "SOURCES;LIBS")
    add_executable(${name} EXCLUDE_FROM_ALL ${ARG_SOURCES})
    orvel_defaults(${name})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} benchmark::benchmark)
    if(NOT ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE benchmark::benchmark_main)
    endif()
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/benches)
    add_dependencies(benches ${name})
endfunction()
