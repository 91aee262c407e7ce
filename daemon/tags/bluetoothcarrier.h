// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_BLUETOOTHCARRIER_H
#define CONNUI_DAEMON_TAGS_BLUETOOTHCARRIER_H

#include <optional>

#include <QByteArray>
#include <QString>

/** A Bluetooth device as a tag describes it. */
struct BluetoothCarrier
{
    QString address; ///< As in "00:1A:7D:DA:71:13".
    QString name;    ///< Empty when the tag has none.
    uint classOfDevice = 0;
};

/**
 * The Bluetooth device that \a message hands over to.
 *
 * There is one when the message begins with a record of Bluetooth out-of-band data ("Bluetooth Secure Simple
 * Pairing Using NFC", version 1.2), of the classic or of the low energy kind, or with a handover select
 * record that is followed by one. A message that says something else first is about something else.
 */
std::optional<BluetoothCarrier> bluetoothCarrier(const QByteArray &message);

#endif
