// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCBLUETOOTHHANDOVERINFO_H
#define CONNUI_NFCBLUETOOTHHANDOVERINFO_H

#include <connui_nfc_core_export.h>

#include <QString>
#include <QVariant>

#include <BluetoothDevice>

namespace ConnUi {

class NfcBluetoothHandoverInfoPrivate;
class NfcPendingCall;

/**
 * Names the Bluetooth device at the other end of a handover.
 *
 * Made from the data of NfcAdapter::handoverCompleted(), or from the info of a sharing request. For use on
 * the thread that runs the application's event loop.
 */
class CONNUI_NFC_CORE_EXPORT NfcBluetoothHandoverInfo
{
public:
    /**
     * Reads the handover data in \a info.
     *
     * Data is read from a D-Bus structure that begins with an object path and a string, (os); further members
     * are ignored. For anything else the address stays empty, and nothing is logged.
     */
    explicit NfcBluetoothHandoverInfo(const QVariant &info);

    /** Gives up waiting: a device() call that is still waiting returns an invalid device, and the calls of
     * deviceAsync() never finish. */
    ~NfcBluetoothHandoverInfo();

    Q_DISABLE_COPY_MOVE(NfcBluetoothHandoverInfo)

    /** Returns the peer's Bluetooth address, empty when there was none. Does not block. */
    QString deviceAddress() const;

    /**
     * Returns the device at deviceAddress(), which is created first where it is not known yet.
     *
     * Blocks in a nested event loop, without a time limit, until the Bluetooth service on the system bus has
     * succeeded or failed. Anything can happen before it returns, including the deletion of this object and a
     * second call of device(), which waits for the same result. Returns an invalid device when there is no
     * Bluetooth adapter or the creation failed; both are logged, and the next call tries again. A device that
     * already exists is returned immediately.
     */
    BluetoothDevice device() const;

    /**
     * Returns a call whose value is the BluetoothDevice that device() returns, and returns at once.
     *
     * It shares the creation that a device() or another deviceAsync() has begun. After a failure, which is
     * logged as there, the device is invalid, the error's text is the reason, and the next call tries again.
     */
    NfcPendingCall *deviceAsync();

private:
    NfcBluetoothHandoverInfoPrivate *d;
};

} // namespace ConnUi

#endif
