// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TOUCH_BLUETOOTHTOUCH_H
#define CONNUI_DAEMON_TOUCH_BLUETOOTHTOUCH_H

#include <optional>

#include <QObject>

#include "daemon/tags/bluetoothcarrier.h"
#include "daemon/touch/bluez.h"

class Adapter;

/**
 * A touched tag that names a Bluetooth device: the agent is asked whether to pair with it, to connect or to
 * disconnect it, by what BlueZ knows of the device, and when the user grants that it is done.
 *
 * It ends in over() or unavailable(), exactly once, and deletes itself.
 */
class BluetoothTouch : public QObject
{
    Q_OBJECT

public:
    BluetoothTouch(Adapter *adapter, Bluez *bluez, const BluetoothCarrier &carrier,
                   QObject *parent = nullptr);

    /** Looks and asks. */
    void begin();

Q_SIGNALS:
    /** The user has refused, or nobody could be asked, or it has been done as far as that was possible. */
    void over();

    /** There is no Bluetooth adapter; nobody has been asked. */
    void unavailable();

private:
    void ask(const Bluez::Device &known);
    void act(const Bluez::Device &known);
    void end();

    Adapter *const adapter;
    Bluez *const bluez;
    const BluetoothCarrier carrier;
};

#endif
