# Libraries of the project, and the rules that hold between them.
#
#   orvel_room(engine DEPENDS platform_ports orvel_preferences)
#       the library of the folder it is called in. A room may use lower rooms and nothing else:
#       no Qt, no packaged library, no room above it. Breaking this stops the configuration.
#   orvel_library(platform_x11 DEPENDS platform_ports USES orvel::x11_libraries)
#       any other library (back ends, views); it may use what it needs.
#
# Both collect the *.cpp of the folder and its subfolders except view/ and EXCLUDE; SOURCES
# overrides the collection. A library without sources becomes a header-only one.

# A room may depend only on targets of a lower rank.
set(ORVEL_RANKS
    platform_ports=0
    orvel_preferences=1
    engine=2
    overlay=3 clipboard=3 finder_menu=3 settings_ui=3
    orvel_app=4)

function(orvel_rank target out)
    set(${out} "" PARENT_SCOPE)
    foreach(row IN LISTS ORVEL_RANKS)
        if(row MATCHES "^${target}=([0-9]+)$")
            set(${out} ${CMAKE_MATCH_1} PARENT_SCOPE)
        endif()
    endforeach()
endfunction()

# Language level, include root and warnings: what every target of ours shares.
function(orvel_defaults target)
    target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR})
    orvel_warnings(${target})
endfunction()

function(orvel_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;EXCLUDE;DEPENDS;USES")
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unknown arguments: ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    set(sources ${ARG_SOURCES})
    if(NOT "SOURCES" IN_LIST ARGV)  # An empty list stays empty.
        file(GLOB_RECURSE sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp)
        list(FILTER sources EXCLUDE REGEX "(^|/)view/")
        foreach(pattern IN LISTS ARG_EXCLUDE)
            list(FILTER sources EXCLUDE REGEX "${pattern}")
        endforeach()
    endif()
    if(sources)
        add_library(${name} STATIC ${sources})
        target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_USES})
        orvel_defaults(${name})
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ${ARG_DEPENDS})
    endif()
endfunction()

function(orvel_room name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;EXCLUDE;DEPENDS")
    orvel_rank(${name} rank)
    if(rank STREQUAL "")
        message(FATAL_ERROR "${name}: not a room; its rank belongs into cmake/OrvelRoom.cmake")
    endif()
    orvel_library(${ARGV})
    set_property(GLOBAL APPEND PROPERTY ORVEL_ROOMS ${name})
endfunction()

# Checks the finished links, so that a later target_link_libraries cannot slip past.
function(orvel_check_rooms)
    get_property(rooms GLOBAL PROPERTY ORVEL_ROOMS)
    foreach(room IN LISTS rooms)
        orvel_rank(${room} rank)
        get_target_property(private ${room} LINK_LIBRARIES)
        get_target_property(public ${room} INTERFACE_LINK_LIBRARIES)
        foreach(link IN LISTS private public)
            if(link MATCHES "-NOTFOUND$")
                continue()
            endif()
            string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" link "${link}")
            orvel_rank("${link}" link_rank)
            if(link_rank STREQUAL "")
                message(SEND_ERROR
                    "room '${room}' links '${link}': rooms use the standard library and lower rooms only")
            elseif(NOT link_rank LESS rank)
                message(SEND_ERROR
                    "room '${room}' links '${link}', which is not below it: declare a command interface instead")
            endif()
        endforeach()
    endforeach()
endfunction()
