// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/polkitwatch.h"

#include <QDBusConnection>
#include <QString>

PolkitWatch::PolkitWatch(QObject *parent)
    : QObject(parent)
    , polkit(QStringLiteral("org.freedesktop.PolicyKit1"), QDBusConnection::systemBus(),
             QDBusServiceWatcher::WatchForRegistration)
{
    connect(&polkit, &QDBusServiceWatcher::serviceRegistered, this, &PolkitWatch::changed);
    QDBusConnection::systemBus().connect(QStringLiteral("org.freedesktop.PolicyKit1"),
                                         QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
                                         QStringLiteral("org.freedesktop.PolicyKit1.Authority"),
                                         QStringLiteral("Changed"), this, SIGNAL(changed()));
}
