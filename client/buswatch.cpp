// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "buswatch.h"

#include <QCoreApplication>
#include <QDBusConnection>

namespace {

// The D-Bus library itself sends this, in the place of a bus that cannot any more.
void watch(QDBusConnection bus, BusWatch *receiver, const char *slot)
{
    const QString local = QStringLiteral("org.freedesktop.DBus.Local");
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), local,
                QStringLiteral("Disconnected"), receiver, slot);
}

} // namespace

BusWatch::BusWatch()
{
    watch(QDBusConnection::systemBus(), this, SLOT(loseSystemBus()));
    watch(QDBusConnection::sessionBus(), this, SLOT(loseSessionBus()));
    // The connections hand on nothing before: a call that waits would not end when the bus goes.
    QCoreApplication::processEvents();
}

void BusWatch::loseSystemBus()
{
    Q_EMIT lost(QStringLiteral("system"));
}

void BusWatch::loseSessionBus()
{
    Q_EMIT lost(QStringLiteral("session"));
}
