// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/buswatch.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include "support/commandline.h"

namespace {

// QtDBus itself sends this, in the place of a bus that no longer can.
void watch(QDBusConnection bus, BusWatch *receiver, const char *slot)
{
    const QString local = QStringLiteral("org.freedesktop.DBus.Local");
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), local,
                QStringLiteral("Disconnected"), receiver, slot);
}

void end(const char *bus)
{
    QCoreApplication::exit(
        Support::fail(Support::NoBus, QStringLiteral("the %1 bus disconnected").arg(QLatin1String(bus))));
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
    end("system");
}

void BusWatch::loseSessionBus()
{
    end("session");
}
