// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <utility>

#include <QMetaEnum>
#include <QMetaProperty>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtEndian>
#include <QTest>

#include <NdefRecord>

#include "abbreviations.h"
#include "allocations.h"
#include "randomcontents.h"

using ConnUi::NdefRecord;

namespace {

QByteArray wellKnown(const QByteArray &type, const QByteArray &payload)
{
    return "\xD1" + QByteArray(1, char(type.size())) + char(payload.size()) + type + payload;
}

NdefRecord readOne(const QByteArray &message)
{
    const QList<NdefRecord> records = NdefRecord::fromMessage(message);
    return records.size() == 1 ? records[0] : NdefRecord();
}

QByteArray bigEndian(qsizetype number)
{
    QByteArray bytes(sizeof(quint32), Qt::Uninitialized);
    qToBigEndian(quint32(number), bytes.data());
    return bytes;
}

/** Writes messages as NDEF allows them: with IDs, and in chunks at random places. */
class RandomWriter
{
public:
    explicit RandomWriter(quint32 seed) : random(seed) {}

    QByteArray write(const QList<QNdefRecord> &records)
    {
        QByteArray message;
        for (qsizetype i = 0; i < records.size(); ++i)
            write(records[i], i == 0, i == records.size() - 1, &message);
        return message;
    }

    QByteArray bytes(int end)
    {
        QByteArray bytes(random.bounded(end), Qt::Uninitialized);
        for (char &byte : bytes)
            byte = char(random.bounded(256));
        return bytes;
    }

    QNdefRecord record()
    {
        QNdefRecord record;
        record.setTypeNameFormat(QNdefRecord::TypeNameFormat(1 + random.bounded(5)));
        if (record.typeNameFormat() != QNdefRecord::Unknown)
            record.setType('x' + bytes(20));
        record.setId(bytes(10));
        record.setPayload('y' + bytes(300));
        return record;
    }

private:
    void write(const QNdefRecord &record, bool begins, bool ends, QByteArray *message)
    {
        QByteArray left = record.payload();
        int format = record.typeNameFormat();
        QByteArray type = record.type();
        QByteArray id = record.id();
        for (bool isFirst = true; isFirst || !left.isEmpty(); isFirst = false) {
            const QByteArray part =
                left.left(random.bounded(3) ? left.size() : random.bounded(int(left.size()) + 1));
            left = left.mid(part.size());
            const bool isShort = part.size() < 256 && random.bounded(2);
            message->append(char((begins && isFirst ? 0x80 : 0) | (ends && left.isEmpty() ? 0x40 : 0) |
                                 (left.isEmpty() ? 0 : 0x20) | (isShort ? 0x10 : 0) |
                                 (id.isEmpty() ? 0 : 0x08) | format));
            message->append(char(type.size()));
            message->append(isShort ? QByteArray(1, char(part.size())) : bigEndian(part.size()));
            if (!id.isEmpty())
                message->append(char(id.size()));
            message->append(type + id + part);
            format = 6;
            type.clear();
            id.clear();
        }
    }

    QRandomGenerator random;
};

} // namespace

class TestNdefRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void fieldsAreThoseOfTheMessage();
    void onlyOneConformingMessageIsRead_data();
    void onlyOneConformingMessageIsRead();
    void chunksBecomeOneRecord();
    void recordAfterChunksIsAnother();
    void everyUriCodeIsWrittenOut();
    void uriIsRead_data();
    void uriIsRead();
    void textIsRead_data();
    void textIsRead();
    void mimeTypeIsThatOfAMimeRecordOnly();
    void smartPosterHoldsAMessage();
    void emptyRecordHasNothing();
    void copyOutlivesTheOther();
    void movedRecordIsEmpty();
    void propertiesAreReadable();
    void generatedMessagesAreRead();
    void chunkedMessagesAreReadAsQtReadsThem();
    void cutMessageIsRefused();
    void chunksAreJoinedWithoutCopyingAtEach();
};

