// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "peeraddress.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

QString peerAddress(const QVariant &info)
{
    const QDBusArgument argument = info.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(os)"))
        return {};
    QDBusObjectPath path;
    QString address;
    argument.beginStructure();
    argument >> path >> address;
    argument.endStructure();
    return address;
}
