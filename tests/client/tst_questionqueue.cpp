// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <malloc.h>

#include <QPointer>
#include <QTest>

#include <NfcReplyOrder>

#include "core/deliveryrequest.h"
#include "core/questionqueue.h"
#include "core/request.h"
#include "fakeface.h"

using ConnUi::NdefMessageHandlerList;

namespace {

Question named(const QString &title)
{
    Question question;
    question.title = title;
    return question;
}

} // namespace

/** A request that asks with its name, unless it needs no question. */
class FakeRequest : public Request
{
    Q_OBJECT

public:
    enum Way { Asks, AnswersItself, AsksLater };

    FakeRequest(Kind kind, const QString &target, const QString &name, const PendingReply &reply, Way way)
        : Request(kind, target, name.toUtf8(), reply)
        , name(name)
        , way(way)
    {}

    void begin() override
    {
        if (way == AnswersItself) {
            grant();
            Q_EMIT done();
        } else if (way == Asks) {
            ask();
        }
    }

    void decide(const Answer &answer) override
    {
        if (answer.choice == Answer::No)
            reject();
        else
            grant();
        Q_EMIT done();
    }

    void ask() { Q_EMIT asks(named(name)); }

private:
    const QString name;
    const Way way;
};

class TestQuestionQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void requestsHaveTheirTurnsInOrder();
    void requestWithoutQuestionWaitsForItsTurn();
    void sameRequestIsAskedOnce();
    void newerRequestOfItsKindReplacesTheOneThatWaits();
    void newerRequestDoesNotReplaceTheOneThatIsShown();
    void tooManyAreRejectedAtOnce();
    void staleRequestIsRejectedUnseen();
    void shownRequestDoesNotGetStale();
    void questionThatALockHidesWaitsFromThen();
    void rejectedRequestOfATargetWaitsForTheOlder();
    void noticeWaitsForQuestions();
    void noticeMakesWayForAQuestion();
    void sameNoticeIsToldOnce();
    void newestTransferIsShown();
    void transferMakesWayForANotice();
    void endedTransferIsNotShown();
    void progressIsShownWhereItIsSeen();
    void clearLeavesNothing();
    void lateAnswerIsHarmless();
    void nothingIsShownWhilePaused();
    void nothingCoversARequestThatIsNotReady();
    void floodTakesNoMemory();

private:
    void add(const QString &name, Request::Kind kind = Request::Pairing, const QString &target = {},
             FakeRequest::Way way = FakeRequest::Asks);

    std::unique_ptr<FakeFace> face;
    std::unique_ptr<QuestionQueue> queue;
    std::shared_ptr<ConnUi::NfcReplyOrder> order;
    QPointer<FakeRequest> latest;
    QStringList replies;
    qint64 time = 0;
};

void TestQuestionQueue::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    queue.reset();
    face = std::make_unique<FakeFace>();
    order = std::make_shared<ConnUi::NfcReplyOrder>();
    queue = std::make_unique<QuestionQueue>(face.get(), [this] { return time; });
    replies.clear();
    time = 0;
}

void TestQuestionQueue::add(const QString &name, Request::Kind kind, const QString &target,
                            FakeRequest::Way way)
{
    const QString of = target.isEmpty() ? QStringLiteral("/") + name : target;
    const PendingReply reply(
        order, of, [this, name] { replies.append(QStringLiteral("granted ") + name); },
        [this, name] { replies.append(QStringLiteral("rejected ") + name); });
    auto request = std::make_unique<FakeRequest>(kind, of, name, reply, way);
    latest = request.get();
    queue->add(std::move(request));
}

void TestQuestionQueue::requestsHaveTheirTurnsInOrder()
{
    add(QStringLiteral("first"));
    add(QStringLiteral("second"));
    add(QStringLiteral("third"));
    QCOMPARE(face->title(), QStringLiteral("first"));
    QCOMPARE(face->waiting, 2);
    face->answer(Answer::Yes);
    QCOMPARE(face->title(), QStringLiteral("second"));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("third"));
    QCOMPARE(face->waiting, 0);
    face->answer(Answer::Yes);
    QCOMPARE(face->title(), QString());
    QCOMPARE(replies, (QStringList{QStringLiteral("granted first"), QStringLiteral("rejected second"),
                                   QStringLiteral("granted third")}));
}

void TestQuestionQueue::requestWithoutQuestionWaitsForItsTurn()
{
    add(QStringLiteral("asked"));
    add(QStringLiteral("unasked"), Request::Delivery, {}, FakeRequest::AnswersItself);
    QCOMPARE(replies, QStringList());
    face->answer(Answer::No);
    QCOMPARE(replies, (QStringList{QStringLiteral("rejected asked"), QStringLiteral("granted unasked")}));
    QCOMPARE(face->history, QStringList{QStringLiteral("asked")});
}

