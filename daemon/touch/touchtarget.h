// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TOUCH_TOUCHTARGET_H
#define CONNUI_DAEMON_TOUCH_TOUCHTARGET_H

#include <QDBusObjectPath>
#include <QString>

/** The touched object, as the object paths by which the agent's requests name it. */
namespace TouchTarget {

/** A tag; another one at every touch. */
QDBusObjectPath nextTag();

/** The device with the Bluetooth address \a address; the same at every touch. */
QDBusObjectPath device(const QString &address);

} // namespace TouchTarget

#endif
