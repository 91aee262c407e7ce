// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefgenerator.h"

#include <algorithm>
#include <span>
#include <utility>

#include <QList>
#include <QStringEncoder>
#include <QStringView>
#include <QtEndian>

#include "ndef/ndefformat.h"
#include "ndef/ndefgenerator_p.h"
#include "ndefrecord.h"

// A message is encoded in two steps: the space that all records can take at most is added up, then each
// record is written into a byte array of that size, which is cut to what has been written. So nothing is
// allocated for a single record.

namespace {

constexpr qsizetype shortPayloadMax = 0xFF;
// The limits of the fields for the lengths.
constexpr qsizetype longestType = 0xFF;
constexpr qint64 longestPayload = 0xFFFF'FFFF;
// The flags, the lengths of type and ID, and a long record's payload length.
constexpr qsizetype longestHeader = 7;

using TypeNameFormat = ConnUi::NdefRecord::TypeNameFormat;

constexpr QByteArrayView uriType("U");
constexpr QByteArrayView smartPosterType("Sp");

// As many bytes as a text can take in UTF-8.
qsizetype utf8Space(QStringView text)
{
    return 3 * text.size();
}

// Writes what QString::toUtf8() returns, and returns the end of it.
char *writeUtf8(char *out, QStringView text)
{
    QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    return encoder.appendToBuffer(out, text);
}

char *writeBytes(char *out, QByteArrayView bytes)
{
    return std::copy_n(bytes.data(), bytes.size(), out);
}

TypeNameFormat typeNameFormat(QByteArrayView type)
{
    if (type == uriType || type == smartPosterType)
        return TypeNameFormat::WellKnown;
    const auto textEnd = std::find(type.begin(), type.end(), '\0');
    return std::count(type.begin(), textEnd, '/') == 1 ? TypeNameFormat::Mime : TypeNameFormat::Empty;
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

struct UriPayload
{
    char identifierCode;
    QStringView rest;
};

UriPayload abbreviate(QStringView uri, std::span<const UriPrefix> prefixes)
{
    for (const auto &[prefix, code] : prefixes)
        if (uri.startsWith(prefix))
            return {code, uri.sliced(prefix.size())};
    return {0x00, uri};
}

qsizetype uriRecordSpace(QStringView uri, QByteArrayView id)
{
    return longestHeader + uriType.size() + id.size() + 1 + utf8Space(uri);
}

char *writeUriRecord(char *out, UriPayload uri, MessageFlags flags, QByteArrayView id)
{
    const auto [identifierCode, rest] = uri;
    // Encoded where nothing else comes to stand: how long the header is follows from the payload's size.
    char *const payload = out + longestHeader + uriType.size() + id.size();
    *payload = identifierCode;
    char *const payloadEnd = writeUtf8(payload + 1, rest);

    const RecordSizes sizes{uriType.size(), payloadEnd - payload, id.size()};
    writeHeader(out, sizes, TypeNameFormat::WellKnown, flags);
    char *const type = out + sizes.header();
    return std::copy(payload, payloadEnd, writeBytes(writeBytes(type, uriType), id));
}

qsizetype mimeRecordSpace(QStringView mimeType, QByteArrayView mimeData)
{
    return longestHeader + utf8Space(mimeType) + mimeData.size();
}

char *writeMimeRecord(char *out, QStringView mimeType, QByteArrayView mimeData, MessageFlags flags)
{
    RecordSizes sizes{0, mimeData.size(), 0};
    char *const type = out + sizes.header();
    char *const payload = writeUtf8(type, mimeType);
    sizes.type = payload - type;
    writeHeader(out, sizes, typeNameFormat(QByteArrayView(type, payload)), flags);
    return writeBytes(payload, mimeData);
}

// Whether the text is a name of a MIME type or subtype, as RFC 6838 (4.2) restricts them.
bool isMimeName(QStringView name)
{
    constexpr qsizetype longestName = 127;
    constexpr QStringView special(u"!#$&-^_.+");
    const auto isLetter = [](QChar c) { return c < u'\x80' && c.isLetterOrNumber(); };
    return !name.isEmpty() && name.size() <= longestName && isLetter(name.front()) &&
           std::all_of(name.begin(), name.end(), [&](QChar c) { return isLetter(c) || special.contains(c); });
}

bool isMimeType(QStringView type)
{
    const qsizetype slash = type.indexOf(u'/');
    return slash >= 0 && isMimeName(type.first(slash)) && isMimeName(type.sliced(slash + 1));
}

// Why the record cannot be in a message, or nothing. Only lengths are looked at before they are known to fit.
QString failureOf(const NDEFGenerator::Record &record)
{
    const QString uri = record.uri();
    if (!uri.isEmpty())
        return 1 + utf8Space(uri) <= longestPayload ? QString() : QStringLiteral("the URI is too long");
    const QString type = record.mimeType();
    if (type.isEmpty())
        return record.mimeData().isEmpty() ? QStringLiteral("there is nothing in it")
                                           : QStringLiteral("the data has no MIME type");
    if (type.size() > longestType)
        return QStringLiteral("the MIME type is longer than 255 bytes");
    if (!isMimeType(type))
        return QStringLiteral("'%1' is not a MIME type").arg(type);
    return record.mimeData().size() <= longestPayload ? QString() : QStringLiteral("the data is too long");
}

QString failureOf(const QList<NDEFGenerator::Record> &records)
{
    if (records.isEmpty())
        return QStringLiteral("There is no record");
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QString failure = failureOf(records[i]);
        if (!failure.isEmpty())
            return QStringLiteral("Record %1: %2").arg(QString::number(i + 1), failure);
    }
    return {};
}

} // namespace

