// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_PEERS_H
#define CONNUI_SIM_PEERS_H

#include "daemon/bluetoothpeer.h"

/** The object paths of the things that can be held against the simulated adapter. */
namespace Peers {

/** The phone that takes part in sharing and handovers. */
BluetoothPeer bluetooth();

/** Its name, as its owner has set it. */
QString name();

/** The path of the device with the Bluetooth address \a address; the same at every touch. */
QDBusObjectPath device(const QString &address);

/** The path of a tag that has not been touched before. */
QDBusObjectPath nextTag();

} // namespace Peers

#endif
