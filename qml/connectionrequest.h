// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_CONNECTIONREQUEST_H
#define CONNUI_QML_CONNECTIONREQUEST_H

#include "bluetoothrequest.h"

/** Whether to connect to a touched Bluetooth device, or to end that connection: the QML type
 * ConnectionRequest. */
class ConnectionRequest : public BluetoothRequest
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The daemon makes requests; NfcAgent has them")
    /** Whether the connection ends. */
    Q_PROPERTY(bool disconnects READ disconnects CONSTANT FINAL)

public:
    enum Direction { Connect, Disconnect };

    ConnectionRequest(const QString &target, const TouchedDevice &device, Direction direction,
                      const Place &place, const Replies &replies);

    bool disconnects() const;

private:
    const Direction direction;
};

#endif
