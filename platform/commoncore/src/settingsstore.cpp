// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cerrno>
#include <optional>
#include <sys/file.h>
#include <utility>

#include <QCborValue>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThread>

#include "settingsstore_p.h"

namespace ConnUi {
namespace {

constexpr int lockTimeout = 2000; // ms
constexpr int lockRetry = 5;      // ms
constexpr qint64 storeLimit = 1 << 20;

QString folderPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/connui");
}

QString storePath()
{
    return folderPath() + QStringLiteral("/settings.cbor");
}

void warn(const char *what, const QString &path, const QString &reason)
{
    qWarning("ConnectivitySettings: unable to %s %s: %s", what, qUtf8Printable(path), qUtf8Printable(reason));
}

// Returns what is wrong with the content of a store, empty when it is right and in map.
QString understand(const QByteArray &data, QCborMap *map)
{
    if (data.size() > storeLimit)
        return QStringLiteral("not a settings file");
    QCborParserError error;
    const QCborValue content = QCborValue::fromCbor(data, &error);
    if (error.error != QCborError::NoError)
        return error.errorString();
    if (!content.isMap() || error.offset != data.size())
        return QStringLiteral("not a settings file");
    *map = content.toMap();
    return QString();
}

// A map when there is something to go on with, be it the empty one; nothing when the file is there but may
// not be read: replacing it would drop what it holds.
std::optional<QCborMap> readAll()
{
    // Reads are frequent and a damaged file stays damaged: say it once, and again only after it was whole.
    static bool reported = false;
    const auto report = [](const char *what, const QString &reason) {
        if (!std::exchange(reported, true))
            warn(what, storePath(), reason);
    };

    QFile file(storePath());
    const QFileInfo info(file);
    if (!info.exists())
        return QCborMap();
    if (!info.isFile() || info.size() > storeLimit) {
        report("understand", QStringLiteral("not a settings file"));
        return QCborMap();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        report("read", file.errorString());
        return std::nullopt;
    }
    const QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        report("read", file.errorString());
        return std::nullopt;
    }
    QCborMap map;
    const QString problem = understand(data, &map);
    if (!problem.isEmpty()) {
        report("understand", problem);
        return QCborMap();
    }
    reported = false;
    return map;
}

// A lock of the kernel's, so that it ends with its holder, however that dies. The file stays: removing it
// would let two processes lock two files of the same name. Returns why it failed, empty on success.
QString lock(QFile &file)
{
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    const QDeadlineTimer deadline(lockTimeout);
    while (flock(file.handle(), LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired())
            return qt_error_string();
        QThread::msleep(lockRetry);
    }
    return QString();
}

} // namespace

QCborMap SettingsStore::read(const QString &group)
{
    return readAll().value_or(QCborMap()).value(group).toMap();
}

void SettingsStore::change(const QString &group, const std::function<void(QCborMap &)> &apply)
{
    QDir().mkpath(folderPath());
    QFile lockFile(folderPath() + QStringLiteral("/settings.lock"));
    const QString failure = lock(lockFile);
    if (!failure.isEmpty())
        return warn("lock", lockFile.fileName(), failure);

    std::optional<QCborMap> all = readAll();
    if (!all)
        return warn("change", storePath(), QStringLiteral("not readable"));
    QCborMap map = all->value(group).toMap();
    apply(map);
    all->insert(group, map);

    // What no one could read again would take all other settings with it.
    const QByteArray data = all->toCborValue().toCbor();
    const QString problem = understand(data, &map);
    if (!problem.isEmpty())
        return warn("write", storePath(), problem);

    QSaveFile file(storePath());
    if (!file.open(QIODevice::WriteOnly))
        return warn("write", storePath(), file.errorString());
    // A disk that fills up in the middle shortens the write: commit() alone would put the short file in
    // place.
    if (file.write(data) != data.size() || !file.flush()) {
        warn("write", storePath(), qt_error_string());
        file.cancelWriting();
        return;
    }
    if (!file.commit())
        warn("write", storePath(), file.errorString());
}

} // namespace ConnUi
