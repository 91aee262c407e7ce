// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TEST_BLUEZMOCK_H
#define CONNUI_TEST_BLUEZMOCK_H

#include <QDBusReply>

#include "dbusmock.h"

// BlueZ with the adapter hci0, as it is without its experimental interfaces.
struct BlueZMock : DBusMock
{
    static inline const QString busName = QStringLiteral("org.bluez");
    static inline const QString adapterPath = QStringLiteral("/org/bluez/hci0");
    static inline const QString secondAdapterPath = QStringLiteral("/org/bluez/hci1");
    static inline const QString adapterInterface = QStringLiteral("org.bluez.Adapter1");

    BlueZMock() : DBusMock(busName, {QStringLiteral("-t"), QStringLiteral("bluez5")})
    {
        ready = waitForRegistered() &&
                mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci0"), QStringLiteral("phone")});
    }

    bool mock(const QString &method, const QVariantList &arguments) const
    {
        return call(QStringLiteral("/"), QStringLiteral("org.bluez.Mock"), method, arguments).type() ==
               QDBusMessage::ReplyMessage;
    }

    bool addDevice(const QString &address) const
    {
        return mock(QStringLiteral("AddDevice"), {QStringLiteral("hci0"), address, QStringLiteral("Peer")});
    }

    // Later releases of the stand-in set the class when a device is added.
    bool pairDevice(const QString &address) const
    {
        const QString method = QStringLiteral("PairDevice");
        return mock(method, {QStringLiteral("hci0"), address}) ||
               mock(method, {QStringLiteral("hci0"), address, 0x200404});
    }

    // Zero when it knows none.
    uint classOf(const QString &devicePath) const
    {
        const QDBusReply<QVariant> reply =
            call(devicePath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                 {QStringLiteral("org.bluez.Device1"), QStringLiteral("Class")});
        return reply.value().toUInt();
    }

    // Another adapter, hci1, and a device that only this one knows.
    bool addSecondAdapter() const
    {
        return mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci1"), QStringLiteral("stick")});
    }

    bool addDeviceElsewhere(const QString &address) const
    {
        return mock(QStringLiteral("AddDevice"),
                    {QStringLiteral("hci1"), address, QStringLiteral("Elsewhere")});
    }

    bool switchOff() const
    {
        return call(adapterPath, QStringLiteral("org.freedesktop.DBus.Mock"),
                    QStringLiteral("UpdateProperties"),
                    {adapterInterface, QVariantMap{{QStringLiteral("Powered"), false}}})
                   .type() == QDBusMessage::ReplyMessage;
    }

    bool addAdapterMethod(const QString &name, const QString &in, const QString &out,
                          const QString &body) const
    {
        return addMethod(adapterPath, adapterInterface, name, in, out, body).type() ==
               QDBusMessage::ReplyMessage;
    }

    bool offerConnectDevice(const QString &body) const
    {
        return addAdapterMethod(QStringLiteral("ConnectDevice"), QStringLiteral("a{sv}"), QStringLiteral("o"),
                                body);
    }

    bool isDiscovering() const
    {
        const QDBusReply<QVariant> reply =
            call(adapterPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                 {adapterInterface, QStringLiteral("Discovering")});
        return reply.value().toBool();
    }

    bool ready;
};

#endif
