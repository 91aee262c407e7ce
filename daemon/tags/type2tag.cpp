// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/type2tag.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int staticLocks = 10;
constexpr int capabilityContainer = 12;
constexpr int capabilityContainerSize = 4;
constexpr int firstData = 16;
constexpr quint8 formatted = 0xe1;
constexpr int longLength = 0xff;

enum BlockType {
    Null = 0x00,
    LockControl = 0x01,
    MemoryControl = 0x02,
    NdefMessage = 0x03,
    Terminator = 0xfe,
};

int pageOf(int address)
{
    return address - address % Type2Memory::pageSize;
}

} // namespace

Type2Tag::Type2Tag(Exchange &exchange) : memory(exchange) {}

TagContents Type2Tag::read()
{
    TagStatus status = readCapabilities();
    if (status == TagStatus::Done)
        status = findMessage();
    if (status == TagStatus::Done && message->length == 0)
        status = TagStatus::Empty;
    if (status != TagStatus::Done)
        return {status, {}};
    const std::optional<QByteArray> value = bytes(message->valuePlace, message->length);
    return value ? TagContents{TagStatus::Done, *value} : TagContents{fault, {}};
}

TagStatus Type2Tag::readCapabilities()
{
    area = DataArea(0, firstData);
    const std::optional<QByteArray> capabilities = bytes(capabilityContainer, capabilityContainerSize);
    if (!capabilities)
        return fault == TagStatus::Malformed ? TagStatus::Unsupported : fault;
    const auto byte = [&capabilities](int i) { return quint8(capabilities->at(i)); };
    access = byte(3);
    const bool isReadable = access >> 4 == 0;
    const int majorVersion = byte(1) >> 4;
    const int areaSize = byte(2) * 8;
    if (byte(0) != formatted)
        return TagStatus::NotFormatted;
    if (majorVersion != 1 || !isReadable)
        return TagStatus::Unsupported;
    if (areaSize == 0)
        return TagStatus::Malformed;
    area = DataArea(firstData, firstData + areaSize);
    return TagStatus::Done;
}

// Empty when there is no block for a message. One that is longer than the tag is known, and malformed.
TagStatus Type2Tag::findMessage()
{
    freePlace = area.begin();
    for (int place = freePlace; place < area.end();) {
        const std::optional<QByteArray> type = bytes(place, 1);
        if (!type)
            return fault;
        const auto blockType = quint8(type->front());
        if (blockType == Terminator)
            break;
        if (blockType == Null) {
            place = area.behind(place, 1);
            continue;
        }
        const std::optional<Block> block = blockAt(place);
        if (!block)
            return fault;
        const bool fits = area.room(block->valuePlace) >= block->length;
        if (blockType == NdefMessage) {
            message = block;
            return fits ? TagStatus::Done : TagStatus::Malformed;
        }
        if (!fits)
            return TagStatus::Malformed;
        if (!reserve(blockType, *block))
            return fault;
        place = area.behind(block->valuePlace, block->length);
        freePlace = place;
    }
    return TagStatus::Empty;
}

std::optional<Type2Tag::Block> Type2Tag::blockAt(int place)
{
    Block block;
    block.place = place;
    block.lengthPlace = area.behind(place, 1);
    const std::optional<QByteArray> length = bytes(block.lengthPlace, 1);
    if (!length)
        return std::nullopt;
    block.length = quint8(length->front());
    block.valuePlace = area.behind(block.lengthPlace, 1);
    if (block.length != longLength)
        return block;
    const std::optional<QByteArray> further = bytes(block.valuePlace, 2);
    if (!further)
        return std::nullopt;
    block.length = quint8(further->at(0)) << 8 | quint8(further->at(1));
    block.valuePlace = area.behind(block.valuePlace, 2);
    return block;
}

// Keeps what a control block reserves out of the data area: its place, its size (of bits or of bytes), and
// the size of the pages that the place is counted in.
bool Type2Tag::reserve(quint8 type, const Block &block)
{
    constexpr int valueSize = 3;
    if (type != LockControl && type != MemoryControl)
        return true;
    const std::optional<QByteArray> value = bytes(block.valuePlace, valueSize);
    if (!value || block.length != valueSize) {
        fault = value ? TagStatus::Malformed : fault;
        return false;
    }
    const auto byte = [&value](int i) { return quint8(value->at(i)); };
    const int pageSize = 1 << (byte(2) & 0x0f);
    const int size = byte(1) == 0 ? 256 : byte(1);
    area.reserve((byte(0) >> 4) * pageSize + (byte(0) & 0x0f), type == LockControl ? (size + 7) / 8 : size);
    return true;
}

