// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "contactexporter.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

#include "contactcard_p.h"

namespace ConnUi {
namespace {

constexpr qint64 cardLimit = 4 << 20;

void warn(const QString &path, const QString &reason)
{
    qWarning("ContactExporter: unable to read %s: %s", qUtf8Printable(path), qUtf8Printable(reason));
}

// The path of a contact's card; empty if it is not a contact.
QString cardPath(const QString &contact)
{
    const auto scheme = QStringLiteral("contact:");
    const QString id = contact.sliced(contact.startsWith(scheme) ? scheme.size() : contact.size());
    if (id.isEmpty() || id.contains(QLatin1Char('/')) || id.contains(QStringLiteral("..")))
        return QString();
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/contacts/%1.vcf").arg(id);
}

QByteArray readCardFile(const QString &path)
{
    QFile file(path);
    const QFileInfo info(path);
    // Opening a pipe would wait for its writer.
    if (info.exists() && !info.isFile()) {
        warn(path, QStringLiteral("not a file"));
        return QByteArray();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        warn(path, file.errorString());
        return QByteArray();
    }
    const QByteArray data = file.read(cardLimit + 1);
    if (data.size() > cardLimit) {
        warn(path, QStringLiteral("too large for a contact card"));
        return QByteArray();
    }
    return data;
}

ContactCard readCard(const QString &path)
{
    ContactCard card;
    const QString problem = card.read(readCardFile(path));
    if (!problem.isEmpty())
        warn(path, problem);
    return card;
}

// A copy's name contains the process that it belongs to.
QString copyPath(const QString &process)
{
    return QDir::tempPath() + QStringLiteral("/contact-%1-XXXXXX.vcf").arg(process);
}

bool isRunning(pid_t process)
{
    return kill(process, 0) == 0 || errno != ESRCH;
}

} // namespace

QTemporaryFile *ContactExporter::createContactCardFile(const QString &contact)
{
    auto *file = new QTemporaryFile(copyPath(QString::number(QCoreApplication::applicationPid())));
    const QString path = cardPath(contact);
    if (path.isEmpty())
        qWarning("ContactExporter: %s is not a contact", qUtf8Printable(contact));
    const QByteArray data = path.isEmpty() ? QByteArray() : readCardFile(path);
    if (!file->open() || file->write(data) != data.size() || !file->flush())
        qWarning("ContactExporter: unable to write %s: %s", qUtf8Printable(file->fileTemplate()),
                 qUtf8Printable(file->errorString()));
    file->close();
    return file;
}

void ContactExporter::removeLeftCopies()
{
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("contact-([0-9]{1,9})-[A-Za-z]{6}\\.vcf")));
    const QFileInfoList files =
        QDir(QDir::tempPath())
            .entryInfoList({QStringLiteral("contact-*.vcf")}, QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo &file : files) {
        const QRegularExpressionMatch match = form.match(file.fileName());
        if (match.hasMatch() && file.ownerId() == getuid() && !isRunning(match.captured(1).toInt()))
            QFile::remove(file.filePath());
    }
}

void ContactExporter::resolveContactInfo(const QFileInfo &file, QString &first, QString &second)
{
    const ContactCard card = readCard(file.filePath());
    first = card.givenName();
    second = card.familyName();
    if (first.isEmpty() && second.isEmpty())
        first = card.otherName();
}

QByteArrayList ContactExporter::contactPhotos(const QString &contact)
{
    const QString path = cardPath(contact);
    return QFileInfo::exists(path) ? readCard(path).photos() : QByteArrayList();
}

} // namespace ConnUi
