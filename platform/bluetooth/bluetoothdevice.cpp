// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothdevice.h"

#include <QRegularExpression>

namespace ConnUi {

BluetoothDevice::BluetoothDevice() = default;

BluetoothDevice::BluetoothDevice(const QMap<QString, QVariant> &properties, QObject *parent)
    : QObject(parent)
    , m_properties(properties)
{}

BluetoothDevice::BluetoothDevice(const BluetoothDevice &other)
    : QObject(nullptr)
    , m_properties(other.m_properties)
{}

BluetoothDevice &BluetoothDevice::operator=(const BluetoothDevice &other)
{
    m_properties = other.m_properties;
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
    return m_properties.value(QStringLiteral("Address")).toString();
}

QString BluetoothDevice::name() const
{
    const QString alias = m_properties.value(QStringLiteral("Alias")).toString();
    return alias.isEmpty() ? m_properties.value(QStringLiteral("Name")).toString() : alias;
}

} // namespace ConnUi
