// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>

#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QTest>

#include "recordtext.h"

namespace {

QString textOf(const QNdefRecord &record)
{
    return recordText(ConnUi::NdefRecord::fromMessage(QNdefMessage(record).toByteArray()).constFirst());
}

} // namespace

class TestRecordText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void textStaysInItsLine_data();
    void textStaysInItsLine();
    void uriStaysInItsLine_data();
    void uriStaysInItsLine();
    void typeStaysInItsLine();
};

void TestRecordText::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestRecordText::textStaysInItsLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << QStringLiteral("Welcome") << QStringLiteral("Welcome");
    QTest::newRow("letters of the world")
        << QStringLiteral("Grüße \u05E9 \U0001F600") << QStringLiteral("Grüße \u05E9 \U0001F600");
    QTest::newRow("line feed") << QStringLiteral("a\nrecord: b") << QStringLiteral("a\uFFFDrecord: b");
    QTest::newRow("carriage return") << QStringLiteral("a\rb") << QStringLiteral("a\uFFFDb");
    QTest::newRow("terminal command") << QStringLiteral("\x1B[2J") << QStringLiteral("\uFFFD[2J");
    QTest::newRow("terminal command of one byte") << QStringLiteral("\x9B"
                                                                    "2J")
                                                  << QStringLiteral("\uFFFD"
                                                                    "2J");
    QTest::newRow("right to left override") << QStringLiteral("a\u202Eb") << QStringLiteral("a\uFFFDb");
    QTest::newRow("line separator") << QStringLiteral("a\u2028b\u2029c") << QStringLiteral("a\uFFFDb\uFFFDc");
    QTest::newRow("tag character") << QStringLiteral("a\U000E0041") << QStringLiteral("a\uFFFD");
}

void TestRecordText::textStaysInItsLine()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QNdefNfcTextRecord record;
    record.setText(text);
    QCOMPARE(textOf(record), QStringLiteral("text '%1'").arg(shown));
}

void TestRecordText::uriStaysInItsLine_data()
{
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("line feed") << QByteArray("\n");
    QTest::newRow("terminal command") << QByteArray("\x1B[2J");
    // These are shown as letters are, whether they were encoded or not.
    QTest::newRow("terminal command of one character") << QByteArray("\xC2\x9B");
    QTest::newRow("encoded terminal command of one character") << QByteArray("%C2%9B");
    QTest::newRow("right to left override") << QByteArray("\xE2\x80\xAE");
    QTest::newRow("encoded line separator") << QByteArray("%E2%80%A8");
}

void TestRecordText::uriStaysInItsLine()
{
    QFETCH(QByteArray, rest);
    QNdefNfcUriRecord record;
    record.setPayload(QByteArray(1, '\0') + "https://a.org/" + rest);
    const QString line = textOf(record);
    QVERIFY2(line.startsWith(QStringLiteral("uri https://a.org/")), qUtf8Printable(line));
    const auto isShown = [](QChar character) {
        return character.isPrint() && character.category() != QChar::Separator_Line;
    };
    QVERIFY2(std::all_of(line.cbegin(), line.cend(), isShown), qUtf8Printable(line));
}

void TestRecordText::typeStaysInItsLine()
{
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType(QByteArray("a/%2\n\x9B"));
    record.setPayload("12345");
    QCOMPARE(textOf(record), QStringLiteral("type 'a/%2\uFFFD\uFFFD', 5 bytes"));
}

QTEST_GUILESS_MAIN(TestRecordText)
#include "tst_recordtext.moc"
