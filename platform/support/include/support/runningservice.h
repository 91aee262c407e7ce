// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_RUNNINGSERVICE_H
#define CONNUI_SUPPORT_RUNNINGSERVICE_H

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusReply>
#include <QString>

namespace Support {

/**
 * Returns the unique name of the connection that has the name \a service on \a bus: a call to it reaches the
 * service and never starts it. Empty when nobody has the name. Without a bus it is \a service itself, so that
 * the call says what is wrong.
 */
inline QString runningService(const QDBusConnection &bus, const QString &service)
{
    const QDBusConnectionInterface *daemon = bus.interface();
    return daemon ? daemon->serviceOwner(service).value() : service;
}

/** Returns whether \a error says that nobody has the name of a service that a call was not to start. */
inline bool isNotRunning(const QDBusError &error)
{
    return error.type() == QDBusError::ServiceUnknown ||
           error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
}

} // namespace Support

#endif
