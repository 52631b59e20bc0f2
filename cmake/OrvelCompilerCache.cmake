# ccache, set up so that several checkouts of this project share their hits: paths below the
# checkout are hashed relative to it, and the build directory is not hashed at all.
find_program(ORVEL_CCACHE ccache)
if(ORVEL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${ORVEL_CCACHE})
endif()
