// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include <QCborValue>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include "settingslock_p.h"
#include "settingsstore_p.h"

namespace ConnUi {
namespace {

constexpr qint64 storeLimit = 1 << 20;

// The folder of the user's settings, $XDG_CONFIG_HOME or ~/.config. Empty when nothing names an absolute
// folder; the root folder is nobody's home.
QString configFolder()
{
    const QString configured = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (QDir::isAbsolutePath(configured))
        return configured;
    const QString home = QDir::cleanPath(qEnvironmentVariable("HOME"));
    return QDir::isAbsolutePath(home) && home != QDir::rootPath() ? home + QStringLiteral("/.config")
                                                                  : QString();
}

QString folderPath()
{
    return configFolder() + QStringLiteral("/connui");
}

QString storePath()
{
    return folderPath() + QStringLiteral("/settings.cbor");
}

void warn(const char *action, const QString &path, const QString &reason)
{
    qWarning("ConnectivitySettings: unable to %s %s: %s", action, qUtf8Printable(path),
             qUtf8Printable(reason));
}

// Returns what is wrong with the content of a store, empty when it is right and in map.
QString parse(const QByteArray &data, QCborMap *map)
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

struct Store
{
    enum State { Whole, Damaged, Unreadable };

    QCborMap groups;
    State state = Whole;
};

Store readStore()
{
    // Reads are frequent and a damaged file stays damaged: say it once, and again only after it was whole.
    static bool reported = false;
    const auto fail = [](Store::State state, const QString &reason) {
        if (!std::exchange(reported, true))
            warn(state == Store::Damaged ? "understand" : "read", storePath(), reason);
        return Store{QCborMap(), state};
    };

    if (configFolder().isEmpty())
        return Store();
    QFile file(storePath());
    const QFileInfo info(file);
    if (!info.exists())
        return Store();
    if (!info.isFile() || info.size() > storeLimit)
        return fail(Store::Damaged, QStringLiteral("not a settings file"));
    if (!file.open(QIODevice::ReadOnly))
        return fail(Store::Unreadable, file.errorString());
    const QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(Store::Unreadable, file.errorString());
    Store store;
    const QString problem = parse(data, &store.groups);
    if (!problem.isEmpty())
        return fail(Store::Damaged, problem);
    reported = false;
    return store;
}

// Makes a folder and those above it, for the user alone.
void makeFolder(const QString &path)
{
    if (QFileInfo::exists(path))
        return;
    makeFolder(QFileInfo(path).path());
    QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// A writer that was killed leaves the file that it was writing.
void removeLeftovers()
{
    const QDir folder(folderPath());
    const QStringList names =
        folder.entryList({QStringLiteral("settings.cbor.??????")}, QDir::Files | QDir::System);
    for (const QString &name : names)
        QFile::remove(folder.filePath(name));
}

// Somebody may still read by hand what no program can.
bool keepDamaged()
{
    const QByteArray path = QFile::encodeName(storePath());
    return std::rename(path.constData(), (path + ".damaged").constData()) == 0;
}

// The new name of a file is on the disk only when its folder is.
void syncFolder()
{
    const int folder = open(QFile::encodeName(folderPath()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    fsync(folder);
    close(folder);
}

void write(const QByteArray &data)
{
    QSaveFile file(storePath());
    if (!file.open(QIODevice::WriteOnly)) {
        warn("write", storePath(), file.errorString());
        return;
    }
    // A disk that fills up in the middle shortens the write: commit() alone would put the short file in
    // place.
    if (file.write(data) != data.size() || !file.flush()) {
        warn("write", storePath(), qt_error_string());
        file.cancelWriting();
        return;
    }
    if (!file.commit()) {
        warn("write", storePath(), file.errorString());
        return;
    }
    syncFolder();
}

} // namespace

QCborMap SettingsStore::read(const QString &group)
{
    return readStore().groups.value(group).toMap();
}

void SettingsStore::change(const QString &group, const std::function<void(QCborMap &)> &apply)
{
    if (configFolder().isEmpty()) {
        warn("write", QStringLiteral("settings"), QStringLiteral("there is no home folder"));
        return;
    }
    makeFolder(folderPath());
    const QString lockPath = folderPath() + QStringLiteral("/settings.lock");
    const SettingsLock lock(lockPath);
    if (!lock.problem().isEmpty()) {
        warn("lock", lockPath, lock.problem());
        return;
    }
    removeLeftovers();

    Store store = readStore();
    if (store.state == Store::Unreadable) {
        warn("change", storePath(), QStringLiteral("not readable"));
        return;
    }
    QCborMap map = store.groups.value(group).toMap();
    apply(map);
    store.groups.insert(group, map);

    // A value that cannot be read back would make all other settings unreadable.
    const QByteArray data = store.groups.toCborValue().toCbor();
    const QString problem = parse(data, &map);
    if (!problem.isEmpty()) {
        warn("write", storePath(), problem);
        return;
    }
    if (store.state == Store::Damaged && !keepDamaged()) {
        warn("keep", storePath(), qt_error_string());
        return;
    }
    write(data);
}

} // namespace ConnUi
