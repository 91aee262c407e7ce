# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# connui_refuse_windows(<folder>...)
#
# Ends the configuration when a file of these folders includes what draws: src/ui, a toolkit's or Qt's windows. Their
# include folders are not the library's, but src/ and Qt's own root are, so that the compiler would find them.
function(connui_refuse_windows)
    foreach(folder IN LISTS ARGN)
        file(GLOB files ${folder}/*.cpp ${folder}/*.h)
        foreach(file IN LISTS files)
            file(STRINGS ${file} windows REGEX "^#include [\"<](ui|QtGui|QtWidgets|QtSvg)/")
            if(windows)
                message(FATAL_ERROR "${file} belongs to a library without windows: ${windows}")
            endif()
        endforeach()
    endforeach()
endfunction()