void TestNdefRecord::fieldsAreThoseOfTheMessage()
{
    const QList<NdefRecord> records =
        NdefRecord::fromMessage(QByteArray::fromHex("9c030201 612f62 69 7879 510104 54 02656e41"));
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].typeNameFormat(), NdefRecord::External);
    QCOMPARE(records[0].type(), "a/b");
    QCOMPARE(records[0].id(), "i");
    QCOMPARE(records[0].payload(), "xy");
    QCOMPARE(records[1].typeNameFormat(), NdefRecord::WellKnown);
    QCOMPARE(records[1].type(), "T");
    QCOMPARE(records[1].id(), QByteArray());
    QCOMPARE(records[1].payload(), "\x02"
                                   "enA");
}

void TestNdefRecord::onlyOneConformingMessageIsRead_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("records");

    QTest::newRow("a record") << QByteArrayLiteral("d1010155 00") << 1;
    QTest::newRow("an empty record") << QByteArrayLiteral("d00000") << 1;
    QTest::newRow("an empty record with an empty id") << QByteArrayLiteral("d8000000") << 1;
    QTest::newRow("a record without a payload") << QByteArrayLiteral("d1010055") << 1;
    QTest::newRow("a record with an id") << QByteArrayLiteral("d9010101 55 41 00") << 1;
    QTest::newRow("a long record") << QByteArrayLiteral("c10100000001 55 00") << 1;
    QTest::newRow("two records") << QByteArrayLiteral("91010155 00 51010155 00") << 2;
    QTest::newRow("three records") << QByteArrayLiteral("91010155 00 100000 51010155 00") << 3;
    QTest::newRow("three chunks") << QByteArrayLiteral("b1010155 00 3600 01 00 5600 01 00") << 1;
    QTest::newRow("unknown type") << QByteArrayLiteral("d50001 00") << 1;
    QTest::newRow("chunks of unknown type") << QByteArrayLiteral("b50001 00 560001 00") << 1;

    QTest::newRow("nothing") << QByteArrayLiteral("") << 0;
    QTest::newRow("a byte") << QByteArrayLiteral("d1") << 0;
    QTest::newRow("a byte behind the end") << QByteArrayLiteral("d1010155 00 00") << 0;
    QTest::newRow("a message behind the end") << QByteArrayLiteral("d1010155 00 d1010155 00") << 0;
    QTest::newRow("no beginning") << QByteArrayLiteral("51010155 00") << 0;
    QTest::newRow("a second beginning") << QByteArrayLiteral("91010155 00 d1010155 00") << 0;
    QTest::newRow("a beginning in a chunk") << QByteArrayLiteral("b1010155 00 d60001 00") << 0;
    QTest::newRow("no end") << QByteArrayLiteral("91010155 00") << 0;
    QTest::newRow("a payload that is too short") << QByteArrayLiteral("d1010255 00") << 0;
    QTest::newRow("a type that is too short") << QByteArrayLiteral("d10200 55") << 0;
    QTest::newRow("an id that is too short") << QByteArrayLiteral("d9010002 55 41") << 0;
    QTest::newRow("a length beyond all bytes") << QByteArrayLiteral("c101ffffffff 55 00") << 0;
    QTest::newRow("a length in the wrong order") << QByteArrayLiteral("c10101000000 55 00") << 0;
    QTest::newRow("a chunk that is the last") << QByteArrayLiteral("f1010155 00") << 0;
    QTest::newRow("a chunk that is not continued") << QByteArrayLiteral("b1010155 00 51010155 00") << 0;
    QTest::newRow("a continued chunk that never began") << QByteArrayLiteral("d60001 00") << 0;
    QTest::newRow("a continued chunk after the last") << QByteArrayLiteral("91010155 00 560001 00") << 0;
    QTest::newRow("a continued chunk with a type") << QByteArrayLiteral("b1010155 00 56010155 00") << 0;
    QTest::newRow("a continued chunk with an id") << QByteArrayLiteral("b1010155 00 5e000101 41 00") << 0;
    QTest::newRow("a continued chunk with an empty id") << QByteArrayLiteral("b1010155 00 5e000100 00") << 0;
    QTest::newRow("the reserved format") << QByteArrayLiteral("d7010155 00") << 0;
    QTest::newRow("an unknown type with a type") << QByteArrayLiteral("d5010155 00") << 0;
    QTest::newRow("an empty record with a type") << QByteArrayLiteral("d0010055") << 0;
    QTest::newRow("an empty record with an id") << QByteArrayLiteral("d8000001 41") << 0;
    QTest::newRow("an empty record with a payload") << QByteArrayLiteral("d00001 00") << 0;
    QTest::newRow("an empty record with chunks") << QByteArrayLiteral("b00000 560001 00") << 0;
}

