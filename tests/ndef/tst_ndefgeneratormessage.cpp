// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QMap>
#include <QNdefMessage>
#include <QNdefRecord>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QTest>

#include <NDEFGenerator>

#include "abbreviations.h"
#include "allocations.h"
#include "randomcontents.h"

using Record = NDEFGenerator::Record;

namespace {

QByteArray uriPayload(const QByteArray &uri)
{
    int best = 0;
    for (auto entry = abbreviations().begin(); entry != abbreviations().end(); ++entry)
        if (uri.startsWith(entry.value()) && entry.value().size() > abbreviations().value(best).size())
            best = entry.key();
    return char(best) + uri.mid(abbreviations().value(best).size());
}

} // namespace

class TestNDEFGeneratorMessage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void onlyTheFirstBeginsAndTheLastEnds_data();
    void onlyTheFirstBeginsAndTheLastEnds();
    void everyAbbreviationIsUsed_data();
    void everyAbbreviationIsUsed();
    void longestAbbreviationIsUsed_data();
    void longestAbbreviationIsUsed();
    void dataKeepsItsShorterTable();
    void recordThatDoesNotFitIsRefused_data();
    void recordThatDoesNotFitIsRefused();
    void lengthsThatTheFormatCannotSayAreRefused();
    void mimeTypesAreThoseOfRfc6838_data();
    void mimeTypesAreThoseOfRfc6838();
    void successClearsTheError();
    void resultIsTheOnlyAllocation();
    void longestCharactersHaveRoom();
    void qtReadsRandomMessages();
    void strangersDecoderReadsRandomMessages();
};

void TestNDEFGeneratorMessage::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestNDEFGeneratorMessage::onlyTheFirstBeginsAndTheLastEnds_data()
{
    QTest::addColumn<QStringList>("contents");
    QTest::addColumn<QByteArray>("bytes");
    const QString uri = QStringLiteral("tel:1");
    const QString mime = QStringLiteral("a/b");
    const QByteArray uriBytes = "01 02 55 05 31";
    const QByteArray mimeBytes = "03 01 61 2f 62 78";
    QTest::newRow("one URI") << QStringList{uri} << "d1 " + uriBytes;
    QTest::newRow("one MIME record") << QStringList{mime} << "d2 " + mimeBytes;
    QTest::newRow("two URIs") << QStringList{uri, uri} << "91 " + uriBytes + " 51 " + uriBytes;
    QTest::newRow("three URIs") << QStringList{uri, uri, uri}
                                << "91 " + uriBytes + " 11 " + uriBytes + " 51 " + uriBytes;
    QTest::newRow("two MIME records") << QStringList{mime, mime} << "92 " + mimeBytes + " 52 " + mimeBytes;
    QTest::newRow("both") << QStringList{uri, mime, uri}
                          << "91 " + uriBytes + " 12 " + mimeBytes + " 51 " + uriBytes;
}

void TestNDEFGeneratorMessage::onlyTheFirstBeginsAndTheLastEnds()
{
    QFETCH(QStringList, contents);
    QFETCH(QByteArray, bytes);
    NDEFGenerator generator;
    for (const QString &content : contents)
        generator.addRecord(content.contains(u':') ? Record(content) : Record(content, "x"));
    QCOMPARE(generator.message().toHex(' '), bytes);
}

void TestNDEFGeneratorMessage::everyAbbreviationIsUsed_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("beginning");
    QCOMPARE(abbreviations().size(), 35);
    for (auto entry = abbreviations().begin(); entry != abbreviations().end(); ++entry)
        QTest::newRow(entry.value().constData()) << entry.key() << entry.value();
}

void TestNDEFGeneratorMessage::everyAbbreviationIsUsed()
{
    QFETCH(int, code);
    QFETCH(QByteArray, beginning);
    NDEFGenerator generator;
    generator.addRecord(Record(QString::fromLatin1(beginning + "zz")));
    QCOMPARE(generator.message().mid(4), char(code) + QByteArray("zz"));
    generator.clear();
    generator.addRecord(Record(QString::fromLatin1(beginning.toUpper() + "zz")));
    QCOMPARE(generator.message().mid(4), '\0' + beginning.toUpper() + "zz");
}

void TestNDEFGeneratorMessage::longestAbbreviationIsUsed_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("urn:epc:id:1") << 0x1E;
    QTest::newRow("urn:epc:other") << 0x22;
    QTest::newRow("urn:nfc:sn") << 0x23;
    QTest::newRow("urn:isbn:1") << 0x13;
    QTest::newRow("sips:x") << 0x16;
    QTest::newRow("ftp://ftp.x") << 0x08;
    QTest::newRow("https://www.x") << 0x02;
    QTest::newRow("geo:1,2") << 0x00;
}

