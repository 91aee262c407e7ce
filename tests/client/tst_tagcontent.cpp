// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QTest>

#include "core/ndefframing.h"
#include "core/tagcontent.h"

using namespace Qt::Literals::StringLiterals;

class TestTagContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void isOneMessage_data();
    void isOneMessage();
    void malformedMessageHasNoRecords();
    void chunksAreOneRecord();
    void linkIsPlain_data();
    void linkIsPlain();
    void contactCardIsKnownByItsType_data();
    void contactCardIsKnownByItsType();
};

void TestTagContent::isOneMessage_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<bool>("is");

    QTest::newRow("a record") << "d1010155 00"_ba << true;
    QTest::newRow("an empty record") << "d00000"_ba << true;
    QTest::newRow("a record with an id") << "d9010101 55 41 00"_ba << true;
    QTest::newRow("a long record") << "c10100000001 55 00"_ba << true;
    QTest::newRow("two records") << "91010155 00 51010155 00"_ba << true;
    QTest::newRow("three chunks") << "b1010155 00 3600 01 00 5600 01 00"_ba << true;
    QTest::newRow("unknown type") << "d50001 00"_ba << true;

    QTest::newRow("nothing") << ""_ba << false;
    QTest::newRow("a byte") << "d1"_ba << false;
    QTest::newRow("a byte behind the end") << "d1010155 00 00"_ba << false;
    QTest::newRow("a message behind the end") << "d1010155 00 d1010155 00"_ba << false;
    QTest::newRow("no beginning") << "51010155 00"_ba << false;
    QTest::newRow("a second beginning") << "91010155 00 d1010155 00"_ba << false;
    QTest::newRow("no end") << "91010155 00"_ba << false;
    QTest::newRow("a payload that is too short") << "d1010255 00"_ba << false;
    QTest::newRow("a length beyond all bytes") << "c101ffffffff 55 00"_ba << false;
    QTest::newRow("a chunk that is the last") << "f1010155 00"_ba << false;
    QTest::newRow("a chunk that is not continued") << "b1010155 00 51010155 00"_ba << false;
    QTest::newRow("a continued chunk that never began") << "d60001 00"_ba << false;
    QTest::newRow("a continued chunk with a type") << "b1010155 00 56010155 00"_ba << false;
    QTest::newRow("a continued chunk with an id") << "b1010155 00 5e000101 41 00"_ba << false;
    QTest::newRow("the reserved format") << "d7010155 00"_ba << false;
    QTest::newRow("an unknown type with a type") << "d5010155 00"_ba << false;
    QTest::newRow("an empty record with a payload") << "d00001 00"_ba << false;
}

void TestTagContent::isOneMessage()
{
    QFETCH(QByteArray, hex);
    QFETCH(bool, is);
    QCOMPARE(isOneNdefMessage(QByteArray::fromHex(hex)), is);
}

void TestTagContent::malformedMessageHasNoRecords()
{
    const TagContent content = readTag(QByteArray::fromHex("d1010155 00 00"));
    QVERIFY(!content.isWellFormed);
    QVERIFY(content.records.isEmpty());
    QVERIFY(readTag({}).isWellFormed);
}

void TestTagContent::chunksAreOneRecord()
{
    // "http://" and "a.b", in two chunks.
    const TagContent content = readTag(QByteArray::fromHex("b1010255 0361 5600 02 2e62"));
    QCOMPARE(content.records.size(), 1);
    QCOMPARE(content.records[0].text, u"http://a.b"_s);
}

void TestTagContent::linkIsPlain_data()
{
    QTest::addColumn<QByteArray>("onTag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "https://a.b/C"_ba << u"https://a.b/C"_s;
    QTest::newRow("capitals") << "HTTPS://A.b/C"_ba << u"https://A.b/C"_s;
    QTest::newRow("blanks") << " \ttel:1 "_ba << u"tel:1"_s;
    QTest::newRow("no scheme") << "www.a.b"_ba << u"http://www.a.b"_s;
    QTest::newRow("a port") << "a.b:80"_ba << u"a.b:80"_s;
}

void TestTagContent::linkIsPlain()
{
    QFETCH(QByteArray, onTag);
    QFETCH(QString, shown);
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::NfcRtd);
    record.setType("U");
    record.setPayload(QByteArray(1, 0) + onTag);
    const TagContent content = readTag(QNdefMessage(record).toByteArray());
    QCOMPARE(content.records.size(), 1);
    QCOMPARE(content.records[0].kind, TagRecord::Uri);
    QCOMPARE(content.records[0].text, shown);
    // What is forwarded and what is opened begin with the same bytes.
    QCOMPARE(content.records[0].payload, record.payload());
}

void TestTagContent::contactCardIsKnownByItsType_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("isCard");
    QTest::newRow("old") << "text/x-vcard"_ba << true;
    QTest::newRow("new") << "text/vcard"_ba << true;
    QTest::newRow("capitals") << "TEXT/VCARD"_ba << true;
    QTest::newRow("directory") << "text/directory"_ba << true;
    QTest::newRow("parameter") << "text/vcard; charset=utf-8"_ba << true;
    QTest::newRow("longer") << "text/vcardx"_ba << false;
    QTest::newRow("text") << "text/plain"_ba << false;
}

void TestTagContent::contactCardIsKnownByItsType()
{
    QFETCH(QByteArray, type);
    QFETCH(bool, isCard);
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType(type);
    record.setPayload("x");
    const TagContent content = readTag(QNdefMessage(record).toByteArray());
    QCOMPARE(content.records.value(0).kind == TagRecord::ContactCard, isCard);
}

QTEST_APPLESS_MAIN(TestTagContent)
#include "tst_tagcontent.moc"
