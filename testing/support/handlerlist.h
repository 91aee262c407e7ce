// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_HANDLERLIST_H
#define CONNUI_HANDLERLIST_H

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <NdefMessageHandler>

/**
 * Returns the handlers of these \a applications as the argument of a call; all are "org.example.Viewer" on
 * the session bus. It does not hold the records themselves, which would die on the thread of the bus.
 */
inline QVariant handlerList(const QStringList &applications)
{
    QDBusArgument argument;
    argument.beginArray(QMetaType::fromType<ConnUi::NdefMessageHandler>());
    for (const QString &application : applications)
        argument << ConnUi::NdefMessageHandler(application, QStringLiteral("session"),
                                               QStringLiteral("org.example.Viewer"),
                                               QDBusObjectPath(QStringLiteral("/viewer")));
    argument.endArray();
    return QVariant::fromValue(argument);
}

#endif
