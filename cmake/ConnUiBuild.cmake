# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# The build settings of every directory of the tree. Included by the root project and by platform/,
# which also builds on its own.
include_guard(GLOBAL)

set(QT_MAJOR_VERSION 6)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# An installed tree may be moved: its programs and libraries find the libraries from where they are themselves.
set(KDE_SKIP_RPATH_SETTINGS TRUE)
# Folders that the build makes are named before they exist.
set(KDE_SKIP_MISSING_INCLUDE_DIRS_WARNINGS_SETTINGS TRUE)

# The catalogues are part of the tree: KDE's own are fetched from where its translators keep them.
add_custom_target(fetch-translations COMMENT "All texts are in translations/")

include(KDEInstallDirs6)
include(KDECMakeSettings)
include(KDECompilerSettings NO_POLICY_SCOPE)
# With `auto`, a sum of strings is a string, and bytes go to functions that take a C string, QtTest's above all.
remove_definitions(-DQT_USE_QSTRINGBUILDER -DQT_NO_CAST_FROM_BYTEARRAY)
include(CMakePackageConfigHelpers)
include(ECMAddTests)
include(ECMGenerateExportHeader)
include(ECMGenerateHeaders)
include(ECMSetupVersion)
include(FeatureSummary)
include(ConnUiHardening)
include(ConnUiLibrary)
include(ConnUiMetainfo)
include(ConnUiProxy)
include(ConnUiWindowless)

# A program that links a library sees only its public headers.
set(CMAKE_INCLUDE_CURRENT_DIR_IN_INTERFACE OFF)
file(RELATIVE_PATH libraries_from_programs ${KDE_INSTALL_FULL_BINDIR} ${KDE_INSTALL_FULL_LIBDIR})
# The build's folders are named as the installed ones: data is found from where a program or a library is.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${KDE_INSTALL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN/${libraries_from_programs})

option(CONNUI_WERROR "Treat compiler warnings as errors" OFF)
option(CONNUI_FUZZ "Build the fuzz targets, with clang (the preset fuzz)" OFF)
option(CONNUI_PRECOMPILE "Compile Qt's headers once for all files" OFF)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets DBus Svg)
if(BUILD_TESTING)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

if(CONNUI_WERROR)
    add_compile_options(-Werror)
endif()
if(CONNUI_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-recover=all)
endif()
# The calls that a library makes of its own functions are bound when it is built, not whenever a program starts.
add_link_options(LINKER:-Bsymbolic-functions)
# Code that nobody calls is not installed. Tools that look into programs expect all of it.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT CONNUI_FUZZ AND NOT ECM_ENABLE_SANITIZERS)
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(LINKER:--gc-sections)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The files that are compiled as one count as its headers, whose classes must not use what is local to a file.
    add_compile_options(-Wno-subobject-linkage)
endif()
add_compile_definitions(QT_DISABLE_DEPRECATED_BEFORE=0x060400)
