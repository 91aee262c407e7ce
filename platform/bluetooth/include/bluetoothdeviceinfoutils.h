// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHDEVICEINFOUTILS_H
#define CONNUI_BLUETOOTHDEVICEINFOUTILS_H

#include <connui_bluetooth_export.h>

#include <QString>

namespace ConnUi {

/**
 * Determines the kind of a Bluetooth device.
 */
class CONNUI_BLUETOOTH_EXPORT BluetoothDeviceInfoUtils
{
public:
    /**
     * Returns the theme's icon id for a Class of Device (24 bits, as the Bluetooth assigned numbers lay them
     * out); "icon-m-bluetooth-generic" for a class without an icon of its own.
     */
    static QString codIconId(unsigned int classOfDevice);
};

} // namespace ConnUi

#endif
