// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/ndefframing.h"

namespace {

enum Flag : uchar { MessageBegin = 0x80, MessageEnd = 0x40, Chunk = 0x20, ShortRecord = 0x10, HasId = 0x08 };
enum TypeNameFormat : uchar { Empty = 0, Unknown = 5, Unchanged = 6, Reserved = 7 };
constexpr uchar typeNameFormat = 0x07;

// Takes the fields of a message one after the other.
class Reader
{
public:
    explicit Reader(const QByteArray &data) : data(data) {}

    bool isAtEnd() const { return at == quint64(data.size()); }
    bool isIntact() const { return at <= quint64(data.size()); }
    void skip(quint64 bytes) { at += bytes; }

    quint32 number(int bytes)
    {
        quint32 value = 0;
        for (; bytes > 0; --bytes, ++at)
            value = value << 8 | (at < quint64(data.size()) ? uchar(data[qsizetype(at)]) : 0);
        return value;
    }

private:
    const QByteArray &data;
    quint64 at = 0;
};

} // namespace

bool isOneNdefMessage(const QByteArray &data)
{
    Reader reader(data);
    bool isInChunk = false;
    for (bool isFirst = true; !reader.isAtEnd(); isFirst = false) {
        const auto flags = uchar(reader.number(1));
        const auto format = uchar(flags & typeNameFormat);
        const quint32 typeLength = reader.number(1);
        const quint32 payloadLength = reader.number(flags & ShortRecord ? 1 : 4);
        const quint32 idLength = flags & HasId ? reader.number(1) : 0;
        if (bool(flags & MessageBegin) != isFirst || (format == Unchanged) != isInChunk || format == Reserved)
            return false;
        if ((format == Unknown || format == Unchanged) && typeLength > 0)
            return false;
        if (format == Unchanged && flags & HasId)
            return false;
        if (format == Empty && (typeLength > 0 || payloadLength > 0 || idLength > 0))
            return false;
        isInChunk = flags & Chunk;
        reader.skip(quint64(typeLength) + idLength + payloadLength);
        if (!reader.isIntact())
            return false;
        if (flags & MessageEnd)
            return reader.isAtEnd() && !isInChunk;
    }
    return false;
}
