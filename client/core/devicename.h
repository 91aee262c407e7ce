// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DEVICENAME_H
#define CONNUI_CLIENT_DEVICENAME_H

#include <QString>

/** Returns the \a name of a device fit to stand in a sentence of ours, as ConnUi::foreignName() makes it;
 * "unnamed device" where nothing is left of it. */
QString deviceName(const QString &name);

#endif
