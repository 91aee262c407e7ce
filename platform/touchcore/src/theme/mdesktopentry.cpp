// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mdesktopentry.h"

#include "support/keyfile.h"
#include "support/smallfile.h"

MDesktopEntry::MDesktopEntry(const QString &path)
{
    const auto group = QStringLiteral(G_KEY_FILE_DESKTOP_GROUP);
    Support::KeyFile file;
    file.read(Support::readSmallFile(path));
    localizedName = file.localizedValue(group, QStringLiteral(G_KEY_FILE_DESKTOP_KEY_NAME));
    localizedIcon = file.localizedValue(group, QStringLiteral(G_KEY_FILE_DESKTOP_KEY_ICON));
}

QString MDesktopEntry::name() const
{
    return localizedName;
}

QString MDesktopEntry::icon() const
{
    return localizedIcon;
}
