# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# What every directory of the tree is built with. Included by the root project and by platform/,
# which also builds on its own.
include_guard(GLOBAL)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()
# Programs and tests find the libraries of the same build without being installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

option(CONNUI_WERROR "Treat compiler warnings as errors" OFF)
option(CONNUI_COVERAGE "Instrument for coverage" OFF)
option(CONNUI_FUZZ "Build the fuzz targets, with clang (the preset fuzz)" OFF)
option(CONNUI_PRECOMPILE "Compile Qt's headers once for all files" OFF)

if(CONNUI_FUZZ)
    # The fuzz target brings what the instrumented libraries call.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
else()
    # A function that a library declares and forgets shows when the library is linked, not when a program is.
    string(APPEND CMAKE_SHARED_LINKER_FLAGS " -Wl,--no-undefined")
endif()

set(QT_MAJOR_VERSION 6)
include(KDEInstallDirs6)
include(ECMEnableSanitizers)
include(ECMGenerateExportHeader)
include(ECMGenerateHeaders)
include(ECMGeneratePkgConfigFile)
include(ECMAddTests)
include(CMakePackageConfigHelpers)
include(ConnUiLibrary)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets DBus Svg)
if(BUILD_TESTING)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_compile_options(-Wall -Wextra)
if(CONNUI_WERROR)
    add_compile_options(-Werror)
endif()
if(CONNUI_COVERAGE)
    add_compile_options(--coverage -O0)
    add_link_options(--coverage)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The files that are compiled as one count as its headers, whose classes must not use what is local to a file.
    add_compile_options(-Wno-subobject-linkage)
endif()
add_compile_definitions(
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_KEYWORDS
    QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
)
