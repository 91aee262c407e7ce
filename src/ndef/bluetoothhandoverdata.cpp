// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothhandoverdata.h"

QDBusArgument &operator<<(QDBusArgument &argument, const ConnUi::BluetoothHandoverData &data)
{
    argument.beginStructure();
    argument << data.path << data.address;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ConnUi::BluetoothHandoverData &data)
{
    argument.beginStructure();
    argument >> data.path >> data.address;
    argument.endStructure();
    return argument;
}
