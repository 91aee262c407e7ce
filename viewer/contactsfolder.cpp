// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "contactsfolder.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

// A file name made of a name that somebody else chose.
QString baseName(const QString &name)
{
    constexpr int longest = 60;
    static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{M}\\p{N}]+"));
    // An expression finds nothing in a text that ends in the middle of a character.
    QString base = QString::fromUtf8(name.left(longest).toUtf8());
    base.replace(others, QStringLiteral("-"));
    while (base.startsWith(QLatin1Char('-')))
        base.remove(0, 1);
    while (base.endsWith(QLatin1Char('-')))
        base.chop(1);
    return base.isEmpty() ? QStringLiteral("contact") : base;
}

bool isWritten(QFile *file, const QByteArray &data)
{
    return file->write(data) == data.size() && file->flush();
}

} // namespace

QString ContactsFolder::save(const QByteArray &card, const QString &name)
{
    constexpr int mostOfOneName = 1000;
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                      QStringLiteral("/contacts"));
    QDir().mkpath(folder.path());
    const QString base = baseName(name);
    QFile file;
    for (int number = 1; number <= mostOfOneName && !file.isOpen(); ++number) {
        const QString suffix = number == 1 ? QString() : QStringLiteral("-%1").arg(number);
        file.setFileName(folder.filePath(base + suffix + QStringLiteral(".vcf")));
        const bool isNew =
            file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
        if (!isNew && !file.exists())
            break;
    }
    if (file.isOpen() && isWritten(&file, card))
        return file.fileName();
    qWarning("nfc-viewer: cannot write %s: %s", qUtf8Printable(file.fileName()),
             qUtf8Printable(file.errorString()));
    if (file.isOpen())
        file.remove();
    return QString();
}
