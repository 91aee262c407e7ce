// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DEVICECREATION_P_H
#define CONNUI_DEVICECREATION_P_H

#include <chrono>
#include <functional>

#include <QTimer>

#include "bluetoothdevice.h"
#include "bluez_p.h"

namespace ConnUi {

// One creation of a device, from the question whether BlueZ knows it to the outcome. Emits one signal, then
// deletes itself; deleted earlier, it emits none. Discovery that it started stops with it in any case.
class DeviceCreation : public QObject
{
    Q_OBJECT
public:
    DeviceCreation(const QString &adapterPath, const QString &address, std::chrono::milliseconds limit,
                   QObject *parent);
    ~DeviceCreation() override;

    void start();
    void fail(const QString &reason);

Q_SIGNALS:
    void created(const BluetoothDevice &device);
    void failed(const QString &reason);

private Q_SLOTS:
    void interfacesAdded(const QDBusMessage &signal);

private:
    void call(const QDBusMessage &message, const std::function<void(const QDBusMessage &)> &answered);
    void look(const std::function<void()> &unknown);
    void connectDevice();
    void discover();
    void stopDiscovery();
    bool takeDevice(const QString &path, const BlueZ::Interfaces &interfaces);
    void finish();

    QString adapterPath;
    QString address;
    QTimer limit;
    // While BlueZ connects, the device appears before it is known whether the connection works out.
    bool connecting = false;
    bool discovering = false;
    bool finished = false;
};

} // namespace ConnUi

#endif
