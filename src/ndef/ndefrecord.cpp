// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefrecord.h"

#include <algorithm>

#include <QByteArrayView>
#include <QSharedData>
#include <QStringDecoder>

#include "ndef/ndefformat.h"

namespace ConnUi {

class NdefRecordPrivate : public QSharedData
{
public:
    static const NdefRecordPrivate &of(const NdefRecord &record)
    {
        static const NdefRecordPrivate none;
        return record.d ? *record.d : none;
    }

    static NdefRecord record(NdefRecordPrivate *d)
    {
        NdefRecord record;
        record.d = d;
        return record;
    }

    bool isWellKnown(QByteArrayView name) const
    {
        return format == NdefRecord::WellKnown && QByteArrayView(type) == name;
    }

    NdefRecord::TypeNameFormat format = NdefRecord::Empty;
    QByteArray type;
    QByteArray id;
    QByteArray payload;
};

namespace {

// The type name format of the chunks of a record after its first.
constexpr uchar unchanged = 6;

// Takes bytes from the front of a message. When there are too few, nothing is taken and the message is cut.
class Bytes
{
public:
    explicit Bytes(QByteArrayView bytes) : left(bytes) {}

    QByteArrayView take(quint32 length)
    {
        if (length > quint64(left.size())) {
            isCut = true;
            left = {};
            return {};
        }
        const QByteArrayView taken = left.first(length);
        left = left.sliced(length);
        return taken;
    }

    quint32 takeNumber(int size)
    {
        quint32 number = 0;
        for (const char digit : take(size))
            number = number << 8 | uchar(digit);
        return number;
    }

    bool isWhole() const { return !isCut; }
    bool isAtEnd() const { return left.isEmpty(); }

private:
    QByteArrayView left;
    bool isCut = false;
};

// A record as it stands in the message: the whole of it, or a chunk.
struct Chunk
{
    uchar flags;
    QByteArrayView type;
    QByteArrayView id;
    QByteArrayView payload;

    uchar format() const { return flags & typeNameFormatBits; }
};

Chunk takeChunk(Bytes *bytes)
{
    const auto flags = uchar(bytes->takeNumber(1));
    const quint32 typeLength = bytes->takeNumber(1);
    const quint32 payloadLength = bytes->takeNumber(flags & shortRecordFlag ? 1 : 4);
    const quint32 idLength = flags & idLengthFlag ? bytes->takeNumber(1) : 0;
    const QByteArrayView type = bytes->take(typeLength);
    const QByteArrayView id = bytes->take(idLength);
    return {flags, type, id, bytes->take(payloadLength)};
}

bool beginsRecord(const Chunk &chunk)
{
    switch (chunk.format()) {
    case NdefRecord::Empty:
        return !(chunk.flags & chunkFlag) && chunk.type.isEmpty() && chunk.id.isEmpty() &&
               chunk.payload.isEmpty();
    case NdefRecord::Unknown:
        return chunk.type.isEmpty();
    default:
        return chunk.format() < unchanged;
    }
}

bool continuesRecord(const Chunk &chunk)
{
    return chunk.format() == unchanged && chunk.type.isEmpty() && !(chunk.flags & idLengthFlag);
}

NdefRecordPrivate *newRecord(const Chunk &chunk)
{
    auto *record = new NdefRecordPrivate;
    record->format = NdefRecord::TypeNameFormat(chunk.format());
    record->type = chunk.type.toByteArray();
    record->id = chunk.id.toByteArray();
    record->payload = chunk.payload.toByteArray();
    return record;
}

QString expanded(const QByteArray &payload)
{
    if (payload.isEmpty())
        return {};
    const QString rest = QString::fromUtf8(QByteArrayView(payload).sliced(1));
    const auto *const prefix =
        std::find_if(std::begin(uriPrefixes), std::end(uriPrefixes),
                     [&](const UriPrefix &candidate) { return candidate.code == payload.front(); });
    return prefix == std::end(uriPrefixes) ? rest : prefix->text.toString() + rest;
}

QString decodedUtf16(QByteArrayView text)
{
    if (text.startsWith("\xFF\xFE"))
        return QStringDecoder(QStringConverter::Utf16LE)(text);
    return QStringDecoder(QStringConverter::Utf16BE)(text);
}

QString decodedText(QByteArrayView payload)
{
    // Of the first byte: the encoding, and the length of the language's name, which comes next.
    constexpr uchar utf16Flag = 0x80;
    constexpr uchar languageLengthBits = 0x3F;
    if (payload.isEmpty())
        return {};
    const auto status = uchar(payload.front());
    const QByteArrayView text =
        payload.sliced(std::min(1 + qsizetype(status & languageLengthBits), payload.size()));
    return status & utf16Flag ? decodedUtf16(text) : QString::fromUtf8(text);
}

} // namespace

NdefRecord::NdefRecord() = default;

NdefRecord::NdefRecord(const NdefRecord &other) = default;

NdefRecord::NdefRecord(NdefRecord &&other) noexcept = default;

NdefRecord &NdefRecord::operator=(const NdefRecord &other) = default;

NdefRecord &NdefRecord::operator=(NdefRecord &&other) noexcept = default;

NdefRecord::~NdefRecord() = default;

QList<NdefRecord> NdefRecord::fromMessage(const QByteArray &message)
{
    QList<NdefRecord> records;
    NdefRecordPrivate *open = nullptr; // the record that has chunks to come
    Bytes bytes(message);
    bool isLast = false;
    while (!isLast) {
        const Chunk chunk = takeChunk(&bytes);
        if (!bytes.isWhole() || bool(chunk.flags & messageBeginFlag) != records.isEmpty())
            return {};
        if (open ? !continuesRecord(chunk) : !beginsRecord(chunk))
            return {};
        if (!open) {
            open = newRecord(chunk);
            records.append(NdefRecordPrivate::record(open));
        } else {
            open->payload.append(chunk.payload);
        }
        if (!(chunk.flags & chunkFlag))
            open = nullptr;
        isLast = chunk.flags & messageEndFlag;
    }
    return open || !bytes.isAtEnd() ? QList<NdefRecord>() : records;
}

NdefRecord::TypeNameFormat NdefRecord::typeNameFormat() const
{
    return NdefRecordPrivate::of(*this).format;
}

QByteArray NdefRecord::type() const
{
    return NdefRecordPrivate::of(*this).type;
}

QByteArray NdefRecord::id() const
{
    return NdefRecordPrivate::of(*this).id;
}

QByteArray NdefRecord::payload() const
{
    return NdefRecordPrivate::of(*this).payload;
}

QString NdefRecord::uri() const
{
    const NdefRecordPrivate &record = NdefRecordPrivate::of(*this);
    if (record.format == AbsoluteUri)
        return QString::fromUtf8(record.type);
    return record.isWellKnown("U") ? expanded(record.payload) : QString();
}

QString NdefRecord::text() const
{
    const NdefRecordPrivate &record = NdefRecordPrivate::of(*this);
    return record.isWellKnown("T") ? decodedText(record.payload) : QString();
}

QString NdefRecord::mimeType() const
{
    const NdefRecordPrivate &record = NdefRecordPrivate::of(*this);
    return record.format == Mime ? QString::fromUtf8(record.type) : QString();
}

} // namespace ConnUi
