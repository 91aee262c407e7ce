// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "virtualtype4.h"

namespace {

const QByteArray wrongLength = QByteArray::fromHex("6700");
const QByteArray notFound = QByteArray::fromHex("6a82");
const QByteArray outside = QByteArray::fromHex("6b00");

QByteArray word(int value)
{
    return QByteArray(1, char(value >> 8)) + char(value);
}

} // namespace

VirtualType4::VirtualType4(const QMap<quint16, QByteArray> &files) : files(files) {}

VirtualType4 VirtualType4::holding(const QByteArray &message, int size, int longest)
{
    return ofFile((word(int(message.size())) + message).leftJustified(size, '\0'), longest);
}

VirtualType4 VirtualType4::ofFile(const QByteArray &file, int longest)
{
    return VirtualType4({{containerFile, container(int(file.size()), longest)}, {messageFile, file}});
}

QByteArray VirtualType4::container(int size, int longest)
{
    return QByteArray::fromHex("000f20") + word(longest) + word(longest) + QByteArray::fromHex("0406") +
           word(messageFile) + word(size) + QByteArray::fromHex("0000");
}

QByteArray VirtualType4::atr() const
{
    return QByteArray::fromHex("3b80800101");
}

QByteArray VirtualType4::answer(const QByteArray &command)
{
    const auto byte = [&command](int i) { return i < command.size() ? quint8(command.at(i)) : 0; };
    if (command.startsWith(QByteArray::fromHex("ffca")))
        return QByteArray::fromHex("04778899aabbcc") + success;
    if (command.size() < 5 || byte(0) != 0x00)
        return QByteArray::fromHex("6e00");
    const int offset = byte(2) << 8 | byte(3);
    switch (byte(1)) {
    case 0xa4:
        return select(command);
    case 0xb0:
        return read(offset, byte(4));
    case 0xd6:
        return update(offset, command.mid(5));
    default:
        return QByteArray::fromHex("6d00");
    }
}

QByteArray VirtualType4::select(const QByteArray &command)
{
    if (command.mid(2, 2) == QByteArray::fromHex("0400")) {
        isSelected = command.mid(4) == QByteArray::fromHex("07d276000085010100");
        selectedFile = 0;
        return isSelected ? success : notFound;
    }
    const QByteArray identifier = command.mid(5);
    if (!isSelected || identifier.size() != 2)
        return notFound;
    const auto file = quint16(quint8(identifier[0]) << 8 | quint8(identifier[1]));
    if (!files.contains(file))
        return notFound;
    selectedFile = file;
    return success;
}

QByteArray VirtualType4::read(int offset, int length) const
{
    const QByteArray file = files.value(selectedFile);
    if (offset + length > file.size())
        return outside;
    return file.mid(offset, length) + success;
}

QByteArray VirtualType4::update(int offset, const QByteArray &data)
{
    QByteArray file = files.value(selectedFile);
    if (data.isEmpty())
        return wrongLength;
    if (selectedFile == containerFile || offset + data.size() > file.size())
        return outside;
    files.insert(selectedFile, file.replace(offset, data.size(), data));
    return success;
}
