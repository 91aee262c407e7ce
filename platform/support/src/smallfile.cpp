// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "support/smallfile.h"

#include <QFile>
#include <QFileInfo>

namespace Support {

QByteArray readSmallFile(const QString &path)
{
    constexpr qint64 maximumSize = 1 << 20;
    QFile file(path);
    // Opening a pipe would wait for its writer.
    if (!QFileInfo(path).isFile() || file.size() > maximumSize || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(maximumSize);
}

} // namespace Support
