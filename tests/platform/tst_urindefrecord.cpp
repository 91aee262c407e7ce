// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QNdefNfcUriRecord>
#include <QtTest>

#include <URINDEFRecord>

class TestURINDEFRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void prefixIsWrittenOut_data();
    void prefixIsWrittenOut();
    void reservedCodeStandsForNothing_data();
    void reservedCodeStandsForNothing();
    void emptyPayloadGivesEmptyUri();
    void codeAloneGivesItsPrefix();
    void bytesAreKept();
};

void TestURINDEFRecord::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestURINDEFRecord::prefixIsWrittenOut_data()
{
    QTest::addColumn<int>("code");
    for (int code = 0; code <= 0x23; ++code)
        QTest::addRow("0x%02x", unsigned(code)) << code;
}

// Qt's own decoder is the other opinion on the table.
void TestURINDEFRecord::prefixIsWrittenOut()
{
    QFETCH(int, code);
    const QByteArray payload = char(code) + QByteArray("example.com/a");
    QNdefNfcUriRecord peer;
    peer.setPayload(payload);
    QCOMPARE(URINDEFRecord(payload).getURI(), peer.uri().toString().toUtf8());
}

void TestURINDEFRecord::reservedCodeStandsForNothing_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("first") << 0x24;
    QTest::newRow("middle") << 0x80;
    QTest::newRow("last") << 0xff;
}

void TestURINDEFRecord::reservedCodeStandsForNothing()
{
    QFETCH(int, code);
    QCOMPARE(URINDEFRecord(char(code) + QByteArray("example.com")).getURI(), QByteArray("example.com"));
}

void TestURINDEFRecord::emptyPayloadGivesEmptyUri()
{
    QCOMPARE(URINDEFRecord(QByteArray()).getURI(), QByteArray());
}

void TestURINDEFRecord::codeAloneGivesItsPrefix()
{
    QCOMPARE(URINDEFRecord(QByteArray(1, 0x05)).getURI(), QByteArray("tel:"));
    QCOMPARE(URINDEFRecord(QByteArray(1, 0x00)).getURI(), QByteArray());
}

void TestURINDEFRecord::bytesAreKept()
{
    const QByteArray rest("caf\xc3\xa9\0%20\xff", 11);
    QCOMPARE(URINDEFRecord('\x04' + rest).getURI(), "https://" + rest);
}

QTEST_GUILESS_MAIN(TestURINDEFRecord)
#include "tst_urindefrecord.moc"
