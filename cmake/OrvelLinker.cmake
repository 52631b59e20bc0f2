# lld links a test program in a quarter of the time. It is used where it is installed.
find_program(ORVEL_LLD ld.lld PATHS /usr/lib/llvm-19/bin NO_DEFAULT_PATH)
if(ORVEL_LLD)
    get_filename_component(folder ${ORVEL_LLD} DIRECTORY)
    add_link_options(-fuse-ld=lld)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_link_options(-B${folder})
    endif()
endif()
