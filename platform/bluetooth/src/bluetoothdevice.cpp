// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothdevice.h"

#include <QRegularExpression>

namespace ConnUi {

BluetoothDevice::BluetoothDevice() = default;

BluetoothDevice::BluetoothDevice(const QMap<QString, QVariant> &properties, QObject *parent)
    : QObject(parent)
    , properties(properties)
{}

BluetoothDevice::BluetoothDevice(const BluetoothDevice &other)
    : QObject(nullptr)
    , properties(other.properties)
{}

BluetoothDevice &BluetoothDevice::operator=(const BluetoothDevice &other)
{
    properties = other.properties;
    return *this;
}

bool BluetoothDevice::isValid() const
{
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("([0-9A-Fa-f]{2}:){5}[0-9A-Fa-f]{2}")));
    return form.match(address()).hasMatch();
}

QString BluetoothDevice::address() const
{
    return properties.value(QStringLiteral("Address")).toString();
}

QString BluetoothDevice::name() const
{
    const QString alias = properties.value(QStringLiteral("Alias")).toString();
    return alias.isEmpty() ? properties.value(QStringLiteral("Name")).toString() : alias;
}

} // namespace ConnUi
