// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DBUSNAMES_H
#define CONNUI_DBUSNAMES_H

#include <QString>

/** The names that D-Bus allows. libdbus ends the process of whoever hands it another. */
namespace ConnUi::DBusNames {

/** Returns whether \a name can be a connection's name on a bus, unique (":1.7") or well-known
 * ("com.tavix.nfc"). */
bool isBusName(const QString &name);

/** Returns whether \a name can be the name of an error. */
bool isErrorName(const QString &name);

} // namespace ConnUi::DBusNames

#endif
