# orvel_qml_module(overlay_view URI Orvel.Overlay DEPENDS overlay [SINGLETONS Theme.qml])
#
# The QML module of the folder it is called in: its *.qml, and its *.cpp and *.hpp as QML types.
# Programs and tests link NAME and NAMEplugin. Files are loaded by their address in the program,
# qrc:/qt/qml/Orvel/Overlay/TaskbarView.qml, with qrc:/qt/qml as an import path.
function(orvel_qml_module name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "URI" "DEPENDS;SINGLETONS")
    if(ARG_UNPARSED_ARGUMENTS OR NOT ARG_URI)
        message(FATAL_ERROR "${name}: orvel_qml_module(NAME URI uri DEPENDS... SINGLETONS...)")
    endif()
    file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp *.hpp)
    file(GLOB qml CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.qml)
    set_source_files_properties(${ARG_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    string(REPLACE "." "/" folder ${ARG_URI})

    qt_add_library(${name} STATIC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    qt_add_qml_module(${name}
        URI ${ARG_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${folder}
        IMPORTS QtQuick
        SOURCES ${sources}
        QML_FILES ${qml})
    # Generated code does not meet our warnings, so only what we wrote gets them.
    orvel_warning_flags(flags)
    set_property(SOURCE ${sources} APPEND PROPERTY COMPILE_OPTIONS ${flags})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
    # The generated registrations include our headers by bare name.
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC Qt6::Quick ${ARG_DEPENDS})
endfunction()
