# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# connui_precompile()
#
# Lets every target of the current folder and below read Qt's headers from one precompiled file: most of the time to
# compile one of our files is reading them. For developing only, as is compiling several files as one: a file that
# forgets an include compiles all the same, which the release build then refuses.
function(connui_precompile)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp "")
    add_library(connui-precompiled OBJECT ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp)
    # Not linked to Qt: its macros, QT_GUI_LIB and the like, would have to be those of every target.
    target_include_directories(connui-precompiled SYSTEM PRIVATE
        ${Qt6DBus_INCLUDE_DIRS} ${Qt6Widgets_INCLUDE_DIRS} ${Qt6Gui_INCLUDE_DIRS} ${Qt6Core_INCLUDE_DIRS})
    target_compile_definitions(connui-precompiled PRIVATE $<$<NOT:$<CONFIG:Debug>>:QT_NO_DEBUG>)
    target_compile_options(connui-precompiled PRIVATE -pthread)
    set_target_properties(connui-precompiled PROPERTIES AUTOMOC OFF)
    # Without <QApplication>: with it qApp means another class.
    target_precompile_headers(connui-precompiled PRIVATE
        <QtCore/QtCore> <QtDBus/QtDBus> <QGraphicsLinearLayout> <QGraphicsScene> <QGraphicsSceneMouseEvent> <QGraphicsView>
        <QGraphicsWidget> <QPainter> <QPixmap>)
    connui_precompile_below(${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

function(connui_precompile_below folder)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    list(REMOVE_ITEM targets connui-precompiled)
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        if(type MATCHES "^(EXECUTABLE|OBJECT_LIBRARY|SHARED_LIBRARY|STATIC_LIBRARY)$")
            # A program is compiled as a library is, with which it shares the file.
            target_compile_options(${target} PRIVATE -pthread -fPIC)
            target_precompile_headers(${target} REUSE_FROM connui-precompiled)
        endif()
    endforeach()
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below ${folders})
        connui_precompile_below(${below})
    endforeach()
endfunction()
