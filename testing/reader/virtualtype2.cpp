// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "virtualtype2.h"

namespace {

constexpr int pageSize = 4;
constexpr int headerSize = 16;
constexpr int readSize = 16;

QByteArray messageBlock(const QByteArray &message)
{
    QByteArray block(1, '\x03');
    if (message.size() >= 255)
        block += QByteArray(1, '\xff') + char(message.size() >> 8);
    return block + char(message.size()) + message + '\xfe';
}

} // namespace

VirtualType2::VirtualType2(const QByteArray &memory) : memory(memory) {}

VirtualType2 VirtualType2::sticker(const QByteArray &message)
{
    return formatted(QByteArray::fromHex("0103a00c34") + messageBlock(message));
}

VirtualType2 VirtualType2::formatted(const QByteArray &data, int size)
{
    QByteArray memory = QByteArray::fromHex("04a1b29fc3d4e5f602480000e110") + char(size / 8) + '\0';
    memory += data.leftJustified(size, '\0');
    return VirtualType2(memory);
}

QByteArray VirtualType2::atr() const
{
    return QByteArray::fromHex("3b8f8001804f0ca0000003060300030000000068");
}

QByteArray VirtualType2::answer(const QByteArray &command)
{
    const auto byte = [&command](int i) { return i < command.size() ? quint8(command.at(i)) : 0; };
    if (byte(0) != 0xff || command.size() < 5)
        return QByteArray::fromHex("6e00");
    const int page = byte(2) << 8 | byte(3);
    switch (byte(1)) {
    case 0xca:
        return uid + success;
    case 0xb0:
        return read(page);
    case 0xd6:
        return write(page, command.mid(5));
    default:
        return QByteArray::fromHex("6d00");
    }
}

void VirtualType2::lockFrom(int page)
{
    firstLocked = page;
}

void VirtualType2::setUid(const QByteArray &bytes)
{
    uid = bytes;
}

// Behind the last page is the first one again.
QByteArray VirtualType2::read(int page) const
{
    if (page * pageSize >= memory.size())
        return failure;
    return (memory.mid(page * pageSize, readSize) + memory).first(readSize) + success;
}

QByteArray VirtualType2::write(int page, const QByteArray &data)
{
    if (data.size() != pageSize || page >= firstLocked || page * pageSize < headerSize ||
        page * pageSize >= memory.size())
        return failure;
    memory.replace(page * pageSize, pageSize, data);
    return success;
}
