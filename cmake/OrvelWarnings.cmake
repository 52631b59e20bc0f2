# Warnings for our own code. They are errors: a warning that may stay is one that nobody reads.
function(orvel_warning_flags out)
    set(flags
        -Wall -Wextra -Wpedantic -Werror
        -Wshadow -Wconversion -Wno-sign-conversion
        -Wnon-virtual-dtor -Woverloaded-virtual
        -Wcast-align -Wcast-qual -Wformat=2 -Wundef
        -Wextra-semi -Wimplicit-fallthrough)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        list(APPEND flags -Wlogical-op -Wduplicated-cond -Wduplicated-branches)
        # g++ 12 warns wrongly about std::string and std::optional when it optimises
        # (gcc bugs 105329 and 80635); clang covers both in the asan and tidy presets.
        list(APPEND flags -Wno-restrict -Wno-maybe-uninitialized)
    else()
        list(APPEND flags -Wconditional-uninitialized -Wunreachable-code -Wunused-member-function)
        # libstdc++ 12's std::stable_sort uses what it deprecates itself.
        list(APPEND flags -Wno-deprecated-declarations)
    endif()
    set(${out} ${flags} PARENT_SCOPE)
endfunction()

function(orvel_warnings target)
    orvel_warning_flags(flags)
    target_compile_options(${target} PRIVATE ${flags})
endfunction()
