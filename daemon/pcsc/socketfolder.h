// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_SOCKETFOLDER_H
#define CONNUI_DAEMON_PCSC_SOCKETFOLDER_H

#include <QFileSystemWatcher>
#include <QObject>

/** The folder of the socket of pcscd, watched for a pcscd that comes. */
class SocketFolder : public QObject
{
    Q_OBJECT

public:
    explicit SocketFolder(QObject *parent = nullptr);

Q_SIGNALS:
    /** Something came or went in the folder, or the folder itself did. */
    void changed();

private:
    void watch();

    QFileSystemWatcher watcher;
};

#endif
