// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QTest>

#include <NfcReplyOrder>

using ConnUi::NfcReplyOrder;

class TestNfcReplyOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replyIsGivenAtOnce();
    void laterReplyWaitsForTheEarlier();
    void otherTargetDoesNotWait();
    void placeHasOneReply();
    void unknownPlaceHasNone();
    void replyMayTakeAPlace();
    void replyMayDeleteTheOrder();

private:
    NfcReplyOrder::Reply note(const QString &word)
    {
        return [this, word] { given.append(word); };
    }

    QStringList given;

private Q_SLOTS:
    void init() { given.clear(); }
};

void TestNfcReplyOrder::replyIsGivenAtOnce()
{
    NfcReplyOrder order;
    const quint64 place = order.takePlace(QStringLiteral("/tag"));
    order.reply(QStringLiteral("/tag"), place, note(QStringLiteral("yes")));
    QCOMPARE(given, QStringList{QStringLiteral("yes")});
}

void TestNfcReplyOrder::laterReplyWaitsForTheEarlier()
{
    NfcReplyOrder order;
    const quint64 first = order.takePlace(QStringLiteral("/tag"));
    const quint64 second = order.takePlace(QStringLiteral("/tag"));
    const quint64 third = order.takePlace(QStringLiteral("/tag"));
    order.reply(QStringLiteral("/tag"), third, note(QStringLiteral("third")));
    order.reply(QStringLiteral("/tag"), second, note(QStringLiteral("second")));
    QCOMPARE(given, QStringList());
    order.reply(QStringLiteral("/tag"), first, note(QStringLiteral("first")));
    QCOMPARE(given,
             (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
}

void TestNfcReplyOrder::otherTargetDoesNotWait()
{
    NfcReplyOrder order;
    order.takePlace(QStringLiteral("/tag"));
    const quint64 other = order.takePlace(QStringLiteral("/device"));
    order.reply(QStringLiteral("/device"), other, note(QStringLiteral("other")));
    QCOMPARE(given, QStringList{QStringLiteral("other")});
}

void TestNfcReplyOrder::placeHasOneReply()
{
    NfcReplyOrder order;
    const quint64 place = order.takePlace(QStringLiteral("/tag"));
    const quint64 later = order.takePlace(QStringLiteral("/tag"));
    order.reply(QStringLiteral("/tag"), place, note(QStringLiteral("yes")));
    order.reply(QStringLiteral("/tag"), place, note(QStringLiteral("no")));
    QCOMPARE(given, QStringList{QStringLiteral("yes")});
    order.reply(QStringLiteral("/tag"), later, note(QStringLiteral("later")));
    QCOMPARE(given, (QStringList{QStringLiteral("yes"), QStringLiteral("later")}));
}

void TestNfcReplyOrder::unknownPlaceHasNone()
{
    NfcReplyOrder order;
    order.reply(QStringLiteral("/tag"), 0, note(QStringLiteral("yes")));
    QCOMPARE(given, QStringList());
}

void TestNfcReplyOrder::replyMayTakeAPlace()
{
    NfcReplyOrder order;
    const quint64 first = order.takePlace(QStringLiteral("/tag"));
    const quint64 second = order.takePlace(QStringLiteral("/tag"));
    order.reply(QStringLiteral("/tag"), second, note(QStringLiteral("second")));
    order.reply(QStringLiteral("/tag"), first, [&order] {
        for (int target = 0; target < 1000; ++target)
            order.takePlace(QString::number(target));
    });
    QCOMPARE(given, QStringList{QStringLiteral("second")});
}

void TestNfcReplyOrder::replyMayDeleteTheOrder()
{
    auto order = std::make_unique<NfcReplyOrder>();
    const quint64 first = order->takePlace(QStringLiteral("/tag"));
    const quint64 second = order->takePlace(QStringLiteral("/tag"));
    order->reply(QStringLiteral("/tag"), second, note(QStringLiteral("second")));
    order->reply(QStringLiteral("/tag"), first, [&order] { order.reset(); });
    QCOMPARE(given, QStringList{QStringLiteral("second")});
}

QTEST_APPLESS_MAIN(TestNfcReplyOrder)
#include "tst_nfcreplyorder.moc"
