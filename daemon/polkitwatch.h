// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_POLKITWATCH_H
#define CONNUI_DAEMON_POLKITWATCH_H

#include <QDBusServiceWatcher>
#include <QObject>

/** Reports when polkit may decide otherwise than before. */
class PolkitWatch : public QObject
{
    Q_OBJECT

public:
    explicit PolkitWatch(QObject *parent = nullptr);

Q_SIGNALS:
    /** Its rules or the sessions of the users have changed, or it has come. */
    void changed();

private:
    QDBusServiceWatcher polkit;
};

#endif