void TestQuestionQueue::sameRequestIsAskedOnce()
{
    add(QStringLiteral("shown"));
    add(QStringLiteral("waits"));
    add(QStringLiteral("shown"), Request::Pairing, QStringLiteral("/elsewhere"));
    add(QStringLiteral("waits"));
    QCOMPARE(face->waiting, 1);
    face->answer(Answer::Yes);
    face->answer(Answer::No);
    QCOMPARE(face->title(), QString());
    QCOMPARE(replies, (QStringList{QStringLiteral("granted shown"), QStringLiteral("granted shown"),
                                   QStringLiteral("rejected waits"), QStringLiteral("rejected waits")}));
}

void TestQuestionQueue::newerRequestOfItsKindReplacesTheOneThatWaits()
{
    add(QStringLiteral("shown"));
    add(QStringLiteral("older"), Request::Delivery, QStringLiteral("/tag"));
    add(QStringLiteral("of another kind"), Request::Pairing, QStringLiteral("/tag"));
    add(QStringLiteral("newer"), Request::Delivery, QStringLiteral("/tag"));
    QCOMPARE(replies, QStringList{QStringLiteral("rejected older")});
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("of another kind"));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("newer"));
}

void TestQuestionQueue::newerRequestDoesNotReplaceTheOneThatIsShown()
{
    add(QStringLiteral("older"), Request::Delivery, QStringLiteral("/tag"));
    add(QStringLiteral("newer"), Request::Delivery, QStringLiteral("/tag"));
    QCOMPARE(face->title(), QStringLiteral("older"));
    QCOMPARE(replies, QStringList());
}

void TestQuestionQueue::tooManyAreRejectedAtOnce()
{
    for (int i = 0; i <= QuestionQueue::capacity; ++i)
        add(QString::number(i));
    QCOMPARE(face->waiting, QuestionQueue::capacity);
    QTest::ignoreMessage(QtWarningMsg, "Too many requests are waiting: rejecting another one");
    add(QStringLiteral("too many"));
    QCOMPARE(replies, QStringList{QStringLiteral("rejected too many")});
    QCOMPARE(face->waiting, QuestionQueue::capacity);
}

void TestQuestionQueue::staleRequestIsRejectedUnseen()
{
    add(QStringLiteral("shown"));
    add(QStringLiteral("old"));
    time = QuestionQueue::patience - 1;
    add(QStringLiteral("fresh"));
    time = QuestionQueue::patience;
    QTest::ignoreMessage(QtWarningMsg, "A request has waited for too long and is rejected");
    QTRY_COMPARE(replies, QStringList{QStringLiteral("rejected old")});
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("fresh"));
}

void TestQuestionQueue::shownRequestDoesNotGetStale()
{
    add(QStringLiteral("shown"));
    add(QStringLiteral("old"));
    time = 10 * QuestionQueue::patience;
    QTest::ignoreMessage(QtWarningMsg, "A request has waited for too long and is rejected");
    QTRY_COMPARE(replies, QStringList{QStringLiteral("rejected old")});
    QCOMPARE(face->title(), QStringLiteral("shown"));
}

void TestQuestionQueue::questionThatALockHidesWaitsFromThen()
{
    add(QStringLiteral("shown"));
    add(QStringLiteral("old"));
    time = QuestionQueue::patience;
    queue->setPaused(true);
    QTest::ignoreMessage(QtWarningMsg, "A request has waited for too long and is rejected");
    QTRY_COMPARE(replies, QStringList{QStringLiteral("rejected old")});
    queue->setPaused(false);
    QCOMPARE(face->title(), QStringLiteral("shown"));
}

void TestQuestionQueue::rejectedRequestOfATargetWaitsForTheOlder()
{
    add(QStringLiteral("older"), Request::Pairing, QStringLiteral("/device"));
    add(QStringLiteral("newer"), Request::Connection, QStringLiteral("/device"));
    add(QStringLiteral("newest"), Request::Connection, QStringLiteral("/device"));
    // "newer" is replaced, but the daemon would take its rejection for that of "older".
    QCOMPARE(replies, QStringList());
    face->answer(Answer::Yes);
    QCOMPARE(replies, (QStringList{QStringLiteral("granted older"), QStringLiteral("rejected newer")}));
}

void TestQuestionQueue::noticeWaitsForQuestions()
{
    add(QStringLiteral("question"));
    queue->tell(named(QStringLiteral("notice")));
    QCOMPARE(face->title(), QStringLiteral("question"));
    QCOMPARE(face->waiting, 1);
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("notice"));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QString());
}

void TestQuestionQueue::noticeMakesWayForAQuestion()
{
    queue->tell(named(QStringLiteral("notice")));
    add(QStringLiteral("question"));
    QCOMPARE(face->title(), QStringLiteral("question"));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("notice"));
}

void TestQuestionQueue::sameNoticeIsToldOnce()
{
    queue->tell(named(QStringLiteral("notice")));
    queue->tell(named(QStringLiteral("notice")));
    queue->tell(named(QStringLiteral("another")));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("another"));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QString());
    queue->tell(named(QStringLiteral("notice")));
    QCOMPARE(face->title(), QStringLiteral("notice"));
}

void TestQuestionQueue::newestTransferIsShown()
{
    queue->begin(named(QStringLiteral("older")), {});
    const int newer = queue->begin(named(QStringLiteral("newer")), {});
    QCOMPARE(face->title(), QStringLiteral("newer"));
    QCOMPARE(face->waiting, 0);
    queue->end(newer);
    QCOMPARE(face->title(), QStringLiteral("older"));
}

