// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/ndefrecords.h"

#include <QtGlobal>

namespace {

enum HeaderFlag { Begins = 0x80, Ends = 0x40, Chunked = 0x20, Short = 0x10, HasId = 0x08 };
constexpr int formatBits = 0x07;

/** Takes bytes from the front of a message; all that is taken after its end is nothing. */
class Bytes
{
public:
    explicit Bytes(const QByteArray &bytes) : bytes(bytes) {}

    QByteArray take(quint32 length)
    {
        if (length > quint64(bytes.size() - position))
            cut = true;
        const QByteArray taken = cut ? QByteArray() : bytes.mid(position, length);
        position += taken.size();
        return taken;
    }

    quint32 takeNumber(int size)
    {
        const QByteArray digits = take(size);
        quint32 number = 0;
        for (const char digit : digits)
            number = number << 8 | quint8(digit);
        return number;
    }

    bool isCut() const { return cut; }
    bool atEnd() const { return cut || position == bytes.size(); }

private:
    const QByteArray bytes;
    qsizetype position = 0;
    bool cut = false;
};

/** One record as it stands in the message, which may be a chunk of what is meant. */
struct RawRecord
{
    int flags = 0;
    NdefRecord record;
};

RawRecord takeRecord(Bytes &bytes)
{
    RawRecord raw;
    raw.flags = int(bytes.takeNumber(1));
    raw.record.format = raw.flags & formatBits;
    const quint32 typeLength = bytes.takeNumber(1);
    const quint32 payloadLength = bytes.takeNumber(raw.flags & Short ? 1 : 4);
    const quint32 idLength = raw.flags & HasId ? bytes.takeNumber(1) : 0;
    raw.record.type = bytes.take(typeLength);
    raw.record.id = bytes.take(idLength);
    raw.record.payload = bytes.take(payloadLength);
    return raw;
}

bool isConforming(const RawRecord &raw)
{
    const NdefRecord &record = raw.record;
    switch (record.format) {
    case NdefRecord::Empty:
        return !(raw.flags & Chunked) && record.type.isEmpty() && record.id.isEmpty() &&
               record.payload.isEmpty();
    case NdefRecord::Unknown:
        return record.type.isEmpty();
    default:
        return record.format < NdefRecord::Unchanged;
    }
}

bool isFurtherChunk(const RawRecord &raw)
{
    return raw.record.format == NdefRecord::Unchanged && raw.record.type.isEmpty() && !(raw.flags & HasId);
}

} // namespace

std::optional<QList<NdefRecord>> ndefRecords(const QByteArray &message)
{
    QList<NdefRecord> records;
    Bytes bytes(message);
    bool isOpen = false; // whether the last record has chunks to come
    bool isLast = false;
    while (!isLast) {
        const RawRecord raw = takeRecord(bytes);
        isLast = raw.flags & Ends;
        const bool isFirst = records.isEmpty();
        if (bytes.isCut() || isFirst != bool(raw.flags & Begins))
            return std::nullopt;
        if (isOpen ? !isFurtherChunk(raw) : !isConforming(raw))
            return std::nullopt;
        if (isOpen)
            records.last().payload += raw.record.payload;
        else
            records.append(raw.record);
        isOpen = raw.flags & Chunked;
    }
    if (isOpen || !bytes.atEnd())
        return std::nullopt;
    return records;
}
