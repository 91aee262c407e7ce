// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QTest>

#include "core/ndefframing.h"
#include "core/tagcontent.h"

class TestTagContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

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

    QTest::newRow("a record") << QByteArrayLiteral("d1010155 00") << true;
    QTest::newRow("an empty record") << QByteArrayLiteral("d00000") << true;
    QTest::newRow("a record with an id") << QByteArrayLiteral("d9010101 55 41 00") << true;
    QTest::newRow("a long record") << QByteArrayLiteral("c10100000001 55 00") << true;
    QTest::newRow("two records") << QByteArrayLiteral("91010155 00 51010155 00") << true;
    QTest::newRow("three chunks") << QByteArrayLiteral("b1010155 00 3600 01 00 5600 01 00") << true;
    QTest::newRow("unknown type") << QByteArrayLiteral("d50001 00") << true;

    QTest::newRow("nothing") << QByteArrayLiteral("") << false;
    QTest::newRow("a byte") << QByteArrayLiteral("d1") << false;
    QTest::newRow("a byte behind the end") << QByteArrayLiteral("d1010155 00 00") << false;
    QTest::newRow("a message behind the end") << QByteArrayLiteral("d1010155 00 d1010155 00") << false;
    QTest::newRow("no beginning") << QByteArrayLiteral("51010155 00") << false;
    QTest::newRow("a second beginning") << QByteArrayLiteral("91010155 00 d1010155 00") << false;
    QTest::newRow("no end") << QByteArrayLiteral("91010155 00") << false;
    QTest::newRow("a payload that is too short") << QByteArrayLiteral("d1010255 00") << false;
    QTest::newRow("a length beyond all bytes") << QByteArrayLiteral("c101ffffffff 55 00") << false;
    QTest::newRow("a chunk that is the last") << QByteArrayLiteral("f1010155 00") << false;
    QTest::newRow("a chunk that is not continued") << QByteArrayLiteral("b1010155 00 51010155 00") << false;
    QTest::newRow("a continued chunk that never began") << QByteArrayLiteral("d60001 00") << false;
    QTest::newRow("a continued chunk with a type") << QByteArrayLiteral("b1010155 00 56010155 00") << false;
    QTest::newRow("a continued chunk with an id") << QByteArrayLiteral("b1010155 00 5e000101 41 00") << false;
    QTest::newRow("the reserved format") << QByteArrayLiteral("d7010155 00") << false;
    QTest::newRow("an unknown type with a type") << QByteArrayLiteral("d5010155 00") << false;
    QTest::newRow("an empty record with a payload") << QByteArrayLiteral("d00001 00") << false;
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
    QCOMPARE(content.records[0].text, QStringLiteral("http://a.b"));
}

void TestTagContent::linkIsPlain_data()
{
    QTest::addColumn<QByteArray>("onTag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << QByteArrayLiteral("https://a.b/C") << QStringLiteral("https://a.b/C");
    QTest::newRow("capitals") << QByteArrayLiteral("HTTPS://A.b/C") << QStringLiteral("https://A.b/C");
    QTest::newRow("blanks") << QByteArrayLiteral(" \ttel:1 ") << QStringLiteral("tel:1");
    QTest::newRow("no scheme") << QByteArrayLiteral("www.a.b") << QStringLiteral("http://www.a.b");
    QTest::newRow("a port") << QByteArrayLiteral("a.b:80") << QStringLiteral("a.b:80");
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
    // The forwarded and the opened content begin with the same bytes.
    QCOMPARE(content.records[0].payload, record.payload());
}

void TestTagContent::contactCardIsKnownByItsType_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("isCard");
    QTest::newRow("old") << QByteArrayLiteral("text/x-vcard") << true;
    QTest::newRow("new") << QByteArrayLiteral("text/vcard") << true;
    QTest::newRow("capitals") << QByteArrayLiteral("TEXT/VCARD") << true;
    QTest::newRow("directory") << QByteArrayLiteral("text/directory") << true;
    QTest::newRow("parameter") << QByteArrayLiteral("text/vcard; charset=utf-8") << true;
    QTest::newRow("longer") << QByteArrayLiteral("text/vcardx") << false;
    QTest::newRow("text") << QByteArrayLiteral("text/plain") << false;
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
