// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pairingrequest.h"

#include <NfcForeignText>

PairingRequest::PairingRequest(const QString &target, const TouchedDevice &device, const QString &pin,
                               const Place &place, const Replies &replies)
    : BluetoothRequest(target, device, place, replies)
    , code(pin)
{}

QString PairingRequest::pin() const
{
    return ConnUi::foreignName(code, {});
}
