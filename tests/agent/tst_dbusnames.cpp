// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QtTest>

#include "agent/dbusnames.h"

using namespace ConnUi;

class TestDBusNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isBusNameAgreesWithTheBus_data();
    void isBusNameAgreesWithTheBus();
    void isErrorNameAgreesWithTheBus_data();
    void isErrorNameAgreesWithTheBus();
};

void TestDBusNames::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestDBusNames::isBusNameAgreesWithTheBus_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");

    const QString longest = QStringLiteral("a.") + QString(253, QLatin1Char('b'));
    QTest::newRow("well-known") << QStringLiteral("com.tavix.nfc") << true;
    QTest::newRow("hyphens and underscores") << QStringLiteral("-a.b_c-d._") << true;
    QTest::newRow("digits behind the first letter") << QStringLiteral("a1.b2") << true;
    QTest::newRow("unique") << QStringLiteral(":1.7") << true;
    QTest::newRow("longest") << longest << true;
    QTest::newRow("too long") << longest + QLatin1Char('b') << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("one word") << QStringLiteral("viewer") << false;
    QTest::newRow("unique of one word") << QStringLiteral(":1") << false;
    QTest::newRow("colon alone") << QStringLiteral(":") << false;
    QTest::newRow("dot alone") << QStringLiteral(".") << false;
    QTest::newRow("leading dot") << QStringLiteral(".com.tavix") << false;
    QTest::newRow("trailing dot") << QStringLiteral("com.tavix.") << false;
    QTest::newRow("empty element") << QStringLiteral("com..nfc") << false;
    QTest::newRow("element of a leading digit") << QStringLiteral("com.1tavix") << false;
    QTest::newRow("blank") << QStringLiteral("com.tavix nfc") << false;
    QTest::newRow("slash") << QStringLiteral("com/tavix.nfc") << false;
    QTest::newRow("trailing newline") << QStringLiteral("com.tavix\n") << false;
    QTest::newRow("letter outside ASCII") << QStringLiteral("com.t\u00e4vix") << false;
    QTest::newRow("digit outside ASCII") << QStringLiteral("com.tavix\u0661") << false;
    QTest::newRow("NUL") << QStringLiteral("com.tavix") + QChar(0) << false;
}

void TestDBusNames::isBusNameAgreesWithTheBus()
{
    QFETCH(QString, name);
    QTEST(DBusNames::isBusName(name), "valid");
}

void TestDBusNames::isErrorNameAgreesWithTheBus_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");

    const QString longest = QStringLiteral("a.") + QString(253, QLatin1Char('b'));
    QTest::newRow("rejected") << QStringLiteral("com.tavix.nfc.UIAgent.Rejected") << true;
    QTest::newRow("two elements") << QStringLiteral("_a.B_1") << true;
    QTest::newRow("longest") << longest << true;
    QTest::newRow("too long") << longest + QLatin1Char('b') << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("one word") << QStringLiteral("Rejected") << false;
    QTest::newRow("unique bus name") << QStringLiteral(":1.7") << false;
    QTest::newRow("hyphen") << QStringLiteral("com.tavix-nfc.Rejected") << false;
    QTest::newRow("leading dot") << QStringLiteral(".a.b") << false;
    QTest::newRow("trailing dot") << QStringLiteral("a.b.") << false;
    QTest::newRow("empty element") << QStringLiteral("a..b") << false;
    QTest::newRow("element of a leading digit") << QStringLiteral("a.1b") << false;
    QTest::newRow("blank") << QStringLiteral("the user.said no") << false;
    QTest::newRow("trailing newline") << QStringLiteral("a.b\n") << false;
    QTest::newRow("letter outside ASCII") << QStringLiteral("a.\u00e4") << false;
    QTest::newRow("NUL") << QStringLiteral("a.b") + QChar(0) << false;
}

void TestDBusNames::isErrorNameAgreesWithTheBus()
{
    QFETCH(QString, name);
    QTEST(DBusNames::isErrorName(name), "valid");
}

QTEST_GUILESS_MAIN(TestDBusNames)
#include "tst_dbusnames.moc"
