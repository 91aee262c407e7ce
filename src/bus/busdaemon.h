// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BUSDAEMON_H
#define CONNUI_BUSDAEMON_H

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QString>

/** Calls to the bus itself that do not wait. */
namespace ConnUi::BusDaemon {

/** Asks for the connection that owns \a service: a string, or an error when nobody does. */
QDBusPendingCall owner(const QDBusConnection &bus, const QString &service);

/** Asks for the process that owns \a service: a uint, or an error when nobody does. */
QDBusPendingCall processId(const QDBusConnection &bus, const QString &service);

/** Has \a service started, unless it is there; \a timeout is in milliseconds, -1 for the usual one. */
QDBusPendingCall start(const QDBusConnection &bus, const QString &service, int timeout = -1);

} // namespace ConnUi::BusDaemon

#endif
