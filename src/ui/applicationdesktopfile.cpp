// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/applicationdesktopfile.h"

#include <QFileInfo>

namespace ConnUi {

QString applicationDesktopFile(const QString &id)
{
    if (id.contains(QLatin1Char('/')) || id == QLatin1String("..") || id.contains(QChar(QChar::Null)))
        return {};
    const QString path = QStringLiteral("/usr/share/applications/%1.desktop").arg(id);
    return QFileInfo(path).isFile() ? path : QString();
}

} // namespace ConnUi
