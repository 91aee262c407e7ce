// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHADAPTER_H
#define CONNUI_BLUETOOTHADAPTER_H

#include <connui_bluetooth_export.h>

#include <QObject>

#include "bluetoothdevice.h"

namespace ConnUi {

class BluetoothAdapterPrivate;
class PendingAnswer;

/**
 * Gives access to a Bluetooth adapter of this device, by way of BlueZ on the system bus.
 */
class CONNUI_BLUETOOTH_EXPORT BluetoothAdapter : public QObject
{
    Q_OBJECT
public:
    /**
     * Returns a new object for the default adapter, or null when there is none: the first that is switched
     * on, else the first that BlueZ has. The caller owns the object.
     *
     * Blocks until BlueZ answers, for 500 ms at most. BlueZ is not started for this; where it is too slow,
     * refuses or answers nonsense there is no adapter, and one warning.
     */
    static BluetoothAdapter *defaultAdapter();

    /**
     * Returns an answer of \a parent whose value is a BluetoothAdapter *, as defaultAdapter() has it, and
     * returns at once.
     *
     * The adapter belongs to the answer: whoever wants it gives it another parent before the slot ends. A
     * BlueZ that does not answer within 5 s is too slow. A failure is logged as by defaultAdapter(), and is
     * the answer's error; a BlueZ that is not there is no failure.
     */
    static PendingAnswer *defaultAdapterAsync(QObject *parent = nullptr);

    /** Ends all that is under way, without a signal. */
    ~BluetoothAdapter() override;

    /** Returns whether the adapter is still there. One that was removed does not become valid again. */
    bool isValid() const;

    /**
     * Starts to create \a device, of which only the address counts, and returns at once. The outcome is
     * announced by either deviceCreated() or deviceCreationFailed(), always from the event loop.
     *
     * A device that BlueZ knows, be it from another adapter, is taken as it is. Any other is connected, or,
     * where BlueZ cannot connect by address, discovered; discovery stops with the outcome. It fails when
     * the device did not appear within 30 seconds, when the address is invalid, and when the adapter goes
     * away.
     */
    void startCreatingDevice(const BluetoothDevice &device);

Q_SIGNALS:
    /** Announces a device that was asked for. Its address is spelled as it was in the request. */
    void deviceCreated(const BluetoothDevice &device);

    /** Announces that a device could not be created, with the reason in BlueZ's words where it gave one. */
    void deviceCreationFailed(const QString &reason);

private:
    BluetoothAdapter(const QString &service, const QString &path);

    BluetoothAdapterPrivate *d;
};

} // namespace ConnUi

#endif