void TestQuestionQueue::transferMakesWayForANotice()
{
    bool canceled = false;
    queue->begin(named(QStringLiteral("transfer")),
                 [&canceled](const Answer &answer) { canceled = answer.choice == Answer::No; });
    queue->tell(named(QStringLiteral("notice")));
    QCOMPARE(face->title(), QStringLiteral("notice"));
    face->answer(Answer::No);
    QCOMPARE(face->title(), QStringLiteral("transfer"));
    QVERIFY(!canceled);
    face->answer(Answer::No);
    QVERIFY(canceled);
    QCOMPARE(face->title(), QString());
}

void TestQuestionQueue::endedTransferIsNotShown()
{
    const int number =
        queue->begin(named(QStringLiteral("transfer")), [](const Answer &) { QFAIL("Nobody has answered"); });
    queue->end(number);
    QCOMPARE(face->title(), QString());
    queue->end(number);
}

void TestQuestionQueue::progressIsShownWhereItIsSeen()
{
    const int number = queue->begin(named(QStringLiteral("transfer")), {});
    queue->setProgress(number, 1);
    QCOMPARE(face->received, 1);
    add(QStringLiteral("question"));
    queue->setProgress(number, 2);
    QCOMPARE(face->received, 1);
    face->answer(Answer::No);
    QCOMPARE(face->shown->file.received, 2);
}

void TestQuestionQueue::clearLeavesNothing()
{
    add(QStringLiteral("shown"));
    add(QStringLiteral("waits"));
    queue->tell(named(QStringLiteral("notice")));
    queue->begin(named(QStringLiteral("transfer")), {});
    queue->clear();
    QCOMPARE(face->title(), QString());
    QCOMPARE(face->waiting, 0);
    QCOMPARE(replies, QStringList());
    QCOMPARE(face->history, QStringList{QStringLiteral("shown")});
}

// A face may answer what was withdrawn while the user's press was under way.
void TestQuestionQueue::lateAnswerIsHarmless()
{
    add(QStringLiteral("a"));
    queue->clear();
    queue->clear();
    Q_EMIT face->answered({Answer::Yes, {}});
    QCOMPARE(replies, QStringList());
    add(QStringLiteral("b"));
    face->answer(Answer::Yes);
    QCOMPARE(replies, QStringList(QStringLiteral("granted b")));
}

void TestQuestionQueue::nothingIsShownWhilePaused()
{
    add(QStringLiteral("first"));
    queue->setPaused(true);
    QCOMPARE(face->title(), QString());
    add(QStringLiteral("unasked"), Request::Delivery, {}, FakeRequest::AnswersItself);
    queue->tell(named(QStringLiteral("notice")));
    QCOMPARE(face->title(), QString());
    QCOMPARE(replies, QStringList());
    queue->setPaused(false);
    QCOMPARE(face->title(), QStringLiteral("first"));
    face->answer(Answer::No);
    QCOMPARE(replies, (QStringList{QStringLiteral("rejected first"), QStringLiteral("granted unasked")}));
    QCOMPARE(face->title(), QStringLiteral("notice"));
}

void TestQuestionQueue::nothingCoversARequestThatIsNotReady()
{
    add(QStringLiteral("slow"), Request::Sharing, {}, FakeRequest::AsksLater);
    FakeRequest *slow = latest;
    add(QStringLiteral("quick"));
    queue->tell(named(QStringLiteral("notice")));
    QCOMPARE(face->title(), QString());
    QCOMPARE(face->waiting, 2);
    slow->ask();
    QCOMPARE(face->waiting, 2);
    QCOMPARE(face->title(), QStringLiteral("slow"));
    face->answer(Answer::No);
    QCOMPARE(face->history, (QStringList{QStringLiteral("slow"), QStringLiteral("quick")}));
}

void TestQuestionQueue::floodTakesNoMemory()
{
    constexpr size_t most = 5 * 1024 * 1024;
    constexpr int deliveries = 1000;
    constexpr qsizetype size = 64 * 1024;
    add(QStringLiteral("one"));
    const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    for (int i = 0; i < deliveries - QuestionQueue::capacity; ++i)
        QTest::ignoreMessage(QtWarningMsg, "Too many requests are waiting: rejecting another one");
    for (int i = 0; i < deliveries; ++i) {
        const QString target = QStringLiteral("/tag%1").arg(i);
        queue->add(std::make_unique<DeliveryRequest>(
            DeliveryRequest::Surroundings{nullptr, nullptr, queue.get()}, NdefMessageHandlerList(),
            QDBusObjectPath(target), QByteArray(size, char(i)) + QByteArray::number(i),
            PendingReply(
                order, target, [] {}, [this] { replies.append(QStringLiteral("rejected")); })));
    }
    QCOMPARE(replies.size(), deliveries - QuestionQueue::capacity);
    const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    QVERIFY2(after - before < most, qPrintable(QString::number(after - before)));
}

QTEST_GUILESS_MAIN(TestQuestionQueue)
#include "tst_questionqueue.moc"
