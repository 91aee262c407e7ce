// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCBLUETOOTHHANDOVERINFO_H
#define CONNUI_NFCBLUETOOTHHANDOVERINFO_H

#include <connui_nfc_export.h>

#include <QString>
#include <QVariant>

#include <BluetoothDevice>

namespace ConnUi {

class NfcBluetoothHandoverInfoPrivate;

/**
 * Names the Bluetooth device at the other end of a handover.
 *
 * Made from the data of NfcAdapter::handoverCompleted(), or from the info of a sharing request. For use on
 * the thread that runs the application's event loop.
 */
class CONNUI_NFC_EXPORT NfcBluetoothHandoverInfo
{
public:
    /**
     * Reads the handover data in \a info.
     *
     * Data is read from a D-Bus structure that begins with an object path and a string, (os); further members
     * do not matter. Anything else leaves the address empty, without a message.
     */
    explicit NfcBluetoothHandoverInfo(const QVariant &info);

    /** Gives up waiting: a device() call that is still waiting returns an invalid device. */
    ~NfcBluetoothHandoverInfo();

    Q_DISABLE_COPY_MOVE(NfcBluetoothHandoverInfo)

    /** Returns the peer's Bluetooth address, empty when there was none. Does not block. */
    QString deviceAddress() const;

    /**
     * Returns the device at deviceAddress(), which is created first where it is not known yet.
     *
     * Blocks in an event loop of its own until the Bluetooth service on the system bus has brought success or
     * failure, however long that takes, so anything
     * can happen before it returns, the deletion of this object and a second call of device() included; a
     * second call waits for the same outcome. Returns an invalid device when there is no Bluetooth adapter or
     * the creation failed; both are logged, and the next call tries again. A device once created is returned
     * at once.
     */
    BluetoothDevice device() const;

private:
    NfcBluetoothHandoverInfoPrivate *d;
};

} // namespace ConnUi

#endif
