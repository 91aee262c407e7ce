// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/cardkind.h"

class TestCardKind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void answerToResetTells_data();
    void answerToResetTells();
    void everyCutOfAnAnswerIsForeign();
    void silentReadersAreOnAList();
    void askedCardIsAType2TagByUidAndPage();
    void randomUidsAreKnownByTheirFirstByte();
};

namespace {

const char *const plainReader = "Reader with two slots 00 00";

CardKind kindOf(const char *atr, const char *reader = plainReader)
{
    return cardKind(QByteArray::fromHex(atr), QString::fromLatin1(reader));
}

} // namespace

void TestCardKind::answerToResetTells_data()
{
    QTest::addColumn<QByteArray>("atr");
    QTest::addColumn<int>("kind");
    const auto row = [](const char *name, const char *atr, CardKind kind) {
        QTest::newRow(name) << QByteArray(atr) << int(kind);
    };
    row("Ultralight", "3b8f8001804f0ca0000003060300030000000068", CardKind::Type2);
    row("Ultralight C", "3b8f8001804f0ca00000030603003a0000000051", CardKind::Type2);
    row("Ultralight EV1", "3b8f8001804f0ca00000030603003d0000000056", CardKind::Type2);
    row("Classic 1K", "3b8f8001804f0ca000000306030001000000006a", CardKind::Unsupported);
    row("Classic 4K", "3b8f8001804f0ca0000003060300020000000069", CardKind::Unsupported);
    row("FeliCa", "3b8f8001804f0ca00000030611003b0000000042", CardKind::Unsupported);
    row("ISO 15693", "3b8f8001804f0ca0000003060b00140000000077", CardKind::Unsupported);
    row("tag of Type 4", "3b80800101", CardKind::Type4);
    row("DESFire", "3b8180018080", CardKind::Type4);
    row("security key", "3b8d800180730021c057597562694b657940", CardKind::Foreign);
    row("bank card", "3b8e800180318066b08412016e01830090002e", CardKind::Foreign);
    row("passport, type B", "3b88800100000000338181003a", CardKind::Foreign);
    row("contact card", "3b6500002063cb6800", CardKind::Foreign);
    row("contact card, inverse", "3f6525002209699000", CardKind::Foreign);
    row("contact card with both protocols", "3bfd1300008131fe158073c021c057597562694b657940",
        CardKind::Foreign);
    row("no answer", "", CardKind::Foreign);
    row("no answer of a reader that is not on the list", "3b00", CardKind::Foreign);
    row("more than a storage card", "3b8f8001804f0ca000000306030003000000006800", CardKind::Foreign);
    row("more than a tag of Type 4", "3b8080010100", CardKind::Foreign);
}

void TestCardKind::answerToResetTells()
{
    QFETCH(QByteArray, atr);
    QFETCH(int, kind);
    QCOMPARE(int(kindOf(atr.constData())), kind);
}

void TestCardKind::everyCutOfAnAnswerIsForeign()
{
    for (const char *atr : {"3b8f8001804f0ca0000003060300030000000068", "3b80800101", "3b8180018080"}) {
        const QByteArray whole = QByteArray::fromHex(atr);
        for (int size = 0; size < whole.size(); ++size)
            QCOMPARE(int(cardKind(whole.first(size), QString::fromLatin1(plainReader))),
                     int(CardKind::Foreign));
    }
}

void TestCardKind::silentReadersAreOnAList()
{
    const char *const silent = "ACS ACR122U PICC Interface 00 00";
    QCOMPARE(int(kindOf("3b00", silent)), int(CardKind::Untold));
    QCOMPARE(int(kindOf("3b0000", silent)), int(CardKind::Foreign));
    QCOMPARE(int(kindOf("3b8f8001804f0ca0000003060300030000000068", silent)), int(CardKind::Type2));
}

void TestCardKind::askedCardIsAType2TagByUidAndPage()
{
    const QByteArray uid = QByteArray::fromHex("04a1b2c3d4e5f6");
    const QByteArray page = QByteArray::fromHex("e1101200") + QByteArray(12, '\0');
    QVERIFY(mayBeType2(uid, page));
    QVERIFY(!mayBeType2(uid.first(4), page));
    QVERIFY(!mayBeType2(uid, QByteArray(16, '\0')));
    QVERIFY(!mayBeType2({}, {}));
}

void TestCardKind::randomUidsAreKnownByTheirFirstByte()
{
    QVERIFY(isRandom(QByteArray::fromHex("08a1b2c3")));
    QVERIFY(!isRandom(QByteArray::fromHex("04a1b2c3")));
    QVERIFY(!isRandom(QByteArray::fromHex("08a1b2c3d4e5f6")));
    QVERIFY(!isRandom({}));
}

QTEST_GUILESS_MAIN(TestCardKind)

#include "tst_cardkind.moc"