void TestNDEFGeneratorMessage::longestAbbreviationIsUsed()
{
    QFETCH(int, code);
    NDEFGenerator generator;
    generator.addRecord(Record(QString::fromLatin1(QTest::currentDataTag())));
    QCOMPARE(int(generator.message().at(4)), code);
}

void TestNDEFGeneratorMessage::dataKeepsItsShorterTable()
{
    for (auto entry = abbreviations().begin(); entry != abbreviations().end(); ++entry) {
        NDEFGenerator generator;
        generator.addRecord(Record(QString::fromLatin1(entry.value() + "zz")));
        const bool known = entry.key() <= 0x0D || entry.key() == 0x1D;
        QCOMPARE(int(generator.data().at(4)), known ? entry.key() : 0);
    }
}

void TestNDEFGeneratorMessage::recordThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QList<Record>>("records");
    QTest::addColumn<QString>("error");
    const Record good(QStringLiteral("tel:1"));
    const QString longType = QString(128, u'x') + u'/' + QString(127, u'y');
    const QString longName = u'x' + (u'/' + QString(128, u'y'));
    QTest::newRow("none") << QList<Record>{} << QStringLiteral("There is no record");
    QTest::newRow("empty") << QList<Record>{good, Record(QString())}
                           << QStringLiteral("Record 2: there is nothing in it");
    QTest::newRow("no type") << QList<Record>{Record(QString(), "x"), good}
                             << QStringLiteral("Record 1: the data has no MIME type");
    QTest::newRow("no MIME type") << QList<Record>{good, good, Record(QStringLiteral("text"), "x")}
                                  << QStringLiteral("Record 3: 'text' is not a MIME type");
    QTest::newRow("percent sign") << QList<Record>{Record(QStringLiteral("%1"), "x")}
                                  << QStringLiteral("Record 1: '%1' is not a MIME type");
    QTest::newRow("long type") << QList<Record>{Record(longType, "x")}
                               << QStringLiteral("Record 1: the MIME type is longer than 255 bytes");
    QTest::newRow("long name") << QList<Record>{Record(longName, "x")}
                               << QStringLiteral("Record 1: '%1' is not a MIME type").arg(longName);
    QTest::newRow("the first of two") << QList<Record>{Record(QString()), Record(QStringLiteral("text"), "x")}
                                      << QStringLiteral("Record 1: there is nothing in it");
}

void TestNDEFGeneratorMessage::recordThatDoesNotFitIsRefused()
{
    QFETCH(QList<Record>, records);
    QFETCH(QString, error);
    NDEFGenerator generator;
    for (const Record &record : records)
        generator.addRecord(record);
    QString reason;
    QCOMPARE(generator.message(&reason), QByteArray());
    QCOMPARE(reason, error);
    QCOMPARE(generator.message(), QByteArray());
}

// Lengths without memory behind them: they are refused before anything is read.
void TestNDEFGeneratorMessage::lengthsThatTheFormatCannotSayAreRefused()
{
    static const char byte = 'x';
    static const QChar letter(u'x');
    QString reason;
    NDEFGenerator generator;
    generator.addRecord(Record(QStringLiteral("a/b"), QByteArray::fromRawData(&byte, 0x1'0000'0000)));
    QCOMPARE(generator.message(&reason), QByteArray());
    QCOMPARE(reason, QStringLiteral("Record 1: the data is too long"));
    generator.clear();
    generator.addRecord(Record(QString::fromRawData(&letter, 0x1'0000'0000 / 3)));
    QCOMPARE(generator.message(&reason), QByteArray());
    QCOMPARE(reason, QStringLiteral("Record 1: the URI is too long"));
}

void TestNDEFGeneratorMessage::mimeTypesAreThoseOfRfc6838_data()
{
    QTest::addColumn<bool>("valid");
    for (const char *type : {"text/plain", "a/b", "image/svg+xml", "application/vnd.a.b-c", "0/9",
                             "Text/X-VCARD", "x/y!#$&-^_.+"})
        QTest::newRow(type) << true;
    for (const char *type :
         {"text",           "/",     "a/",    "/b",         "a/b/c",      "a b/c",   "a/b c",
          "text/plain;x=y", "a/b\"", "a\\/b", "(a)/b",      "a/\xC3\xA4", "a/b\x01", "a/b\x7f",
          "a@b/c",          "a/[b]", "-a/b",  "a/.b",       "a/b%",       "a/b'",    "a/b*",
          "a/b`",           "a/b|",  "a/b~",  "\xC3\xA4/a", "\xD9\xA1/a"})
        QTest::newRow(type) << false;
}

