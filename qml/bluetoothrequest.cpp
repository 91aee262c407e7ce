// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothrequest.h"

#include <NfcForeignText>

using ConnUi::foreignName;

BluetoothRequest::BluetoothRequest(const QString &target, const TouchedDevice &device, const Place &place,
                                   const Replies &replies)
    : NfcRequest(target, place, replies)
    , device(device)
{}

QString BluetoothRequest::title() const
{
    return foreignName(device.name, address());
}

QString BluetoothRequest::address() const
{
    return foreignName(device.address, {});
}

uint BluetoothRequest::deviceClass() const
{
    return device.deviceClass;
}
