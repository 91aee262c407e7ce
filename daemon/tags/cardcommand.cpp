// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/cardcommand.h"

#include <initializer_list>

namespace {

QByteArray apdu(std::initializer_list<int> bytes, const QByteArray &data = {})
{
    QByteArray command;
    for (const int byte : bytes)
        command += char(byte);
    return command + data;
}

} // namespace

QByteArray CardCommand::uid()
{
    return apdu({0xff, 0xca, 0x00, 0x00, 0x00});
}

QByteArray CardCommand::readPages(int page)
{
    return apdu({0xff, 0xb0, page >> 8, page & 0xff, 16});
}

QByteArray CardCommand::writePage(int page, const QByteArray &data)
{
    return apdu({0xff, 0xd6, page >> 8, page & 0xff, int(data.size())}, data);
}

QByteArray CardCommand::selectApplication(const QByteArray &name)
{
    return apdu({0x00, 0xa4, 0x04, 0x00, int(name.size())}, name) + '\0';
}

QByteArray CardCommand::selectFile(quint16 identifier)
{
    return apdu({0x00, 0xa4, 0x00, 0x0c, 2, identifier >> 8, identifier & 0xff});
}

QByteArray CardCommand::readBinary(int offset, int length)
{
    return apdu({0x00, 0xb0, offset >> 8, offset & 0xff, length});
}

QByteArray CardCommand::updateBinary(int offset, const QByteArray &data)
{
    return apdu({0x00, 0xd6, offset >> 8, offset & 0xff, int(data.size())}, data);
}