void TestNdefRecord::onlyOneConformingMessageIsRead()
{
    QFETCH(QByteArray, hex);
    QFETCH(int, records);
    QCOMPARE(NdefRecord::fromMessage(QByteArray::fromHex(hex)).size(), records);
}

void TestNdefRecord::chunksBecomeOneRecord()
{
    const NdefRecord record = readOne(QByteArray::fromHex("b9010201 55 69 0361 3600 01 2e 5600 02 6263"));
    QCOMPARE(record.typeNameFormat(), NdefRecord::WellKnown);
    QCOMPARE(record.id(), "i");
    QCOMPARE(record.uri(), QStringLiteral("http://a.bc"));
}

void TestNdefRecord::recordAfterChunksIsAnother()
{
    const QList<NdefRecord> records =
        NdefRecord::fromMessage(QByteArray::fromHex("b5000178 16000179 350001 7a 560001 7b"));
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].payload(), "xy");
    QCOMPARE(records[1].payload(), "z{");
}

void TestNdefRecord::everyUriCodeIsWrittenOut()
{
    for (int code = 0; code <= 0xFF; ++code)
        QCOMPARE(readOne(wellKnown("U", char(code) + QByteArray("zz"))).uri(),
                 QString::fromLatin1(abbreviations().value(code) + "zz"));
}

void TestNdefRecord::uriIsRead_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("uri");
    QTest::newRow("no payload") << wellKnown("U", {}) << QString();
    QTest::newRow("code alone") << wellKnown("U", "\x05") << QStringLiteral("tel:");
    QTest::newRow("UTF-8") << wellKnown("U", "\x03\xC3\xA4.example")
                           << QStringLiteral("http://\u00E4.example");
    QTest::newRow("no UTF-8") << wellKnown("U", "\x03\xE4") << QStringLiteral("http://\uFFFD");
    QTest::newRow("absolute") << QByteArray("\xD3\x05\x01tel:1x") << QStringLiteral("tel:1");
    QTest::newRow("text") << wellKnown("T", "\x05"
                                            "1")
                          << QString();
    QTest::newRow("longer type") << wellKnown("UU", "\x05"
                                                    "1")
                                 << QString();
    QTest::newRow("letter case") << wellKnown("u", "\x05"
                                                   "1")
                                 << QString();
    QTest::newRow("other format") << QByteArray("\xD4\x01\x02U\x05"
                                                "1")
                                  << QString();
}

void TestNdefRecord::uriIsRead()
{
    QFETCH(QByteArray, message);
    QFETCH(QString, uri);
    QCOMPARE(NdefRecord::fromMessage(message).size(), 1);
    QCOMPARE(readOne(message).uri(), uri);
}

