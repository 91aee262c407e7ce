// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_BLUETOOTHREQUEST_H
#define CONNUI_CLIENT_BLUETOOTHREQUEST_H

#include "core/request.h"

/** A Bluetooth device that has been touched. */
struct TouchedDevice
{
    QString address;
    QString name;
    uint deviceClass = 0;
    QString pin; ///< Empty for none
};

/** Whether to pair with, connect to or disconnect from a touched device. */
class BluetoothRequest : public Request
{
    Q_OBJECT

public:
    BluetoothRequest(Kind kind, const QString &target, const TouchedDevice &device,
                     const PendingReply &reply);

    void begin() override;
    void decide(const Answer &answer) override;

private:
    const TouchedDevice device;
};

#endif
