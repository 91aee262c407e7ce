// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHHANDOVERDATA_H
#define CONNUI_BLUETOOTHHANDOVERDATA_H

#include <connui_nfc_core_export.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QMetaType>
#include <QString>

namespace ConnUi {

/** The daemon's data about a Bluetooth carrier: the structure (os) on the wire. */
struct BluetoothHandoverData
{
    /** An object path of the daemon's; carried, not used. */
    QDBusObjectPath path;
    /** The peer's Bluetooth address, "00:11:22:33:44:55". */
    QString address;
};

} // namespace ConnUi

/** Writes \a data as the structure (os). */
CONNUI_NFC_CORE_EXPORT QDBusArgument &operator<<(QDBusArgument &argument,
                                                 const ConnUi::BluetoothHandoverData &data);

/** Reads a structure (os) into \a data. */
CONNUI_NFC_CORE_EXPORT const QDBusArgument &operator>>(const QDBusArgument &argument,
                                                       ConnUi::BluetoothHandoverData &data);

Q_DECLARE_METATYPE(ConnUi::BluetoothHandoverData)

#endif
