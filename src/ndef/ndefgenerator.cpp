// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <utility>

#include <QtEndian>

#include "ndef/ndefgenerator_p.h"

// A message is encoded in two steps: the sizes of all records are added up, then each record is written once
// into a byte array of exactly that size. Nothing is assembled aside and copied.

namespace {

constexpr uchar messageBeginFlag = 0x80;
constexpr uchar messageEndFlag = 0x40;
constexpr uchar shortRecordFlag = 0x10;
constexpr uchar idLengthFlag = 0x08;
constexpr qsizetype shortPayloadMax = 0xFF;

enum TypeNameFormat : uchar { Empty = 0, WellKnown = 1, MediaType = 2 };

constexpr QByteArrayView uriType("U");
constexpr QByteArrayView smartPosterType("Sp");

struct UriPrefix
{
    QStringView text;
    char code;
};

// From the NFC Forum's URI Record Type Definition. The longer of two prefixes that begin alike stands first.
constexpr UriPrefix uriPrefixes[] = {
    {u"http://www.", 0x01},
    {u"https://www.", 0x02},
    {u"http://", 0x03},
    {u"https://", 0x04},
    {u"tel:", 0x05},
    {u"mailto:", 0x06},
    {u"ftp://anonymous:anonymous@", 0x07},
    {u"ftp://ftp.", 0x08},
    {u"ftps://", 0x09},
    {u"sftp://", 0x0A},
    {u"smb://", 0x0B},
    {u"nfs://", 0x0C},
    {u"ftp://", 0x0D},
    {u"file://", 0x1D},
};

// Four code units at a time: every text is looked through once more than it is written.
bool isAscii(QStringView text)
{
    constexpr quint64 beyondAscii = 0xFF80'FF80'FF80'FF80;
    constexpr qsizetype step = sizeof(quint64) / sizeof(QChar);
    for (; text.size() >= step; text = text.sliced(step))
        if (qFromUnaligned<quint64>(text.data()) & beyondAscii)
            return false;
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c < QChar(0x80); });
}

template <typename Function>
void forEachCodePoint(QStringView text, Function function)
{
    for (auto c = text.begin(); c != text.end(); ++c) {
        if (!c->isSurrogate()) {
            function(char32_t(c->unicode()));
        } else if (c->isHighSurrogate() && c + 1 != text.end() && c[1].isLowSurrogate()) {
            function(QChar::surrogateToUcs4(c[0], c[1]));
            ++c;
        } else {
            function(U'?');
        }
    }
}

// The size of QString::toUtf8()'s result.
qsizetype utf8Size(QStringView text)
{
    if (isAscii(text))
        return text.size();

    qsizetype size = 0;
    forEachCodePoint(text,
                     [&](char32_t c) { size += 1 + int(c >= 0x80) + int(c >= 0x800) + int(c >= 0x10000); });
    return size;
}

// Writes what QString::toUtf8() returns, and returns the end of it.
char *writeUtf8(char *out, QStringView text)
{
    // Nearly every text is ASCII. Where it turns out not to be, the bytes written so far are no more than
    // those that replace them.
    char16_t anyBit = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        anyBit |= text[i].unicode();
        out[i] = char(text[i].unicode());
    }
    if (anyBit < 0x80)
        return out + text.size();

    forEachCodePoint(text, [&](char32_t c) {
        const auto continuation = [c](int shift) { return char(0x80 | (c >> shift & 0x3F)); };
        if (c < 0x80) {
            *out++ = char(c);
        } else if (c < 0x800) {
            *out++ = char(0xC0 | c >> 6);
            *out++ = continuation(0);
        } else if (c < 0x10000) {
            *out++ = char(0xE0 | c >> 12);
            *out++ = continuation(6);
            *out++ = continuation(0);
        } else {
            *out++ = char(0xF0 | c >> 18);
            *out++ = continuation(12);
            *out++ = continuation(6);
            *out++ = continuation(0);
        }
    });
    return out;
}

char *writeBytes(char *out, QByteArrayView bytes)
{
    return std::copy_n(bytes.data(), bytes.size(), out);
}

TypeNameFormat typeNameFormat(QByteArrayView type)
{
    if (type == uriType || type == smartPosterType)
        return WellKnown;
    const auto textEnd = std::find(type.begin(), type.end(), '\0');
    return std::count(type.begin(), textEnd, '/') == 1 ? MediaType : Empty;
}

struct RecordSizes
{
    qsizetype type;
    qsizetype payload;
    qsizetype id;

    bool isShort() const { return payload <= shortPayloadMax; }
    qsizetype header() const { return 2 + (isShort() ? 1 : 4) + (id > 0 ? 1 : 0); }
    qsizetype total() const { return header() + type + id + payload; }
};

struct MessageFlags
{
    bool begin;
    bool end;
};

// Writes what stands before the type.
void writeHeader(char *out, const RecordSizes &sizes, TypeNameFormat format, MessageFlags flags)
{
    *out++ = char((flags.begin ? messageBeginFlag : 0) | (flags.end ? messageEndFlag : 0) |
                  (sizes.isShort() ? shortRecordFlag : 0) | (sizes.id > 0 ? idLengthFlag : 0) | format);
    *out++ = char(sizes.type);
    if (sizes.isShort()) {
        *out++ = char(sizes.payload);
    } else {
        qToBigEndian(quint32(sizes.payload), out);
        out += sizeof(quint32);
    }
    if (sizes.id > 0)
        *out = char(sizes.id);
}

