// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef CONNUI_FUZZ_SUPPORT_H
#define CONNUI_FUZZ_SUPPORT_H

#include <cstdlib>

#include <QFile>
#include <QString>
#include <QTemporaryDir>

/** Ends the program unless \a condition holds, so that the input is reported and kept. */
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

/** Returns the path of \a name in a folder that stays until the program ends. */
inline QString filePath(const QString &name)
{
    static const QTemporaryDir folder;
    return folder.filePath(name);
}

/** Puts \a content into the file at \a path, in the place of what it held. */
inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

/** Returns the input as bytes that are not copied. */
inline QByteArray inputBytes(const uint8_t *data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
}

#endif