void TestNdefRecord::textIsRead_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    const QByteArray big = QByteArray::fromHex("30c60041");
    const QByteArray little = QByteArray::fromHex("c6304100");
    const QString text = QStringLiteral("\u30C6A");
    QTest::newRow("UTF-8") << QByteArray("\x02"
                                         "en\xE3\x83\x86"
                                         "A")
                           << text;
    QTest::newRow("language with a region") << QByteArray("\x05"
                                                          "en-USA")
                                            << QStringLiteral("A");
    QTest::newRow("no language") << QByteArray("\0A", 2) << QStringLiteral("A");
    QTest::newRow("reserved bit") << QByteArray("\x42"
                                                "enA")
                                  << QStringLiteral("A");
    QTest::newRow("no UTF-8") << QByteArray("\0\xE4", 2) << QStringLiteral("\uFFFD");
    QTest::newRow("UTF-16") << "\x82"
                               "en" +
                                   big
                            << text;
    QTest::newRow("UTF-16, big endian") << "\x82"
                                           "en\xFE\xFF" +
                                               big
                                        << text;
    QTest::newRow("UTF-16, little endian") << "\x82"
                                              "en\xFF\xFE" +
                                                  little
                                           << text;
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("status alone") << QByteArray("\x02") << QString();
    QTest::newRow("language that is cut") << QByteArray("\x3F"
                                                        "en")
                                          << QString();
    QTest::newRow("language alone") << QByteArray("\x02"
                                                  "en")
                                    << QString();
    QTest::newRow("UTF-16 mark alone") << QByteArray("\x82"
                                                     "en\xFF\xFE")
                                       << QString();
}

void TestNdefRecord::textIsRead()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, text);
    QCOMPARE(readOne(wellKnown("T", payload)).text(), text);
    QCOMPARE(readOne(wellKnown("U", payload)).text(), QString());
}

void TestNdefRecord::mimeTypeIsThatOfAMimeRecordOnly()
{
    const NdefRecord record = readOne("\xD2\x0C\x01Text/x-vCardx");
    QCOMPARE(record.mimeType(), QStringLiteral("Text/x-vCard"));
    QCOMPARE(record.payload(), "x");
    QCOMPARE(record.uri(), QString());
    QCOMPARE(record.text(), QString());
    QCOMPARE(readOne("\xD4\x03\x01"
                     "a/bx")
                 .mimeType(),
             QString());
}

void TestNdefRecord::smartPosterHoldsAMessage()
{
    const QByteArray link = wellKnown("U", "\x05"
                                           "1");
    const NdefRecord poster = readOne(wellKnown("Sp", link));
    QCOMPARE(poster.uri(), QString());
    QCOMPARE(readOne(poster.payload()).uri(), QStringLiteral("tel:1"));
}

void TestNdefRecord::emptyRecordHasNothing()
{
    for (const NdefRecord &record : {NdefRecord(), readOne(QByteArray::fromHex("d00000"))}) {
        QCOMPARE(record.typeNameFormat(), NdefRecord::Empty);
        QCOMPARE(record.type() + record.id() + record.payload(), QByteArray());
        QCOMPARE(record.uri() + record.text() + record.mimeType(), QString());
    }
}

void TestNdefRecord::copyOutlivesTheOther()
{
    NdefRecord copy;
    {
        const NdefRecord record = readOne(wellKnown("U", "\x05"
                                                         "1"));
        copy = record;
        const NdefRecord another(record);
        QCOMPARE(another.uri(), QStringLiteral("tel:1"));
    }
    QCOMPARE(copy.uri(), QStringLiteral("tel:1"));
}

void TestNdefRecord::movedRecordIsEmpty()
{
    NdefRecord record = readOne(wellKnown("U", "\x05"
                                               "1"));
    NdefRecord taken(std::move(record));
    QCOMPARE(taken.uri(), QStringLiteral("tel:1"));
    NdefRecord last;
    last = std::move(taken);
    QCOMPARE(last.uri(), QStringLiteral("tel:1"));
    QCOMPARE(record.uri(), QString()); // NOLINT(bugprone-use-after-move)
    QCOMPARE(taken.uri(), QString());  // NOLINT(bugprone-use-after-move)
}

