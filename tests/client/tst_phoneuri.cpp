// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>

#include "core/phoneuri.h"
#include "hostileuris.h"

class TestPhoneUri : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void number_data();
    void number();
    void message_data();
    void message();
};

void TestPhoneUri::number_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<bool>("isPlain");
    QTest::addColumn<bool>("isCode");
    for (const NumberRow &row : numbers)
        QTest::newRow(row.uri) << QString::fromUtf8(row.uri) << row.isPlain << row.isCode;
}

void TestPhoneUri::number()
{
    QFETCH(QString, uri);
    QFETCH(bool, isPlain);
    QFETCH(bool, isCode);
    QCOMPARE(isPlainNumber(uri), isPlain);
    QCOMPARE(isServiceCode(uri), isCode);
}

void TestPhoneUri::message_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<bool>("isWhole");
    for (const MessageRow &row : messages)
        QTest::newRow(row.uri) << QString::fromUtf8(row.uri) << row.receivers << row.isWhole;
}

void TestPhoneUri::message()
{
    QFETCH(QString, uri);
    QFETCH(qsizetype, count);
    QFETCH(bool, isWhole);
    QCOMPARE(::receivers(uri), count);
    QCOMPARE(isShownWhole(uri), isWhole);
}

QTEST_APPLESS_MAIN(TestPhoneUri)
#include "tst_phoneuri.moc"
