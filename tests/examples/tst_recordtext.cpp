// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QTest>
#include <QUrl>

#include "recordtext.h"

using namespace Qt::Literals::StringLiterals;

class TestRecordText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void textStaysInItsLine_data();
    void textStaysInItsLine();
    void uriStaysInItsLine();
    void typeStaysInItsLine();
};

void TestRecordText::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void TestRecordText::textStaysInItsLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << u"Welcome"_s << u"Welcome"_s;
    QTest::newRow("letters of the world") << u"Grüße \u05E9 \U0001F600"_s << u"Grüße \u05E9 \U0001F600"_s;
    QTest::newRow("line feed") << u"a\nrecord: b"_s << u"a\uFFFDrecord: b"_s;
    QTest::newRow("carriage return") << u"a\rb"_s << u"a\uFFFDb"_s;
    QTest::newRow("terminal command") << u"\x1B[2J"_s << u"\uFFFD[2J"_s;
    QTest::newRow("terminal command of one byte") << u"\x9B"
                                                     u"2J"_s
                                                  << u"\uFFFD"
                                                     u"2J"_s;
    QTest::newRow("right to left override") << u"a\u202Eb"_s << u"a\uFFFDb"_s;
    QTest::newRow("line separator") << u"a\u2028b\u2029c"_s << u"a\uFFFDb\uFFFDc"_s;
    QTest::newRow("tag character") << u"a\U000E0041"_s << u"a\uFFFD"_s;
}

void TestRecordText::textStaysInItsLine()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QNdefNfcTextRecord record;
    record.setText(text);
    QCOMPARE(recordText(record), u"text '%1'"_s.arg(shown));
}

void TestRecordText::uriStaysInItsLine()
{
    QNdefNfcUriRecord record;
    record.setPayload("\x00https://a.org/\x1B[2J\n"_ba);
    const QString line = recordText(record);
    QVERIFY2(line.startsWith(u"uri https://a.org/"_s), qUtf8Printable(line));
    QVERIFY(!line.contains(u'\x1B'));
    QVERIFY(!line.contains(u'\n'));
}

void TestRecordText::typeStaysInItsLine()
{
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType("a/%2\n\x9B"_ba);
    record.setPayload("12345");
    QCOMPARE(recordText(record), u"type 'a/%2\uFFFD\uFFFD', 5 bytes"_s);
}

QTEST_GUILESS_MAIN(TestRecordText)
#include "tst_recordtext.moc"
