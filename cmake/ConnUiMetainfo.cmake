# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# connui_install_metainfo(<id>)
#
# Installs <id>.metainfo.xml of the current folder, which describes a program to software centers, with the public
# addresses of the project that are set.
function(connui_install_metainfo id)
    set(URLS "")
    foreach(address homepage:CONNUI_REPOSITORY bugtracker:CONNUI_TRACKER)
        string(REPLACE ":" ";" address ${address})
        list(POP_FRONT address type variable)
        if(${variable})
            string(APPEND URLS "  <url type=\"${type}\">${${variable}}</url>\n")
        endif()
    endforeach()
    configure_file(${id}.metainfo.xml.in ${id}.metainfo.xml @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${id}.metainfo.xml DESTINATION ${KDE_INSTALL_METAINFODIR})
endfunction()