const NDEFGenerator::Record::Private NDEFGenerator::Record::Private::none;

NDEFGenerator::Record::Record(const QString &uri) : d(new Private{uri, {}, {}}) {}

NDEFGenerator::Record::Record(const QString &mimeType, const QByteArray &mimeData)
    : d(new Private{{}, mimeType, mimeData})
{}

NDEFGenerator::Record::Record(const Record &other) : d(new Private(Private::of(other))) {}

NDEFGenerator::Record::Record(Record &&other) noexcept : d(std::exchange(other.d, nullptr)) {}

NDEFGenerator::Record &NDEFGenerator::Record::operator=(const Record &other)
{
    return *this = Record(other);
}

NDEFGenerator::Record &NDEFGenerator::Record::operator=(Record &&other) noexcept
{
    Record taken(std::move(other));
    std::swap(d, taken.d);
    return *this;
}

NDEFGenerator::Record::~Record()
{
    delete d;
}

QString NDEFGenerator::Record::uri() const
{
    return Private::of(*this).uri;
}

QString NDEFGenerator::Record::mimeType() const
{
    return Private::of(*this).mimeType;
}

QByteArray NDEFGenerator::Record::mimeData() const
{
    return Private::of(*this).mimeData;
}

bool NDEFGenerator::Record::operator==(const Record &other) const
{
    // Different URIs leave two empty MIME types with empty data to compare, which are equal. So the URIs'
    // texts do not matter, only whether there are any.
    const Private &own = Private::of(*this);
    const Private &others = Private::of(other);
    return own.uri.isEmpty() == others.uri.isEmpty() ||
           (own.mimeType == others.mimeType && own.mimeData == others.mimeData);
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
    qsizetype space = 0;
    qsizetype dropped = 0;
    for (const Record &record : records) {
        const auto &[uri, mimeType, mimeData] = Record::Private::of(record);
        if (!uri.isEmpty())
            space += uriRecordSpace(uri, {});
        else if (!mimeType.isEmpty())
            space += mimeRecordSpace(mimeType, mimeData);
        else if (!mimeData.isEmpty())
            ++dropped;
    }

    QByteArray message(space, Qt::Uninitialized);
    char *out = message.data();
    for (const Record &record : records) {
        const auto &[uri, mimeType, mimeData] = Record::Private::of(record);
        const MessageFlags flags{record == records.first(), record == records.last()};
        if (!uri.isEmpty())
            out = writeUriRecord(out, abbreviate(uri, commonUriPrefixes), flags, {});
        else if (!mimeType.isEmpty())
            out = writeMimeRecord(out, mimeType, mimeData, flags);
    }
    message.truncate(out - message.constData());

    // Said last, since a message handler may change the list.
    for (; dropped > 0; --dropped)
        qWarning("MIME data non-empty, but MIME type is not set - not writing record");
    return message;
}

QByteArray NDEFGenerator::message(QString *error) const
{
    const QList<Record> &records = d->records;
    const QString failure = failureOf(records);
    if (error)
        *error = failure;
    if (!failure.isEmpty())
        return {};

    qsizetype space = 0;
    for (const Record &record : records) {
        const auto &[uri, mimeType, mimeData] = Record::Private::of(record);
        space += uri.isEmpty() ? mimeRecordSpace(mimeType, mimeData) : uriRecordSpace(uri, {});
    }
    QByteArray message(space, Qt::Uninitialized);
    char *out = message.data();
    for (qsizetype i = 0; i < records.size(); ++i) {
        const auto &[uri, mimeType, mimeData] = Record::Private::of(records[i]);
        const MessageFlags flags{i == 0, i == records.size() - 1};
        if (uri.isEmpty())
            out = writeMimeRecord(out, mimeType, mimeData, flags);
        else
            out = writeUriRecord(out, abbreviate(uri, uriPrefixes), flags, {});
    }
    message.truncate(out - message.constData());
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
    QByteArray record(uriRecordSpace(uri, id), Qt::Uninitialized);
    const char *const end =
        writeUriRecord(record.data(), abbreviate(uri, commonUriPrefixes), {messageBegin, messageEnd}, id);
    record.truncate(end - record.constData());
    return record;
}
