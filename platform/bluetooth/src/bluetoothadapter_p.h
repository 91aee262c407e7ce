// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHADAPTER_P_H
#define CONNUI_BLUETOOTHADAPTER_P_H

#include "bluetoothadapter.h"

class BluezObjectsProxy;
class QDBusObjectPath;

namespace ConnUi {

// Follows the adapter's object on the bus.
class BluetoothAdapterPrivate : public QObject
{
    Q_OBJECT
public:
    // Where the adapter is: the unique name of BlueZ's connection, and the object's path.
    BluetoothAdapterPrivate(const QString &service, const QString &path, BluetoothAdapter *adapter);

    const QString service;
    const QString path;
    bool valid = true;

Q_SIGNALS:
    void vanished();

private:
    void handleRemoval(const QDBusObjectPath &object, const QStringList &interfaces);
    void vanish();
};

} // namespace ConnUi

#endif
