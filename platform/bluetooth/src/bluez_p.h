// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUEZ_P_H
#define CONNUI_BLUEZ_P_H

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QMap>
#include <QVariantMap>

namespace ConnUi::BlueZ {

// Interface names to properties, and object paths to these: what the object manager tells.
using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

inline const auto Service = QStringLiteral("org.bluez");
inline const auto AdapterInterface = QStringLiteral("org.bluez.Adapter1");
inline const auto DeviceInterface = QStringLiteral("org.bluez.Device1");
inline const auto ObjectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");

// A call of BlueZ that does not start it.
QDBusMessage methodCall(const QString &path, const QString &interface, const QString &method,
                        const QVariantList &arguments = {});

// A call that asks for all objects.
QDBusMessage managedObjectsCall();

// Unwraps the answer. An error or nonsense gives no objects, and a reason in problem.
Objects managedObjects(const QDBusMessage &reply, QString *problem);

} // namespace ConnUi::BlueZ

#endif
