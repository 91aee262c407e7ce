// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHADAPTER_P_H
#define CONNUI_BLUETOOTHADAPTER_P_H

#include <QDBusMessage>

#include "bluetoothadapter.h"

namespace ConnUi {

// Follows the adapter's object on the bus.
class BluetoothAdapterPrivate : public QObject
{
    Q_OBJECT
public:
    BluetoothAdapterPrivate(BluetoothAdapter *adapter, const QString &path);

    QString path;
    bool valid = true;

Q_SIGNALS:
    void vanished();

private Q_SLOTS:
    void interfacesRemoved(const QDBusMessage &signal);

private:
    void vanish();
};

} // namespace ConnUi

#endif
