// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DEVICECREATION_P_H
#define CONNUI_DEVICECREATION_P_H

#include <chrono>
#include <functional>
#include <optional>

#include <QDBusPendingCall>
#include <QTimer>

#include "bluetoothdevice.h"
#include "bluez_p.h"
#include "bluezadapterproxy.h"
#include "bluezobjectsproxy.h"

namespace ConnUi {

// One creation of a device, from the question whether BlueZ knows it to the outcome. Emits one signal, then
// deletes itself; deleted earlier, it emits none. Discovery that it started stops with it in any case.
class DeviceCreation : public QObject
{
    Q_OBJECT
public:
    DeviceCreation(const QString &service, const QString &adapterPath, const QString &address,
                   std::chrono::milliseconds limit, QObject *parent);
    ~DeviceCreation() override;

    void start();
    void fail(const QString &reason);
    // Fails from the event loop.
    void failLater(const QString &reason);

Q_SIGNALS:
    void created(const BluetoothDevice &device);
    void failed(const QString &reason);

private:
    using Answer = std::function<void(const QDBusPendingCall &)>;

    void await(const QDBusPendingCall &call, const Answer &answered);
    void look(const std::function<void()> &unknown);
    void connectDevice();
    void discover();
    void stopDiscovery();
    void handleAddition(const QDBusObjectPath &object, const BlueZ::Interfaces &interfaces);
    bool isOwn(const QDBusObjectPath &object) const;
    bool takeKnownDevice(const BlueZ::Objects &known);
    bool takeDevice(const BlueZ::Interfaces &interfaces);
    void finish();

    BluezObjectsProxy objects;
    BluezAdapterProxy adapter;
    const QString address;
    QTimer limit;
    // While BlueZ connects, the device appears before it is known whether the connection works out.
    bool connecting = false;
    std::optional<QDBusPendingCall> discovery; // while it is ours
    bool finished = false;
};

} // namespace ConnUi

#endif
