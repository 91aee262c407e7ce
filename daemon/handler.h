// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_HANDLER_H
#define CONNUI_DAEMON_HANDLER_H

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QString>
#include <QStringList>

/** An application that takes the content of tags, as its announcement file describes it. (ssos) on the wire.
 */
struct Handler
{
    QString bus;
    QString service;
    QDBusObjectPath path;
    QString applicationId;
    QStringList takes;
};
Q_DECLARE_METATYPE(Handler)

inline QDBusArgument &operator<<(QDBusArgument &argument, const Handler &handler)
{
    argument.beginStructure();
    argument << handler.bus << handler.service << handler.path << handler.applicationId;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument &operator>>(const QDBusArgument &argument, Handler &handler)
{
    argument.beginStructure();
    argument >> handler.bus >> handler.service >> handler.path >> handler.applicationId;
    argument.endStructure();
    return argument;
}

#endif
