// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "gio.h"

#include <optional>

#include <QLibrary>

namespace ContentAction {

namespace {

template <typename Function>
bool resolve(QLibrary &library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(library.resolve(name));
    return function;
}

std::optional<Gio> resolveAll()
{
    QLibrary library(QStringLiteral("libgio-2.0.so.0"));
    Gio all;
    if (resolve(library, "g_app_info_get_default_for_type", all.g_app_info_get_default_for_type) &&
        resolve(library, "g_app_info_get_default_for_uri_scheme",
                all.g_app_info_get_default_for_uri_scheme) &&
        resolve(library, "g_app_info_get_id", all.g_app_info_get_id) &&
        resolve(library, "g_content_type_guess", all.g_content_type_guess) &&
        resolve(library, "g_file_new_for_path", all.g_file_new_for_path) &&
        resolve(library, "g_file_query_default_handler", all.g_file_query_default_handler) &&
        resolve(library, "g_object_unref", all.g_object_unref))
        return all;
    qWarning("ContentAction: unable to look for applications: %s", qUtf8Printable(library.errorString()));
    return {};
}

} // namespace

const Gio *Gio::load()
{
    static const std::optional<Gio> library = resolveAll();
    return library ? &*library : nullptr;
}

} // namespace ContentAction
