// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/ndefrecords.h"

class TestNdefRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void partsOfARecordAreFound();
    void recordsComeInTheirOrder();
    void chunksAreOneRecord();
    void conformingMessagesAreTaken_data();
    void conformingMessagesAreTaken();
    void otherBytesAreRefused_data();
    void otherBytesAreRefused();
    void everyCutOfAMessageIsRefused();
};

void TestNdefRecords::partsOfARecordAreFound()
{
    const auto records = ndefRecords(QByteArray::fromHex("da0302016162636465ff"));
    QVERIFY(records);
    QCOMPARE(records->size(), 1);
    QCOMPARE(records->first().format, int(NdefRecord::Mime));
    QCOMPARE(records->first().type, "abc");
    QCOMPARE(records->first().id, "d");
    QCOMPARE(records->first().payload, QByteArray::fromHex("65ff"));
}

void TestNdefRecords::recordsComeInTheirOrder()
{
    const auto records = ndefRecords(QByteArray::fromHex("910101550111010155025101015503"));
    QVERIFY(records);
    QByteArray payloads;
    for (const NdefRecord &record : *records)
        payloads += record.payload;
    QCOMPARE(payloads, QByteArray::fromHex("010203"));
}

void TestNdefRecords::chunksAreOneRecord()
{
    const auto records = ndefRecords(QByteArray::fromHex("b2030161626331360001325600013351010155ff"));
    QVERIFY(!records);
    const auto message = ndefRecords(QByteArray::fromHex("b2030161626331360001321600013351010155ff"));
    QVERIFY(message);
    QCOMPARE(message->size(), 2);
    QCOMPARE(message->first().type, "abc");
    QCOMPARE(message->first().payload, "123");
}

void TestNdefRecords::conformingMessagesAreTaken_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("empty record") << QByteArray::fromHex("d00000");
    QTest::newRow("short record") << QByteArray::fromHex("d101015500");
    QTest::newRow("long record") << QByteArray::fromHex("c101000000015500");
    QTest::newRow("record of 70,000 bytes") << QByteArray::fromHex("c1010001117055") + QByteArray(70000, 'a');
    QTest::newRow("identifier") << QByteArray::fromHex("d90101015561ff");
    QTest::newRow("identifier of no bytes") << QByteArray::fromHex("d901010055ff");
    QTest::newRow("payload of no bytes") << QByteArray::fromHex("d1010055");
    QTest::newRow("unknown format") << QByteArray::fromHex("d50001ff");
    QTest::newRow("unknown format in chunks") << QByteArray::fromHex("b50001ff560001ff");
}

void TestNdefRecords::conformingMessagesAreTaken()
{
    QFETCH(QByteArray, message);
    QVERIFY(ndefRecords(message));
}

void TestNdefRecords::otherBytesAreRefused_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("no beginning") << QByteArray::fromHex("5101015500");
    QTest::newRow("two beginnings") << QByteArray::fromHex("9101015500d101015500");
    QTest::newRow("no end") << QByteArray::fromHex("9101015500");
    QTest::newRow("record behind the end") << QByteArray::fromHex("d1010155005101015500");
    QTest::newRow("byte behind the end") << QByteArray::fromHex("d10101550000");
    QTest::newRow("payload beyond the end") << QByteArray::fromHex("d101025500");
    QTest::newRow("payload of 4 GiB") << QByteArray::fromHex("c101ffffffff5500");
    QTest::newRow("empty record with a type") << QByteArray::fromHex("d0010055");
    QTest::newRow("empty record with a payload") << QByteArray::fromHex("d00001ff");
    QTest::newRow("empty record with an identifier") << QByteArray::fromHex("d800000161");
    QTest::newRow("empty record in chunks") << QByteArray::fromHex("b00000560001ff");
    QTest::newRow("unknown format with a type") << QByteArray::fromHex("d5010055");
    QTest::newRow("further chunk without a first one") << QByteArray::fromHex("d60001ff");
    QTest::newRow("reserved format") << QByteArray::fromHex("d7010055");
    QTest::newRow("other record among chunks") << QByteArray::fromHex("b101015500510101550056000100");
    QTest::newRow("further chunk with a type") << QByteArray::fromHex("b101015500560101550000");
    QTest::newRow("further chunk with an identifier") << QByteArray::fromHex("b1010155005e0001016100");
    QTest::newRow("last chunk with more to come") << QByteArray::fromHex("b10101550076000100");
    QTest::newRow("end within chunks") << QByteArray::fromHex("f101015500560001ff");
}

void TestNdefRecords::otherBytesAreRefused()
{
    QFETCH(QByteArray, message);
    QVERIFY(!ndefRecords(message));
}

void TestNdefRecords::everyCutOfAMessageIsRefused()
{
    const QByteArray message = QByteArray::fromHex("99010101556101c101000000015502") +
                               QByteArray::fromHex("b20301616263313600013256000133");
    for (int size = 0; size < message.size(); ++size)
        QVERIFY2(!ndefRecords(message.first(size)), qPrintable(QString::number(size)));
}

QTEST_GUILESS_MAIN(TestNdefRecords)

#include "tst_ndefrecords.moc"
