// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "connectionrequest.h"

ConnectionRequest::ConnectionRequest(const QString &target, const TouchedDevice &device, Direction direction,
                                     const Place &place, const Replies &replies)
    : BluetoothRequest(target, device, place, replies)
    , direction(direction)
{}

bool ConnectionRequest::disconnects() const
{
    return direction == Disconnect;
}
