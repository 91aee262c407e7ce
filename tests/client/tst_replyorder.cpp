// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>

#include "core/replyorder.h"

class TestReplyOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replyIsGivenAtOnce();
    void laterReplyWaitsForTheEarlier();
    void otherTargetDoesNotWait();
    void placeHasOneReply();
    void unknownPlaceHasNone();

private:
    ReplyOrder::Reply note(const QString &word)
    {
        return [this, word] { given.append(word); };
    }

    QStringList given;

private Q_SLOTS:
    void init() { given.clear(); }
};

void TestReplyOrder::replyIsGivenAtOnce()
{
    ReplyOrder order;
    const quint64 place = order.takePlace(QStringLiteral("/tag"));
    order.reply(QStringLiteral("/tag"), place, note(QStringLiteral("yes")));
    QCOMPARE(given, QStringList{QStringLiteral("yes")});
}

void TestReplyOrder::laterReplyWaitsForTheEarlier()
{
    ReplyOrder order;
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

void TestReplyOrder::otherTargetDoesNotWait()
{
    ReplyOrder order;
    order.takePlace(QStringLiteral("/tag"));
    const quint64 other = order.takePlace(QStringLiteral("/device"));
    order.reply(QStringLiteral("/device"), other, note(QStringLiteral("other")));
    QCOMPARE(given, QStringList{QStringLiteral("other")});
}

void TestReplyOrder::placeHasOneReply()
{
    ReplyOrder order;
    const quint64 place = order.takePlace(QStringLiteral("/tag"));
    order.reply(QStringLiteral("/tag"), place, note(QStringLiteral("yes")));
    order.reply(QStringLiteral("/tag"), place, note(QStringLiteral("no")));
    QCOMPARE(given, QStringList{QStringLiteral("yes")});
}

void TestReplyOrder::unknownPlaceHasNone()
{
    ReplyOrder order;
    order.reply(QStringLiteral("/tag"), 0, note(QStringLiteral("yes")));
    QCOMPARE(given, QStringList());
}

QTEST_APPLESS_MAIN(TestReplyOrder)
#include "tst_replyorder.moc"
