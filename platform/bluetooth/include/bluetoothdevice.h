// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHDEVICE_H
#define CONNUI_BLUETOOTHDEVICE_H

#include <connui_bluetooth_export.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

namespace ConnUi {

/**
 * Describes a remote Bluetooth device. A value in spite of its base: copies are independent and have no
 * parent.
 */
class CONNUI_BLUETOOTH_EXPORT BluetoothDevice : public QObject
{
    Q_OBJECT
public:
    /** Makes an invalid device. */
    BluetoothDevice();

    /**
     * Makes a device from its properties, named as BlueZ names them: "Address", "Alias", "Name" and others.
     */
    explicit BluetoothDevice(const QMap<QString, QVariant> &properties, QObject *parent = nullptr);

    /** Copies the properties of \a other. */
    BluetoothDevice(const BluetoothDevice &other);

    /** Copies the properties of \a other; the parent stays. */
    BluetoothDevice &operator=(const BluetoothDevice &other);

    /** Returns whether the device has a Bluetooth address: six bytes in hexadecimal, joined by colons. */
    bool isValid() const;

    /** Returns the address as it was given, also where it is none. */
    QString address() const;

    /** Returns the name to show for the device: the user's own for it, else the device's, else an empty one.
     */
    QString name() const;

private:
    QMap<QString, QVariant> properties;
};

} // namespace ConnUi

#endif
