// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/peername.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include <NfcBluetoothHandoverInfo>
#include <NfcForeignText>

#include "core/devicename.h"
#include "support/whenanswered.h"

using ConnUi::NfcBluetoothHandoverInfo;

using Interfaces = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, Interfaces>;
Q_DECLARE_METATYPE(Interfaces)
Q_DECLARE_METATYPE(ManagedObjects)

namespace {

// A Bluetooth service that is slower must not keep the question from the user.
constexpr int patience = 500; // milliseconds

QDBusPendingCall managedObjects()
{
    qDBusRegisterMetaType<Interfaces>();
    qDBusRegisterMetaType<ManagedObjects>();
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.bluez"), QStringLiteral("/"),
                                                       QStringLiteral("org.freedesktop.DBus.ObjectManager"),
                                                       QStringLiteral("GetManagedObjects"));
    // A phone whose Bluetooth is off stays so.
    call.setAutoStartService(false);
    return QDBusConnection::systemBus().asyncCall(call, patience);
}

QString nameIn(const ManagedObjects &objects, const QString &address)
{
    for (const Interfaces &interfaces : objects) {
        const QVariantMap device = interfaces.value(QStringLiteral("org.bluez.Device1"));
        if (device.value(QStringLiteral("Address")).toString().compare(address, Qt::CaseInsensitive) == 0)
            return device.value(QStringLiteral("Alias")).toString();
    }
    return {};
}

} // namespace

void findPeerName(const QVariant &info, QObject *context, const std::function<void(const QString &)> &found)
{
    const QString address = NfcBluetoothHandoverInfo(info).deviceAddress();
    Support::whenAnswered(
        managedObjects(), context, [address, found](const QDBusPendingReply<ManagedObjects> &reply) {
            const QString name =
                reply.isError() || address.isEmpty() ? QString() : nameIn(reply.value(), address);
            found(ConnUi::foreignName(name, deviceName(address)));
        });
}
