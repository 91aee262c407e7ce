# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# connui_add_library(<target>
#     PACKAGE <CMake package>         # also names the exported set and the package's folder
#     NAMESPACE <ns> NAME <name>      # programs link <ns>::<name>
#     DESCRIPTION <one line>          # for the pkg-config file
#     INCLUDE <dir>                   # the public headers' folder, relative to the current one
#     CLASSES <Class>...              # each has <class>.h in INCLUDE and gets a forwarding header <Class>
#     SOURCES <file>...
#     [PUBLIC <target>...]            # libraries that the public headers need
#     [PRIVATE <target>...]
#     [FIND <package and components>...]  # one string each: what a program's find_package must bring
#     [REQUIRES <pkg-config module>...]          # those that the public headers need
#     [REQUIRES_PRIVATE <pkg-config module>...])
#
# One shared library with everything that a program outside needs to build against it: hidden symbols and an
# export header <target>_export.h, forwarding headers, a CMake package and a pkg-config file, all of it installed.
# The code is compiled once, into <target>-objects, so that a test can look at private classes as well.
function(connui_add_library target)
    cmake_parse_arguments(ARG "" "PACKAGE;NAMESPACE;NAME;DESCRIPTION;INCLUDE"
        "CLASSES;SOURCES;PUBLIC;PRIVATE;FIND;REQUIRES;REQUIRES_PRIVATE" ${ARGN})

    set(forwarding ${CMAKE_CURRENT_BINARY_DIR}/include/${target})
    ecm_generate_headers(forwarding_headers
        HEADER_NAMES ${ARG_CLASSES} RELATIVE ${ARG_INCLUDE} OUTPUT_DIR ${forwarding} REQUIRED_HEADERS headers)

    add_library(${target}-objects OBJECT ${ARG_SOURCES} ${headers})
    add_library(${target} SHARED)
    add_library(${ARG_NAMESPACE}::${ARG_NAME} ALIAS ${target})
    target_link_libraries(${target}-objects PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${target}-objects ${ARG_PRIVATE})

    # From where a library is to what it finds beside it, in the installed tree as well as in the build's.
    file(RELATIVE_PATH data ${KDE_INSTALL_FULL_LIBDIR} ${KDE_INSTALL_FULL_DATADIR})
    file(RELATIVE_PATH programs ${KDE_INSTALL_FULL_LIBDIR} ${KDE_INSTALL_FULL_LIBEXECDIR})
    target_compile_definitions(${target}-objects PRIVATE
        DATA_FROM_LIBRARIES="${data}" PROGRAMS_FROM_LIBRARIES="${programs}")

    ecm_setup_version(PROJECT VARIABLE_PREFIX library SOVERSION ${PROJECT_VERSION_MAJOR}
        PACKAGE_VERSION_FILE ${CMAKE_CURRENT_BINARY_DIR}/${ARG_PACKAGE}ConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    string(REPLACE "-" "_" base ${target})
    ecm_generate_export_header(${target}-objects
        VERSION ${PROJECT_VERSION} BASE_NAME ${base} EXPORT_FILE_NAME ${forwarding}/${base}_export.h)

    set(installed ${KDE_INSTALL_INCLUDEDIR}/${target})
    foreach(built ${target}-objects ${target})
        target_include_directories(${built} PUBLIC
            $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/${ARG_INCLUDE}> $<BUILD_INTERFACE:${forwarding}>)
    endforeach()
    target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${installed}>)
    set_target_properties(${target} PROPERTIES
        VERSION ${library_VERSION} SOVERSION ${library_SOVERSION} EXPORT_NAME ${ARG_NAME} INSTALL_RPATH $ORIGIN)

    install(TARGETS ${target} EXPORT ${ARG_PACKAGE}Targets ${KDE_INSTALL_TARGETS_DEFAULT_ARGS})
    install(FILES ${headers} ${forwarding_headers} ${forwarding}/${base}_export.h DESTINATION ${installed})

    set(package ${KDE_INSTALL_CMAKEPACKAGEDIR}/${ARG_PACKAGE})
    list(TRANSFORM ARG_FIND REPLACE "(.+)" "find_dependency(\\1)" OUTPUT_VARIABLE find_dependencies)
    list(JOIN find_dependencies "\n" find_dependencies)
    configure_package_config_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/Config.cmake.in ${ARG_PACKAGE}Config.cmake
        INSTALL_DESTINATION ${package} NO_SET_AND_CHECK_MACRO)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${ARG_PACKAGE}Config.cmake
        ${CMAKE_CURRENT_BINARY_DIR}/${ARG_PACKAGE}ConfigVersion.cmake DESTINATION ${package})
    install(EXPORT ${ARG_PACKAGE}Targets NAMESPACE ${ARG_NAMESPACE}:: DESTINATION ${package})

    # Like the CMake package, the pkg-config file may be installed under any prefix: it starts from where it is.
    file(RELATIVE_PATH prefix ${KDE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
    file(RELATIVE_PATH libdir ${CMAKE_INSTALL_PREFIX} ${KDE_INSTALL_FULL_LIBDIR})
    file(RELATIVE_PATH includedir ${CMAKE_INSTALL_PREFIX} ${KDE_INSTALL_FULL_INCLUDEDIR}/${target})
    list(JOIN ARG_REQUIRES " " requires)
    list(JOIN ARG_REQUIRES_PRIVATE " " requires_private)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/library.pc.in ${target}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${target}.pc DESTINATION ${KDE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
