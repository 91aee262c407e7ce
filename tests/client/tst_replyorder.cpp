// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>

#include "core/replyorder.h"

using namespace Qt::Literals::StringLiterals;

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
    const quint64 place = order.takePlace(u"/tag"_s);
    order.reply(u"/tag"_s, place, note(u"yes"_s));
    QCOMPARE(given, QStringList{u"yes"_s});
}

void TestReplyOrder::laterReplyWaitsForTheEarlier()
{
    ReplyOrder order;
    const quint64 first = order.takePlace(u"/tag"_s);
    const quint64 second = order.takePlace(u"/tag"_s);
    const quint64 third = order.takePlace(u"/tag"_s);
    order.reply(u"/tag"_s, third, note(u"third"_s));
    order.reply(u"/tag"_s, second, note(u"second"_s));
    QCOMPARE(given, QStringList());
    order.reply(u"/tag"_s, first, note(u"first"_s));
    QCOMPARE(given, (QStringList{u"first"_s, u"second"_s, u"third"_s}));
}

void TestReplyOrder::otherTargetDoesNotWait()
{
    ReplyOrder order;
    order.takePlace(u"/tag"_s);
    const quint64 other = order.takePlace(u"/device"_s);
    order.reply(u"/device"_s, other, note(u"other"_s));
    QCOMPARE(given, QStringList{u"other"_s});
}

void TestReplyOrder::placeHasOneReply()
{
    ReplyOrder order;
    const quint64 place = order.takePlace(u"/tag"_s);
    order.reply(u"/tag"_s, place, note(u"yes"_s));
    order.reply(u"/tag"_s, place, note(u"no"_s));
    QCOMPARE(given, QStringList{u"yes"_s});
}

void TestReplyOrder::unknownPlaceHasNone()
{
    ReplyOrder order;
    order.reply(u"/tag"_s, 0, note(u"yes"_s));
    QCOMPARE(given, QStringList());
}

QTEST_APPLESS_MAIN(TestReplyOrder)
#include "tst_replyorder.moc"
