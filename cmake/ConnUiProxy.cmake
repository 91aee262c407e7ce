# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# connui_proxy(<variable> <interface> <Class> [<header>])
#
# Appends to the variable the source of a proxy class made from interfaces/<interface>.xml. The class is in a header
# of its name in small letters, which includes <header> for the types that the interface's file names. A proxy never
# asks its peer what that has; it is in the build folder of the caller.
function(connui_proxy variable interface class)
    set(xml ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../interfaces/${interface}.xml)
    set_source_files_properties(${xml} PROPERTIES CLASSNAME ${class} NO_NAMESPACE ON INCLUDE "${ARGN}")
    string(TOLOWER ${class} file)
    qt_add_dbus_interface(generated ${xml} ${file})
    set(${variable} ${${variable}} ${generated} PARENT_SCOPE)
endfunction()
