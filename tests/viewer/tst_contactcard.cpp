// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>

#include "contactcard.h"

class TestContactCard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nameIsRead();
    void detailsAreReadInTheirOrder();
    void lineIsReadAsOneReadsIt_data();
    void lineIsReadAsOneReadsIt();
    void restIsLeftOut_data();
    void restIsLeftOut();
};

namespace {

QByteArray card(const QByteArray &lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\n" + lines + "END:VCARD\r\n";
}

} // namespace

void TestContactCard::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestContactCard::nameIsRead()
{
    QCOMPARE(cardName(card(QByteArray())), QStringLiteral("Ada Byron"));
}

void TestContactCard::detailsAreReadInTheirOrder()
{
    const QList<CardDetail> details = cardDetails(card("TEL:1\r\nEMAIL:a@b.org\r\nTEL:2\r\n"));
    QCOMPARE(details.size(), 3);
    QCOMPARE(QByteArray(details[0].label), "qtn_nfc_viewer_phone");
    QCOMPARE(details[0].value, QStringLiteral("1"));
    QCOMPARE(QByteArray(details[1].label), "qtn_nfc_viewer_email");
    QCOMPARE(details[2].value, QStringLiteral("2"));
}

void TestContactCard::lineIsReadAsOneReadsIt_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << QByteArray("TEL:+1 555") << QStringLiteral("+1 555");
    QTest::newRow("lower case") << QByteArray("tel:+1") << QStringLiteral("+1");
    QTest::newRow("parameters") << QByteArray("TEL;TYPE=cell;X=\"a\":+1") << QStringLiteral("+1");
    QTest::newRow("group") << QByteArray("item1.TEL:+1") << QStringLiteral("+1");
    QTest::newRow("colons in the value")
        << QByteArray("URL:https://a.org") << QStringLiteral("https://a.org");
    QTest::newRow("folded") << QByteArray("NOTE:on\r\n e\r\n\t two") << QStringLiteral("one two");
    QTest::newRow("folded inside of a character") << QByteArray("NOTE:\xC3\r\n \xBC") << QStringLiteral("ü");
    QTest::newRow("parts") << QByteArray("ADR:;;1 Main St;Town;;123;UK")
                           << QStringLiteral("1 Main St, Town, 123, UK");
    QTest::newRow("escaped") << QByteArray("NOTE:a\\, b\\; c\\nd") << QStringLiteral("a, b; c\nd");
    QTest::newRow("not UTF-8") << QByteArray("ORG:M\xFCller") << QStringLiteral("Müller");
}

void TestContactCard::lineIsReadAsOneReadsIt()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, value);
    const QList<CardDetail> details = cardDetails(card(line + "\r\n"));
    QCOMPARE(details.size(), 1);
    QCOMPARE(details[0].value, value);
}

void TestContactCard::restIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("picture") << QByteArray("PHOTO;ENCODING=b:AAAA");
    QTest::newRow("quoted-printable") << QByteArray("NOTE;ENCODING=QUOTED-PRINTABLE:=41");
    QTest::newRow("empty value") << QByteArray("TEL:");
    QTest::newRow("no colon") << QByteArray("TEL");
    QTest::newRow("longer name") << QByteArray("TELEX:1");
}

void TestContactCard::restIsLeftOut()
{
    QFETCH(QByteArray, line);
    QCOMPARE(cardDetails(card(line + "\r\n")).size(), 0);
}

QTEST_GUILESS_MAIN(TestContactCard)
#include "tst_contactcard.moc"
