// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/type2memory.h"

#include "daemon/tags/cardcommand.h"

namespace {

constexpr int blockSize = 16;

} // namespace

Type2Memory::Type2Memory(Exchange &exchange) : card(exchange) {}

std::optional<quint8> Type2Memory::at(int address)
{
    if (address >= size) {
        lastFault = TagStatus::Unsupported;
        return std::nullopt;
    }
    const int number = address / blockSize;
    if (!blocks.contains(number)) {
        const std::optional<QByteArray> block =
            card.ask(CardCommand::readPages(number * blockSize / pageSize), blockSize);
        if (!block) {
            lastFault = card.fault();
            return std::nullopt;
        }
        blocks.insert(number, *block);
    }
    return quint8(blocks[number][address % blockSize]);
}

bool Type2Memory::writePage(int address, const QByteArray &bytes)
{
    if (card.tell(CardCommand::writePage(address / pageSize, bytes)))
        return true;
    lastFault = card.fault();
    return false;
}

TagStatus Type2Memory::fault() const
{
    return lastFault;
}
