// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_BLUETOOTHPEER_H
#define CONNUI_DAEMON_BLUETOOTHPEER_H

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QString>

/** A Bluetooth carrier's handover data, the structure (os): the peer's object path and its address. */
struct BluetoothPeer
{
    QDBusObjectPath path;
    QString address;
};
Q_DECLARE_METATYPE(BluetoothPeer)

inline QDBusArgument &operator<<(QDBusArgument &argument, const BluetoothPeer &peer)
{
    argument.beginStructure();
    argument << peer.path << peer.address;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument &operator>>(const QDBusArgument &argument, BluetoothPeer &peer)
{
    argument.beginStructure();
    argument >> peer.path >> peer.address;
    argument.endStructure();
    return argument;
}

#endif
