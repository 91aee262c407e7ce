// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothrequest.h"

#include <NfcForeignText>

BluetoothRequest::BluetoothRequest(const QString &target, const TouchedDevice &device, const Place &place,
                                   const Replies &replies)
    : NfcRequest(target, place, replies)
    , device(device)
{}

QString BluetoothRequest::title() const
{
    return ConnUi::foreignName(device.name, device.address);
}

QString BluetoothRequest::address() const
{
    return device.address;
}

uint BluetoothRequest::deviceClass() const
{
    return device.deviceClass;
}