void TestNDEFGeneratorMessage::mimeTypesAreThoseOfRfc6838()
{
    QFETCH(bool, valid);
    NDEFGenerator generator;
    generator.addRecord(Record(QString::fromUtf8(QTest::currentDataTag()), "x"));
    QCOMPARE(!generator.message().isEmpty(), valid);
}

void TestNDEFGeneratorMessage::successClearsTheError()
{
    NDEFGenerator generator;
    generator.addRecord(Record(QStringLiteral("tel:1")));
    QString reason = QStringLiteral("before");
    QVERIFY(!generator.message(&reason).isEmpty());
    QCOMPARE(reason, QString());
}

void TestNDEFGeneratorMessage::resultIsTheOnlyAllocation()
{
    if (!canCountAllocations())
        QSKIP("a sanitizer has an allocator of its own");
    NDEFGenerator generator;
    for (int i = 0; i < 100; ++i) {
        generator.addRecord(Record(QStringLiteral("urn:nfc:\u00E4\u20AC")));
        generator.addRecord(Record(QStringLiteral("a/b"), QByteArray(300, 'x')));
    }
    int allocations = 0;
    {
        const AllocationCount count;
        const QByteArray message = generator.message();
        allocations = count.count();
    }
    QCOMPARE(allocations, 1);
}

// Each takes all the space that is kept for it: the address sanitizer finds a byte too few.
void TestNDEFGeneratorMessage::longestCharactersHaveRoom()
{
    for (int length = 1; length < 100; ++length) {
        const QString uri(length, u'\u20AC');
        NDEFGenerator generator;
        generator.addRecord(Record(uri));
        QCOMPARE(generator.message().mid(generator.message().size() - 3 * length), uri.toUtf8());
        QCOMPARE(generator.data(), generator.message());
    }
}

void TestNDEFGeneratorMessage::qtReadsRandomMessages()
{
    RandomContents random(20261122);
    for (int i = 0; i < 10000; ++i) {
        const QList<Content> contents = random.message();
        const QNdefMessage decoded = QNdefMessage::fromByteArray(encode(contents));
        QCOMPARE(decoded.size(), contents.size());
        for (qsizetype j = 0; j < contents.size(); ++j) {
            const Content &content = contents[j];
            const bool isUri = !content.uri.isEmpty();
            QCOMPARE(decoded[j].typeNameFormat(), isUri ? QNdefRecord::NfcRtd : QNdefRecord::Mime);
            QCOMPARE(decoded[j].type(), isUri ? QByteArray("U") : content.type.toUtf8());
            QCOMPARE(decoded[j].payload(), isUri ? uriPayload(content.uri.toUtf8()) : content.data);
        }
    }
}

void TestNDEFGeneratorMessage::strangersDecoderReadsRandomMessages()
{
    RandomContents random(20261123);
    QByteArray input;
    QByteArray expected;
    for (int i = 0; i < 10000; ++i) {
        const QList<Content> contents = random.message();
        input += encode(contents).toHex() + '\n';
        QByteArrayList records;
        for (const Content &content : contents)
            records.append(content.uri.isEmpty()
                               ? "2:" + content.type.toUtf8().toHex() + ':' + content.data.toHex() + ':'
                               : "1:55:" + uriPayload(content.uri.toUtf8()).toHex() + ':' +
                                     content.uri.toUtf8().toHex());
        expected += records.join(' ') + '\n';
    }
    QProcess decoder;
    decoder.start(QStringLiteral("node"), {QStringLiteral(DECODER)});
    if (!decoder.waitForStarted())
        QSKIP("there is no node");
    decoder.write(input);
    decoder.closeWriteChannel();
    QVERIFY(decoder.waitForFinished(-1));
    if (decoder.exitCode() == 77)
        QSKIP("there is no module \"ndef\": npm install ndef, and NODE_PATH");
    QCOMPARE(decoder.readAllStandardError(), QByteArray());
    QCOMPARE(decoder.exitCode(), 0);
    const QByteArrayList actualLines = decoder.readAllStandardOutput().split('\n');
    const QByteArrayList expectedLines = expected.split('\n');
    QCOMPARE(actualLines.size(), expectedLines.size());
    for (qsizetype i = 0; i < expectedLines.size(); ++i)
        QCOMPARE(actualLines[i], expectedLines[i]);
}

QTEST_GUILESS_MAIN(TestNDEFGeneratorMessage)

#include "tst_ndefgeneratormessage.moc"
