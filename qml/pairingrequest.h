// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_PAIRINGREQUEST_H
#define CONNUI_QML_PAIRINGREQUEST_H

#include "bluetoothrequest.h"

/** Whether to pair with a touched Bluetooth device: the QML type PairingRequest. */
class PairingRequest : public BluetoothRequest
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The daemon makes requests; NfcAgent has them")
    /** The PIN that pairs; empty for none. */
    Q_PROPERTY(QString pin READ pin CONSTANT FINAL)

public:
    PairingRequest(const QString &target, const TouchedDevice &device, const QString &pin, const Place &place,
                   const Replies &replies);

    QString pin() const;

private:
    const QString code;
};

#endif
