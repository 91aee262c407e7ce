// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TYPE2TAG_H
#define CONNUI_DAEMON_TAGS_TYPE2TAG_H

#include <optional>

#include <QMap>

#include "daemon/tags/dataarea.h"
#include "daemon/tags/tag.h"
#include "daemon/tags/type2memory.h"

/**
 * A tag of NFC Forum Type 2 (NFCForum-TS-Type-2-Tag 1.1): pages of four bytes, in which the message is a
 * block of type, length and value.
 */
class Type2Tag : public Tag
{
public:
    explicit Type2Tag(Exchange &exchange);

    TagContents read() override;
    TagStatus write(const QByteArray &message) override;

private:
    /** A block of type, length and value, by the addresses of its parts. */
    struct Block
    {
        int place = 0;
        int lengthPlace = 0;
        int length = 0;
        int valuePlace = 0;
    };
    using Bytes = QMap<int, quint8>; // by address

    TagStatus readCapabilities();
    TagStatus findMessage();
    std::optional<Block> blockAt(int place);
    bool reserve(quint8 type, const Block &block);
    std::optional<QByteArray> bytes(int place, int count);

    bool isLocked();
    int placeForBlock() const;
    std::optional<Bytes> blockOf(const QByteArray &value, int place) const;
    TagStatus writeBlock(const Bytes &block, int place);
    bool leadTo(int place);
    bool writePage(int page, const Bytes &changes);
    TagStatus writeFault() const;

    Type2Memory memory;
    DataArea area{0, 0};
    int access = 0;
    std::optional<Block> message;
    int freePlace = 0;     // where a block could be added
    bool hasTried = false; // to write
    bool isUntouched = true;
    TagStatus fault = TagStatus::Done;
};

#endif
