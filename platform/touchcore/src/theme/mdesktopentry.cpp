// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mdesktopentry.h"

#include <glib.h>
#include <memory>

#include "theme/msmallfile_p.h"

namespace {

QString localizedString(GKeyFile *file, const char *key)
{
    gchar *value = g_key_file_get_locale_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr);
    const QString text = QString::fromUtf8(value);
    g_free(value);
    return text;
}

} // namespace

MDesktopEntry::MDesktopEntry(const QString &path)
{
    const QByteArray data = readSmallFile(path);
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> keys(g_key_file_new(), &g_key_file_unref);
    if (data.isEmpty() || data.contains('\0') ||
        !g_key_file_load_from_data(keys.get(), data.constData(), gsize(data.size()),
                                   G_KEY_FILE_KEEP_TRANSLATIONS, nullptr))
        return;
    localizedName = localizedString(keys.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    localizedIcon = localizedString(keys.get(), G_KEY_FILE_DESKTOP_KEY_ICON);
}

QString MDesktopEntry::name() const
{
    return localizedName;
}

QString MDesktopEntry::icon() const
{
    return localizedIcon;
}
