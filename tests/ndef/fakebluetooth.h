// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKEBLUETOOTH_H
#define CONNUI_FAKEBLUETOOTH_H

#include <functional>

#include <QList>
#include <QStringList>

#include <BluetoothAdapter>

/**
 * The behavior of the Bluetooth library's adapters in a program that links fakebluetooth.cpp in place of that
 * library, and the calls to them. One object at a time.
 */
class FakeBluetooth
{
public:
    FakeBluetooth();
    ~FakeBluetooth();
    Q_DISABLE_COPY_MOVE(FakeBluetooth)

    bool hasAdapter = true;
    bool adapterIsValid = true;
    /** Runs inside each BluetoothAdapter::startCreatingDevice(). */
    std::function<void(ConnUi::BluetoothAdapter *)> onStart = [](ConnUi::BluetoothAdapter *) {};

    int defaultAdapterCalls = 0;
    /** The adapters that live. */
    QList<ConnUi::BluetoothAdapter *> adapters;
    /** The addresses of the devices whose creation was started. */
    QStringList started;
};

#endif
