// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "conformance/peer.h"

#include <QLatin1String>

namespace {

constexpr int timeLimit = 5000; // milliseconds

QString nextName()
{
    static int number = 0;
    return QStringLiteral("peer %1").arg(number++);
}

} // namespace

Peer::Peer()
    : name(nextName())
    , bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, name))
    , path(QStringLiteral("/"))
{}

Peer::~Peer()
{
    QDBusConnection::disconnectFromBus(name);
}

void Peer::setPath(const QString &newPath)
{
    path = newPath;
}

QDBusMessage Peer::call(const char *interface, const char *method, const QVariantList &arguments) const
{
    return bus.call(message(interface, method, arguments), QDBus::Block, timeLimit);
}

QDBusPendingCall Peer::callLater(const char *interface, const char *method,
                                 const QVariantList &arguments) const
{
    return bus.asyncCall(message(interface, method, arguments), timeLimit);
}

void Peer::connectAdapter(const QString &signal, QObject *receiver, const char *slot)
{
    bus.connect(QStringLiteral("com.tavix.nfc"), path, QStringLiteral("com.tavix.nfc.Adapter"), signal,
                receiver, slot);
}

QDBusMessage Peer::message(const char *interface, const char *method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("com.tavix.nfc"), path, QStringLiteral("com.tavix.nfc.") + QLatin1String(interface),
        QLatin1String(method));
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}
