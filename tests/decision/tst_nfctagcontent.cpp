// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QTest>

#include <NfcTagContent>

using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

class TestNfcTagContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void malformedMessageHasNoRecords();
    void chunksAreOneRecord();
    void linkIsPlain_data();
    void linkIsPlain();
    void contactCardIsKnownByItsType_data();
    void contactCardIsKnownByItsType();
    void otherRecordIsShownWhenItIsText_data();
    void otherRecordIsShownWhenItIsText();
    void posterIsUnderstoodWhenItIsOneLink_data();
    void posterIsUnderstoodWhenItIsOneLink();
};

void TestNfcTagContent::malformedMessageHasNoRecords()
{
    const NfcTagContent content(QByteArray::fromHex("d1010155 00 00"));
    QVERIFY(!content.isWellFormed());
    QVERIFY(content.records().isEmpty());
    QVERIFY(NfcTagContent(QByteArray()).isWellFormed());
    QVERIFY(NfcTagContent().isWellFormed());
}

void TestNfcTagContent::chunksAreOneRecord()
{
    // "http://" and "a.b", in two chunks.
    const NfcTagContent content(QByteArray::fromHex("b1010255 0361 5600 02 2e62"));
    QCOMPARE(content.records().size(), 1);
    QCOMPARE(content.records()[0].text(), QStringLiteral("http://a.b"));
}

void TestNfcTagContent::linkIsPlain_data()
{
    QTest::addColumn<QByteArray>("onTag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << QByteArrayLiteral("https://a.b/C") << QStringLiteral("https://a.b/C");
    QTest::newRow("capitals") << QByteArrayLiteral("HTTPS://A.b/C") << QStringLiteral("https://A.b/C");
    QTest::newRow("blanks") << QByteArrayLiteral(" \ttel:1 ") << QStringLiteral("tel:1");
    QTest::newRow("no scheme") << QByteArrayLiteral("www.a.b") << QStringLiteral("http://www.a.b");
    QTest::newRow("a port") << QByteArrayLiteral("a.b:80") << QStringLiteral("a.b:80");
}

void TestNfcTagContent::linkIsPlain()
{
    QFETCH(QByteArray, onTag);
    QFETCH(QString, shown);
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::NfcRtd);
    record.setType("U");
    record.setPayload(QByteArray(1, 0) + onTag);
    const NfcTagContent content(QNdefMessage(record).toByteArray());
    QCOMPARE(content.records().size(), 1);
    QCOMPARE(content.records()[0].kind(), NfcTagRecord::Uri);
    QCOMPARE(content.records()[0].text(), shown);
    // The forwarded and the opened content begin with the same bytes.
    QCOMPARE(content.records()[0].payload(), record.payload());
}

void TestNfcTagContent::contactCardIsKnownByItsType_data()
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

void TestNfcTagContent::contactCardIsKnownByItsType()
{
    QFETCH(QByteArray, type);
    QFETCH(bool, isCard);
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType(type);
    record.setPayload("x");
    const NfcTagContent content(QNdefMessage(record).toByteArray());
    QCOMPARE(content.records().value(0).kind() == NfcTagRecord::ContactCard, isCard);
}

void TestNfcTagContent::otherRecordIsShownWhenItIsText_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("shown");
    QTest::newRow("text") << QByteArrayLiteral("Hello") << QStringLiteral("Hello");
    QTest::newRow("letters of two bytes") << QByteArrayLiteral("\xc3\xa4") << QStringLiteral("ä");
    QTest::newRow("not UTF-8") << QByteArrayLiteral("a\xff") << QString();
    QTest::newRow("a zero") << QByteArrayLiteral("a\0b") << QString();
    QTest::newRow("1000 letters") << QByteArray(1000, 'a') << QString(1000, u'a');
    QTest::newRow("more letters") << QByteArray(1001, 'a') << QString(1000, u'a') + QChar(0x2026);
}

void TestNfcTagContent::otherRecordIsShownWhenItIsText()
{
    QFETCH(QByteArray, payload);
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType("text/plain");
    record.setPayload(payload);
    const NfcTagRecord read = NfcTagContent(QNdefMessage(record).toByteArray()).records().value(0);
    QTEST(read.displayText(), "shown");
    QCOMPARE(read.type(), QStringLiteral("text/plain"));
    QCOMPARE(read.text(), QString());
    QCOMPARE(read.link().uri(), QString());
}

void TestNfcTagContent::posterIsUnderstoodWhenItIsOneLink_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<bool>("isUnderstood");
    QTest::addColumn<QString>("uri");
    QTest::newRow("a link") << QByteArrayLiteral("d10208 5370 d1010455 03612e62") << true
                            << QStringLiteral("http://a.b");
    QTest::newRow("a link and a title")
        << QByteArrayLiteral("d10210 5370 91010455 03612e62 51010454 02656e61") << true
        << QStringLiteral("http://a.b");
    QTest::newRow("two links") << QByteArrayLiteral("d10210 5370 91010455 03612e62 51010455 03632e64")
                               << false << QStringLiteral("http://a.b");
    QTest::newRow("a link and data") << QByteArrayLiteral("d1020e 5370 91010455 03612e62 52030061 2f62")
                                     << false << QStringLiteral("http://a.b");
    QTest::newRow("no link") << QByteArrayLiteral("d10208 5370 d1010454 02656e61") << false << QString();
    QTest::newRow("not a message") << QByteArrayLiteral("d10201 5370 00") << false << QString();
}

void TestNfcTagContent::posterIsUnderstoodWhenItIsOneLink()
{
    QFETCH(QByteArray, hex);
    const NfcTagContent content(QByteArray::fromHex(hex));
    QCOMPARE(content.records().size(), 1);
    const NfcTagRecord poster = content.records().constFirst();
    QTEST(poster.isUnderstood(), "isUnderstood");
    QTEST(poster.link().uri(), "uri");
    QCOMPARE(poster.kind(), poster.text().isEmpty() ? NfcTagRecord::Other : NfcTagRecord::Uri);
}

QTEST_APPLESS_MAIN(TestNfcTagContent)
#include "tst_nfctagcontent.moc"
