// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_MANAGER_H
#define CONNUI_DAEMON_MANAGER_H

#include <QDBusObjectPath>
#include <QObject>

/** The daemon's entry at "/": says where the adapter is. */
class Manager : public QObject
{
    Q_OBJECT

public:
    explicit Manager(const QDBusObjectPath &adapter, QObject *parent = nullptr);

    QDBusObjectPath DefaultAdapter() const;

private:
    const QDBusObjectPath adapter;
};

#endif