std::optional<QByteArray> Type2Tag::bytes(int place, int count)
{
    QByteArray found;
    fault = TagStatus::Malformed;
    if (area.room(place) < count)
        return std::nullopt;
    for (; count > 0; --count) {
        const std::optional<quint8> byte = memory.at(place);
        if (!byte) {
            fault = memory.fault() == TagStatus::Refused ? TagStatus::Malformed : memory.fault();
            return std::nullopt;
        }
        found += char(*byte);
        place = area.behind(place, 1);
    }
    return found;
}

TagStatus Type2Tag::write(const QByteArray &value)
{
    const TagStatus status = readCapabilities();
    if (status != TagStatus::Done)
        return status;
    if (isLocked() || (access & 0x0f) != 0)
        return TagStatus::ReadOnly;
    const TagStatus found = findMessage();
    if (!message && found != TagStatus::Empty)
        return found;
    const int place = message ? message->place : placeForBlock();
    const std::optional<Bytes> block = blockOf(value, place);
    return block ? writeBlock(*block, place) : TagStatus::TooSmall;
}

bool Type2Tag::isLocked()
{
    // The low half of the first byte locks other things than data.
    return (memory.at(staticLocks).value_or(0xff) & 0xf0) != 0 ||
           memory.at(staticLocks + 1).value_or(0xff) != 0;
}

// A new block's type and length are written at once: they must not be in two pages.
int Type2Tag::placeForBlock() const
{
    int place = freePlace;
    while (place < area.end() && pageOf(place) != pageOf(area.behind(place, 1)))
        place = area.behind(place, 1);
    return place;
}

// Nothing when there is no room for it.
std::optional<Type2Tag::Bytes> Type2Tag::blockOf(const QByteArray &value, int place) const
{
    QByteArray data(1, char(NdefMessage));
    if (value.size() >= longLength)
        data += QByteArrayLiteral("\xff") + char(value.size() >> 8);
    data += char(value.size());
    data += value;
    const int end = std::min(area.end(), Type2Memory::size);
    Bytes block;
    for (const char byte : std::as_const(data)) {
        if (place >= end)
            return std::nullopt;
        block.insert(place, quint8(byte));
        place = area.behind(place, 1);
    }
    if (place < end)
        block.insert(place, Terminator);
    return block;
}

// First a block without a value is written, then the value, and the length last.
TagStatus Type2Tag::writeBlock(const Bytes &block, int place)
{
    const int lengthPlace = area.behind(place, 1);
    const int lengthPage = pageOf(lengthPlace);
    if (!writePage(lengthPage, {{place, NdefMessage}, {lengthPlace, 0}}) || !leadTo(place))
        return writeFault();
    for (int page = pageOf(block.lastKey()); page > lengthPage; page -= Type2Memory::pageSize)
        if (!writePage(page, block))
            return writeFault();
    return writePage(lengthPage, block) ? TagStatus::Done : writeFault();
}

// Overwrites what stands between the other blocks and a new one, a terminator perhaps.
bool Type2Tag::leadTo(int place)
{
    Bytes nothing;
    for (int i = freePlace; !message && i < place; i = area.behind(i, 1))
        nothing.insert(i, Null);
    for (int page = pageOf(place) - Type2Memory::pageSize; page >= pageOf(freePlace) && !nothing.isEmpty();
         page -= Type2Memory::pageSize)
        if (!writePage(page, nothing))
            return false;
    return true;
}

// Writes those of \a changes that are in the page, if any.
bool Type2Tag::writePage(int page, const Bytes &changes)
{
    const auto first = changes.lowerBound(page);
    if (first == changes.cend() || first.key() >= page + Type2Memory::pageSize)
        return true;
    QByteArray bytes;
    for (int i = page; i < page + Type2Memory::pageSize; ++i) {
        const std::optional<quint8> byte = changes.contains(i) ? changes.value(i) : memory.at(i);
        if (!byte)
            return false;
        bytes += char(*byte);
    }
    hasTried = true;
    const bool isTaken = memory.writePage(page, bytes);
    isUntouched = isUntouched && !isTaken;
    return isTaken;
}

TagStatus Type2Tag::writeFault() const
{
    if (memory.fault() == TagStatus::Gone)
        return hasTried ? TagStatus::Torn : TagStatus::Gone;
    return isUntouched ? TagStatus::ReadOnly : TagStatus::Refused;
}
