// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/bluetoothcarrier.h"

#include <algorithm>

#include <QMap>
#include <QStringList>

#include "daemon/tags/ndefrecords.h"

namespace {

constexpr char classicType[] = "application/vnd.bluetooth.ep.oob";
constexpr char lowEnergyType[] = "application/vnd.bluetooth.le.oob";
constexpr int addressLength = 6;

// The types of the structures of out-of-band data (Bluetooth assigned numbers, section 2.3).
enum DataType {
    ShortenedLocalName = 0x08,
    CompleteLocalName = 0x09,
    ClassOfDevice = 0x0d,
    LowEnergyAddress = 0x1b
};

// The first structure of a type counts, up to one that is cut or has no type.
QMap<int, QByteArray> structures(const QByteArray &data)
{
    QMap<int, QByteArray> found;
    qsizetype position = 0;
    while (position < data.size()) {
        const int length = quint8(data.at(position));
        if (length == 0 || position + length >= data.size())
            break;
        const int type = quint8(data.at(position + 1));
        if (!found.contains(type))
            found.insert(type, data.mid(position + 2, length - 1));
        position += 1 + length;
    }
    return found;
}

// An address of no bits or of all is nobody's.
QString deviceAddress(const QByteArray &littleEndian)
{
    if (littleEndian.size() < addressLength)
        return {};
    QByteArray address = littleEndian.first(addressLength);
    if (address.count('\0') == addressLength || address.count('\xff') == addressLength)
        return {};
    std::reverse(address.begin(), address.end());
    return QString::fromLatin1(address.toHex(':').toUpper());
}

uint classOfDevice(const QByteArray &littleEndian)
{
    if (littleEndian.size() != 3)
        return 0;
    return quint8(littleEndian[0]) | quint8(littleEndian[1]) << 8 | quint8(littleEndian[2]) << 16;
}

std::optional<BluetoothCarrier> carrier(const QString &address, const QByteArray &data)
{
    if (address.isEmpty())
        return std::nullopt;
    const QMap<int, QByteArray> told = structures(data);
    const QByteArray name = told.value(CompleteLocalName, told.value(ShortenedLocalName));
    return BluetoothCarrier{address, QString::fromUtf8(name), classOfDevice(told.value(ClassOfDevice))};
}

// The length of all of it, the address, then structures.
std::optional<BluetoothCarrier> classicCarrier(const QByteArray &payload)
{
    constexpr int lengthSize = 2;
    if (payload.size() < lengthSize + addressLength)
        return std::nullopt;
    return carrier(deviceAddress(payload.mid(lengthSize)), payload.mid(lengthSize + addressLength));
}

// Structures, the address among them.
std::optional<BluetoothCarrier> lowEnergyCarrier(const QByteArray &payload)
{
    return carrier(deviceAddress(structures(payload).value(LowEnergyAddress)), payload);
}

std::optional<BluetoothCarrier> carrierOf(const NdefRecord &record)
{
    if (record.format != NdefRecord::Mime)
        return std::nullopt;
    // MIME types know no letter case.
    const QByteArray type = record.type.toLower();
    if (type == classicType)
        return classicCarrier(record.payload);
    if (type == lowEnergyType)
        return lowEnergyCarrier(record.payload);
    return std::nullopt;
}

bool isHandoverSelect(const NdefRecord &record)
{
    return record.format == NdefRecord::WellKnown && record.type == "Hs";
}

} // namespace

std::optional<BluetoothCarrier> bluetoothCarrier(const QByteArray &message)
{
    const QList<NdefRecord> records = ndefRecords(message).value_or(QList<NdefRecord>());
    if (records.isEmpty())
        return std::nullopt;
    if (!isHandoverSelect(records.first()))
        return carrierOf(records.first());
    for (const NdefRecord &record : records) {
        std::optional<BluetoothCarrier> found = carrierOf(record);
        if (found)
            return found;
    }
    return std::nullopt;
}
