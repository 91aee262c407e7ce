// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bus/busdaemon.h"

#include <QDBusMessage>
#include <QVariantList>

namespace ConnUi::BusDaemon {

namespace {

// Not through the connection's interface: its functions wait.
QDBusPendingCall ask(const QDBusConnection &bus, const QString &method, const QVariantList &arguments,
                     int timeout = -1)
{
    QDBusMessage question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                           QStringLiteral("/org/freedesktop/DBus"),
                                                           QStringLiteral("org.freedesktop.DBus"), method);
    question.setArguments(arguments);
    return bus.asyncCall(question, timeout);
}

} // namespace

QDBusPendingCall owner(const QDBusConnection &bus, const QString &service)
{
    return ask(bus, QStringLiteral("GetNameOwner"), {service});
}

QDBusPendingCall processId(const QDBusConnection &bus, const QString &service)
{
    return ask(bus, QStringLiteral("GetConnectionUnixProcessID"), {service});
}

QDBusPendingCall start(const QDBusConnection &bus, const QString &service, int timeout)
{
    constexpr uint noFlags = 0;
    return ask(bus, QStringLiteral("StartServiceByName"), {service, noFlags}, timeout);
}

} // namespace ConnUi::BusDaemon
