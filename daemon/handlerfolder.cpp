// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/handlerfolder.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <optional>
#include <pwd.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QStandardPaths>

#include "support/keyfile.h"

namespace {

constexpr qint64 maximumFileSize = 1 << 20;

/** A handler, and whether it stands back where another one takes the content. */
struct Announcement
{
    Handler handler;
    bool isFallback = false;
};

bool isWhole(const QString &pattern, const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

bool isObjectPath(const QString &path)
{
    return isWhole(QStringLiteral("/|(/[A-Za-z0-9_]+)+"), path);
}

bool isServiceName(const QString &name)
{
    constexpr int longestBusName = 255;
    return name.size() <= longestBusName &&
           isWhole(QStringLiteral("[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+"), name);
}

bool isBus(const QString &bus)
{
    return bus == QLatin1String("session") || bus == QLatin1String("system");
}

// It becomes the base name of a desktop file.
bool isApplicationId(const QString &id)
{
    return isWhole(QStringLiteral("[^/\\p{Cc}]{1,255}"), id);
}

QStringList listed(const QString &value)
{
    QStringList parts = value.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString &part : parts)
        part = part.trimmed();
    return parts;
}

// One that cannot be read is as one that says nothing. Users' folders hold what users put there: a pipe in
// the place of the file must not hold the daemon up.
Support::KeyFile readKeyFile(const QFileInfo &info)
{
    Support::KeyFile keys;
    QFile file;
    const int descriptor =
        open(QFile::encodeName(info.filePath()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return keys;
    const QByteArray data = file.isSequential() ? QByteArray() : file.read(maximumFileSize + 1);
    if (data.size() <= maximumFileSize)
        keys.read(data);
    return keys;
}

std::optional<Announcement> readAnnouncement(const QFileInfo &file)
{
    const Support::KeyFile keys = readKeyFile(file);
    const auto value = [&keys](const QString &key) { return keys.value(QStringLiteral("Handler"), key); };
    const QString namedBus = value(QStringLiteral("Bus"));
    const QString bus = namedBus.isEmpty() ? QStringLiteral("session") : namedBus;
    const QString service = value(QStringLiteral("Service"));
    const QString path = value(QStringLiteral("Path"));
    const QString id = value(QStringLiteral("ApplicationId"));
    if (!isBus(bus) || !isServiceName(service) || !isObjectPath(path) || !isApplicationId(id)) {
        qWarning("%s announces no handler", qUtf8Printable(file.filePath()));
        return std::nullopt;
    }
    return Announcement{{bus, service, QDBusObjectPath(path), id, listed(value(QStringLiteral("Takes")))},
                        value(QStringLiteral("Fallback")) == QLatin1String("true")};
}

bool matches(const QString &pattern, const QString &kind)
{
    if (pattern.endsWith(QLatin1Char('*')))
        return kind.startsWith(pattern.chopped(1), Qt::CaseInsensitive);
    return kind.compare(pattern, Qt::CaseInsensitive) == 0;
}

bool takes(const Handler &handler, const QString &kind)
{
    return std::any_of(
        handler.takes.cbegin(), handler.takes.cend(),
        [&kind](const QString &pattern) { return matches(pattern, kind); });
}

// The announcement files of all folders by their names; one replaces those of later folders.
QMap<QString, QFileInfo> announcementFiles(const QStringList &folders)
{
    QMap<QString, QFileInfo> files;
    for (const QString &folder : folders) {
        const QFileInfoList found = QDir(folder).entryInfoList({QStringLiteral("*.handler")}, QDir::Files);
        for (const QFileInfo &file : found)
            if (!files.contains(file.fileName()))
                files.insert(file.fileName(), file);
    }
    return files;
}

// Where the user keeps an application's data; nothing for a user whom the system does not know.
QString dataFolder(uint user)
{
    if (user == geteuid())
        return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    std::array<char, 1 << 14> strings;
    passwd entry;
    passwd *found = nullptr;
    getpwuid_r(user, &entry, strings.data(), strings.size(), &found);
    return found ? QFile::decodeName(found->pw_dir) + QStringLiteral("/.local/share") : QString();
}

} // namespace

QStringList HandlerFolder::standardFolders(uint user)
{
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    // That of the daemon's user, which is another one's.
    folders.removeAll(own);
    const QString userFolder = dataFolder(user);
    if (!userFolder.isEmpty())
        folders.prepend(userFolder);
    for (QString &folder : folders)
        folder += QStringLiteral("/connui-nfc/handlers");
    return folders;
}

HandlerFolder::HandlerFolder(const QStringList &folders) : folders(folders) {}

QList<Handler> HandlerFolder::handlersFor(const QString &kind) const
{
    QList<Handler> handlers;
    QList<Handler> fallbacks;
    const QMap<QString, QFileInfo> files = announcementFiles(folders);
    for (const QFileInfo &file : files) {
        const std::optional<Announcement> announcement = readAnnouncement(file);
        if (announcement && takes(announcement->handler, kind))
            (announcement->isFallback ? fallbacks : handlers).append(announcement->handler);
    }
    return handlers.isEmpty() ? fallbacks : handlers;
}
