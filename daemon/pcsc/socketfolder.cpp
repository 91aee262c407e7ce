// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/socketfolder.h"

#include <QLatin1String>
#include <QStringList>

namespace {

constexpr QLatin1String folder("/run/pcscd");
constexpr QLatin1String parentFolder("/run");

} // namespace

SocketFolder::SocketFolder(QObject *parent) : QObject(parent)
{
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        watch();
        Q_EMIT changed();
    });
    watch();
}

// The folder comes with the first pcscd, and may go with the last one; until then its parent is watched.
void SocketFolder::watch()
{
    watcher.addPath(folder);
    if (watcher.directories().contains(folder))
        watcher.removePath(parentFolder);
    else
        watcher.addPath(parentFolder);
}
