// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONTENTACTION_GIO_H
#define CONTENTACTION_GIO_H

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

namespace ContentAction {

/** The functions of GIO that are called here, each under its own name. */
struct Gio
{
    /** Returns them, loaded at the first call, or null with a warning when the library is not installed. */
    static const Gio *load();

    decltype(&::g_app_info_get_default_for_type) g_app_info_get_default_for_type;
    decltype(&::g_app_info_get_default_for_uri_scheme) g_app_info_get_default_for_uri_scheme;
    decltype(&::g_app_info_get_id) g_app_info_get_id;
    decltype(&::g_app_info_launch_uris) g_app_info_launch_uris;
    decltype(&::g_content_type_guess) g_content_type_guess;
    decltype(&::g_desktop_app_info_get_filename) g_desktop_app_info_get_filename;
    decltype(&::g_desktop_app_info_get_is_hidden) g_desktop_app_info_get_is_hidden;
    decltype(&::g_desktop_app_info_new) g_desktop_app_info_new;
    decltype(&::g_file_new_for_path) g_file_new_for_path;
    decltype(&::g_file_query_default_handler) g_file_query_default_handler;
    decltype(&::g_object_unref) g_object_unref;
};

} // namespace ContentAction

#endif
