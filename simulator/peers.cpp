// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "peers.h"

#include <QRegularExpression>

BluetoothPeer Peers::bluetooth()
{
    const QString address = QStringLiteral("00:1A:7D:DA:71:13");
    return {device(address), address};
}

QString Peers::name()
{
    return QStringLiteral("Ada's phone");
}

QDBusObjectPath Peers::device(const QString &address)
{
    static const QRegularExpression notInPaths(QStringLiteral("[^A-Za-z0-9]"));
    QString name = address;
    name.replace(notInPaths, QStringLiteral("_"));
    return QDBusObjectPath(QStringLiteral("/com/tavix/nfc/device/dev_") + name);
}

QDBusObjectPath Peers::nextTag()
{
    static int touches = 0;
    return QDBusObjectPath(QStringLiteral("/com/tavix/nfc/tag/%1").arg(touches++));
}
