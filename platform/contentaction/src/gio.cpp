// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "gio.h"

#include "support/functions.h"

namespace ContentAction {

const Gio *Gio::load()
{
    using Support::Symbol;
    static const std::optional<Gio> library = Support::loadFunctions<Gio>(
        QStringLiteral("libgio-2.0.so.0"), "ContentAction: unable to look for applications",
        Symbol{"g_app_info_get_default_for_type", &Gio::g_app_info_get_default_for_type},
        Symbol{"g_app_info_get_default_for_uri_scheme", &Gio::g_app_info_get_default_for_uri_scheme},
        Symbol{"g_app_info_get_id", &Gio::g_app_info_get_id},
        Symbol{"g_app_info_launch_uris", &Gio::g_app_info_launch_uris},
        Symbol{"g_content_type_guess", &Gio::g_content_type_guess},
        Symbol{"g_desktop_app_info_get_filename", &Gio::g_desktop_app_info_get_filename},
        Symbol{"g_desktop_app_info_get_is_hidden", &Gio::g_desktop_app_info_get_is_hidden},
        Symbol{"g_desktop_app_info_new", &Gio::g_desktop_app_info_new},
        Symbol{"g_file_new_for_path", &Gio::g_file_new_for_path},
        Symbol{"g_file_query_default_handler", &Gio::g_file_query_default_handler},
        Symbol{"g_object_unref", &Gio::g_object_unref});
    return library ? &*library : nullptr;
}

} // namespace ContentAction
