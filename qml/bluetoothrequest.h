// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_BLUETOOTHREQUEST_H
#define CONNUI_QML_BLUETOOTHREQUEST_H

#include "nfcrequest.h"

/** A Bluetooth device that has been touched. */
struct TouchedDevice
{
    QString address;
    QString name;
    uint deviceClass = 0;
};

/** A request about a touched Bluetooth device: the QML type BluetoothRequest. */
class BluetoothRequest : public NfcRequest
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The daemon makes requests; NfcAgent has them")
    /** The device's address, "00:11:22:33:44:55", safe to draw. */
    Q_PROPERTY(QString address READ address CONSTANT FINAL)
    /** The device's Class of Device (Bluetooth Assigned Numbers, baseband). */
    Q_PROPERTY(uint deviceClass READ deviceClass CONSTANT FINAL)

public:
    QString title() const override;
    QString address() const;
    uint deviceClass() const;

protected:
    BluetoothRequest(const QString &target, const TouchedDevice &device, const Place &place,
                     const Replies &replies);

private:
    const TouchedDevice device;
};

#endif
