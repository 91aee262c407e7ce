// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUEZ_P_H
#define CONNUI_BLUEZ_P_H

#include <QDBusObjectPath>
#include <QMap>
#include <QString>
#include <QVariantMap>

namespace ConnUi::BlueZ {

// Interface names to properties, and object paths to these: the reply of the object manager.
using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

inline const auto service = QStringLiteral("org.bluez");
inline const auto adapterInterface = QStringLiteral("org.bluez.Adapter1");
inline const auto deviceInterface = QStringLiteral("org.bluez.Device1");

// Makes these types known to QtDBus, which cannot connect a signal of others.
void registerTypes();

} // namespace ConnUi::BlueZ

#endif