void TestNdefRecord::propertiesAreReadable()
{
    const NdefRecord uri = readOne(QByteArray::fromHex("d9010201 55 69 0531"));
    const QMetaObject &meta = NdefRecord::staticMetaObject;
    const auto read = [&](const NdefRecord &record, const char *name) {
        return meta.property(meta.indexOfProperty(name)).readOnGadget(&record);
    };
    QCOMPARE(read(uri, "typeNameFormat").toInt(), 1);
    QCOMPARE(read(uri, "type").toByteArray(), "U");
    QCOMPARE(read(uri, "id").toByteArray(), "i");
    QCOMPARE(read(uri, "payload").toByteArray(), "\x05"
                                                 "1");
    QCOMPARE(read(uri, "uri").toString(), QStringLiteral("tel:1"));
    QCOMPARE(read(readOne(wellKnown("T", QByteArray("\0A", 2))), "text").toString(), QStringLiteral("A"));
    QCOMPARE(read(readOne("\xD2\x03\x01"
                          "a/bx"),
                  "mimeType")
                 .toString(),
             QStringLiteral("a/b"));
    QCOMPARE(meta.propertyCount(), 7);
    QCOMPARE(QMetaEnum::fromType<NdefRecord::TypeNameFormat>().valueToKey(3), "AbsoluteUri");
}

void TestNdefRecord::generatedMessagesAreRead()
{
    RandomContents random(20261124);
    for (int i = 0; i < 10000; ++i) {
        const QList<Content> contents = random.message();
        const QList<NdefRecord> records = NdefRecord::fromMessage(encode(contents));
        QCOMPARE(records.size(), contents.size());
        for (qsizetype j = 0; j < contents.size(); ++j) {
            QCOMPARE(records[j].uri(), contents[j].uri);
            QCOMPARE(records[j].mimeType(), contents[j].type);
            if (contents[j].uri.isEmpty())
                QCOMPARE(records[j].payload(), contents[j].data);
        }
    }
}

void TestNdefRecord::chunkedMessagesAreReadAsQtReadsThem()
{
    RandomWriter random(20261125);
    for (int i = 0; i < 10000; ++i) {
        QList<QNdefRecord> written;
        for (qsizetype left = 1 + random.bytes(5).size(); left > 0; --left)
            written.append(random.record());
        const QByteArray message = random.write(written);
        const QNdefMessage expected = QNdefMessage::fromByteArray(message);
        const QList<NdefRecord> records = NdefRecord::fromMessage(message);
        QCOMPARE(expected, QNdefMessage(written));
        QCOMPARE(records.size(), expected.size());
        for (qsizetype j = 0; j < records.size(); ++j) {
            QCOMPARE(int(records[j].typeNameFormat()), int(expected[j].typeNameFormat()));
            QCOMPARE(records[j].type(), expected[j].type());
            QCOMPARE(records[j].id(), expected[j].id());
            QCOMPARE(records[j].payload(), expected[j].payload());
        }
    }
}

void TestNdefRecord::cutMessageIsRefused()
{
    RandomWriter random(20261126);
    const QByteArray message = random.write({random.record(), random.record(), random.record()});
    QCOMPARE(NdefRecord::fromMessage(message).size(), 3);
    for (qsizetype size = 0; size < message.size(); ++size)
        QCOMPARE(NdefRecord::fromMessage(message.first(size)).size(), 0);
}

// Copying what has been joined at each chunk would take an allocation each, and time that grows with the
// square of the length.
void TestNdefRecord::chunksAreJoinedWithoutCopyingAtEach()
{
    if (!canCountAllocations())
        QSKIP("a sanitizer has an allocator of its own");
    constexpr int chunks = 100'000;
    const QByteArray first = QByteArray::fromHex("b50001 78");
    const QByteArray further = QByteArray::fromHex("360001 78");
    const QByteArray last = QByteArray::fromHex("560001 78");
    const QByteArray message = first + further.repeated(chunks) + last;
    QList<NdefRecord> records;
    int allocations = 0;
    {
        const AllocationCount count;
        records = NdefRecord::fromMessage(message);
        allocations = count.count();
    }
    QCOMPARE(records.value(0).payload(), QByteArray(chunks + 2, 'x'));
    QVERIFY2(allocations < 100, qPrintable(QString::number(allocations)));
}

QTEST_APPLESS_MAIN(TestNdefRecord)
#include "tst_ndefrecord.moc"