bool beginsWith(QStringView text, QStringView prefix)
{
    return text.size() >= prefix.size() &&
           std::equal(prefix.utf16(), prefix.utf16() + prefix.size(), text.utf16());
}

struct UriPayload
{
    char identifierCode;
    QStringView rest;

    RecordSizes recordSizes(QByteArrayView id) const
    {
        return {uriType.size(), 1 + utf8Size(rest), id.size()};
    }
};

UriPayload abbreviated(QStringView uri)
{
    const QChar first = uri.isEmpty() ? QChar() : uri.front();
    for (const auto &[prefix, code] : uriPrefixes)
        if (prefix.front() == first && beginsWith(uri, prefix))
            return {code, uri.sliced(prefix.size())};
    return {0x00, uri};
}

char *writeUriRecord(char *out, QStringView uri, MessageFlags flags, QByteArrayView id)
{
    const UriPayload payload = abbreviated(uri);
    const RecordSizes sizes = payload.recordSizes(id);
    writeHeader(out, sizes, WellKnown, flags);
    out = writeBytes(out + sizes.header(), uriType);
    out = writeBytes(out, id);
    *out++ = payload.identifierCode;
    return writeUtf8(out, payload.rest);
}

RecordSizes mimeRecordSizes(QStringView mimeType, QByteArrayView mimeData)
{
    return {utf8Size(mimeType), mimeData.size(), 0};
}

char *writeMimeRecord(char *out, QStringView mimeType, QByteArrayView mimeData, MessageFlags flags)
{
    const RecordSizes sizes = mimeRecordSizes(mimeType, mimeData);
    char *const type = out + sizes.header();
    char *const payload = writeUtf8(type, mimeType);
    writeHeader(out, sizes, typeNameFormat(QByteArrayView(type, payload)), flags);
    return writeBytes(payload, mimeData);
}

} // namespace

NDEFGenerator::Record::Record(const QString &uri) : d(new Private{uri, {}, {}}) {}

NDEFGenerator::Record::Record(const QString &mimeType, const QByteArray &mimeData)
    : d(new Private{{}, mimeType, mimeData})
{}

NDEFGenerator::Record::Record(const Record &other) : d(new Private(*other.d)) {}

NDEFGenerator::Record::Record(Record &&other) noexcept : d(std::exchange(other.d, nullptr)) {}

NDEFGenerator::Record::~Record()
{
    delete d;
}

QString NDEFGenerator::Record::uri() const
{
    return d->uri;
}

QString NDEFGenerator::Record::mimeType() const
{
    return d->mimeType;
}

QByteArray NDEFGenerator::Record::mimeData() const
{
    return d->mimeData;
}

bool NDEFGenerator::Record::operator==(const Record &other) const
{
    // Different URIs leave two empty MIME types with empty data to compare, which are equal. So the URIs'
    // texts do not matter, only whether there are any.
    return d->uri.isEmpty() == other.d->uri.isEmpty() ||
           (d->mimeType == other.d->mimeType && d->mimeData == other.d->mimeData);
}

NDEFGenerator::NDEFGenerator(QObject *parent) : QObject(parent), d(new NDEFGeneratorPrivate) {}

NDEFGenerator::~NDEFGenerator()
{
    delete d;
}

void NDEFGenerator::addRecord(const Record &record)
{
    d->records.append(record);
}

void NDEFGenerator::addRecord(Record &&record)
{
    d->records.append(std::move(record));
}

void NDEFGenerator::clear()
{
    d->records.clear();
}

QByteArray NDEFGenerator::data() const
{
    const QList<Record> &records = d->records;
    qsizetype size = 0;
    qsizetype dropped = 0;
    for (const Record &record : records)
        if (!record.d->uri.isEmpty())
            size += abbreviated(record.d->uri).recordSizes({}).total();
        else if (!record.d->mimeType.isEmpty())
            size += mimeRecordSizes(record.d->mimeType, record.d->mimeData).total();
        else if (!record.d->mimeData.isEmpty())
            ++dropped;

    QByteArray message(size, Qt::Uninitialized);
    char *out = message.data();
    for (const Record &record : records) {
        const MessageFlags flags{record == records.first(), record == records.last()};
        if (!record.d->uri.isEmpty())
            out = writeUriRecord(out, record.d->uri, flags, {});
        else if (!record.d->mimeType.isEmpty())
            out = writeMimeRecord(out, record.d->mimeType, record.d->mimeData, flags);
    }

    // Said last, since a message handler may change the list.
    for (; dropped > 0; --dropped)
        qWarning("MIME data non-empty, but MIME type is not set - not writing record");
    return message;
}

QByteArray NDEFGeneratorPrivate::generateRecord(const QByteArray &type, const QByteArray &payload,
                                                bool messageBegin, bool messageEnd,
                                                const QByteArray &id) const
{
    const RecordSizes sizes{type.size(), payload.size(), id.size()};
    QByteArray record(sizes.total(), Qt::Uninitialized);
    char *const out = record.data();
    writeHeader(out, sizes, typeNameFormat(type), {messageBegin, messageEnd});
    char *const typeEnd = writeBytes(out + sizes.header(), type);
    writeBytes(writeBytes(typeEnd, id), payload);
    return record;
}

QByteArray NDEFGeneratorPrivate::generateUriRecord(const QString &uri, bool messageBegin, bool messageEnd,
                                                   const QByteArray &id) const
{
    QByteArray record(abbreviated(uri).recordSizes(id).total(), Qt::Uninitialized);
    writeUriRecord(record.data(), uri, {messageBegin, messageEnd}, id);
    return record;
}
