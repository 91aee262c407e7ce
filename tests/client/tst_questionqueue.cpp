// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QPointer>
#include <QTest>

#include "core/questionqueue.h"
#include "core/replyorder.h"
#include "core/request.h"
#include "fakeface.h"

using namespace Qt::Literals::StringLiterals;

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
    void rejectedRequestOfATargetWaitsForTheOlder();
    void noticeWaitsForQuestions();
    void noticeMakesWayForAQuestion();
    void sameNoticeIsToldOnce();
    void newestOfWhatGoesOnIsShown();
    void whatGoesOnMakesWayForANotice();
    void endedIsGone();
    void progressIsShownWhereItIsSeen();
    void clearLeavesNothing();
    void nothingIsShownWhilePaused();
    void nothingCoversARequestThatIsNotReady();

private:
    void add(const QString &name, Request::Kind kind = Request::Pairing, const QString &target = {},
             FakeRequest::Way way = FakeRequest::Asks);

    std::unique_ptr<FakeFace> face;
    std::unique_ptr<QuestionQueue> queue;
    std::shared_ptr<ReplyOrder> order;
    QPointer<FakeRequest> latest;
    QStringList replies;
    qint64 time = 0;
};

void TestQuestionQueue::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    queue.reset();
    face = std::make_unique<FakeFace>();
    order = std::make_shared<ReplyOrder>();
    queue = std::make_unique<QuestionQueue>(face.get(), [this] { return time; });
    replies.clear();
    time = 0;
}

void TestQuestionQueue::add(const QString &name, Request::Kind kind, const QString &target,
                            FakeRequest::Way way)
{
    const QString of = target.isEmpty() ? u"/"_s + name : target;
    const PendingReply reply(
        order, of, [this, name] { replies.append(u"granted "_s + name); },
        [this, name] { replies.append(u"rejected "_s + name); });
    auto request = std::make_unique<FakeRequest>(kind, of, name, reply, way);
    latest = request.get();
    queue->add(std::move(request));
}

void TestQuestionQueue::requestsHaveTheirTurnsInOrder()
{
    add(u"first"_s);
    add(u"second"_s);
    add(u"third"_s);
    QCOMPARE(face->title(), u"first"_s);
    QCOMPARE(face->waiting, 2);
    face->answer(Answer::Yes);
    QCOMPARE(face->title(), u"second"_s);
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"third"_s);
    QCOMPARE(face->waiting, 0);
    face->answer(Answer::Yes);
    QCOMPARE(face->title(), QString());
    QCOMPARE(replies, (QStringList{u"granted first"_s, u"rejected second"_s, u"granted third"_s}));
}

void TestQuestionQueue::requestWithoutQuestionWaitsForItsTurn()
{
    add(u"asked"_s);
    add(u"unasked"_s, Request::Delivery, {}, FakeRequest::AnswersItself);
    QCOMPARE(replies, QStringList());
    face->answer(Answer::No);
    QCOMPARE(replies, (QStringList{u"rejected asked"_s, u"granted unasked"_s}));
    QCOMPARE(face->history, QStringList{u"asked"_s});
}

void TestQuestionQueue::sameRequestIsAskedOnce()
{
    add(u"shown"_s);
    add(u"waits"_s);
    add(u"shown"_s, Request::Pairing, u"/elsewhere"_s);
    add(u"waits"_s);
    QCOMPARE(face->waiting, 1);
    face->answer(Answer::Yes);
    face->answer(Answer::No);
    QCOMPARE(face->title(), QString());
    QCOMPARE(replies,
             (QStringList{u"granted shown"_s, u"granted shown"_s, u"rejected waits"_s, u"rejected waits"_s}));
}

void TestQuestionQueue::newerRequestOfItsKindReplacesTheOneThatWaits()
{
    add(u"shown"_s);
    add(u"older"_s, Request::Delivery, u"/tag"_s);
    add(u"of another kind"_s, Request::Pairing, u"/tag"_s);
    add(u"newer"_s, Request::Delivery, u"/tag"_s);
    QCOMPARE(replies, QStringList{u"rejected older"_s});
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"of another kind"_s);
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"newer"_s);
}

void TestQuestionQueue::newerRequestDoesNotReplaceTheOneThatIsShown()
{
    add(u"older"_s, Request::Delivery, u"/tag"_s);
    add(u"newer"_s, Request::Delivery, u"/tag"_s);
    QCOMPARE(face->title(), u"older"_s);
    QCOMPARE(replies, QStringList());
}

void TestQuestionQueue::tooManyAreRejectedAtOnce()
{
    for (int i = 0; i <= QuestionQueue::capacity; ++i)
        add(QString::number(i));
    QCOMPARE(face->waiting, QuestionQueue::capacity);
    QTest::ignoreMessage(QtWarningMsg, "Too many requests wait: another one is rejected");
    add(u"too many"_s);
    QCOMPARE(replies, QStringList{u"rejected too many"_s});
    QCOMPARE(face->waiting, QuestionQueue::capacity);
}

void TestQuestionQueue::staleRequestIsRejectedUnseen()
{
    add(u"shown"_s);
    add(u"old"_s);
    time = QuestionQueue::patience - 1;
    add(u"fresh"_s);
    time = QuestionQueue::patience;
    QTest::ignoreMessage(QtWarningMsg, "A request has waited for too long: it is rejected");
    QTRY_COMPARE(replies, QStringList{u"rejected old"_s});
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"fresh"_s);
}

void TestQuestionQueue::shownRequestDoesNotGetStale()
{
    add(u"shown"_s);
    add(u"old"_s);
    time = 10 * QuestionQueue::patience;
    QTest::ignoreMessage(QtWarningMsg, "A request has waited for too long: it is rejected");
    QTRY_COMPARE(replies, QStringList{u"rejected old"_s});
    QCOMPARE(face->title(), u"shown"_s);
}

void TestQuestionQueue::rejectedRequestOfATargetWaitsForTheOlder()
{
    add(u"older"_s, Request::Pairing, u"/device"_s);
    add(u"newer"_s, Request::Connection, u"/device"_s);
    add(u"newest"_s, Request::Connection, u"/device"_s);
    // "newer" is replaced, but the daemon would take its rejection for that of "older".
    QCOMPARE(replies, QStringList());
    face->answer(Answer::Yes);
    QCOMPARE(replies, (QStringList{u"granted older"_s, u"rejected newer"_s}));
}

void TestQuestionQueue::noticeWaitsForQuestions()
{
    add(u"question"_s);
    queue->tell(named(u"notice"_s));
    QCOMPARE(face->title(), u"question"_s);
    QCOMPARE(face->waiting, 1);
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"notice"_s);
    face->answer(Answer::No);
    QCOMPARE(face->title(), QString());
}

void TestQuestionQueue::noticeMakesWayForAQuestion()
{
    queue->tell(named(u"notice"_s));
    add(u"question"_s);
    QCOMPARE(face->title(), u"question"_s);
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"notice"_s);
}

void TestQuestionQueue::sameNoticeIsToldOnce()
{
    queue->tell(named(u"notice"_s));
    queue->tell(named(u"notice"_s));
    queue->tell(named(u"another"_s));
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"another"_s);
    face->answer(Answer::No);
    QCOMPARE(face->title(), QString());
    queue->tell(named(u"notice"_s));
    QCOMPARE(face->title(), u"notice"_s);
}

void TestQuestionQueue::newestOfWhatGoesOnIsShown()
{
    queue->begin(named(u"older"_s), {});
    const int newer = queue->begin(named(u"newer"_s), {});
    QCOMPARE(face->title(), u"newer"_s);
    QCOMPARE(face->waiting, 0);
    queue->end(newer);
    QCOMPARE(face->title(), u"older"_s);
}

void TestQuestionQueue::whatGoesOnMakesWayForANotice()
{
    bool canceled = false;
    queue->begin(named(u"transfer"_s),
                 [&canceled](const Answer &answer) { canceled = answer.choice == Answer::No; });
    queue->tell(named(u"notice"_s));
    QCOMPARE(face->title(), u"notice"_s);
    face->answer(Answer::No);
    QCOMPARE(face->title(), u"transfer"_s);
    QVERIFY(!canceled);
    face->answer(Answer::No);
    QVERIFY(canceled);
    QCOMPARE(face->title(), QString());
}

void TestQuestionQueue::endedIsGone()
{
    const int number =
        queue->begin(named(u"transfer"_s), [](const Answer &) { QFAIL("Nobody has answered"); });
    queue->end(number);
    QCOMPARE(face->title(), QString());
    queue->end(number);
}

void TestQuestionQueue::progressIsShownWhereItIsSeen()
{
    const int number = queue->begin(named(u"transfer"_s), {});
    queue->setProgress(number, 1);
    QCOMPARE(face->received, 1);
    add(u"question"_s);
    queue->setProgress(number, 2);
    QCOMPARE(face->received, 1);
    face->answer(Answer::No);
    QCOMPARE(face->shown->file.received, 2);
}

void TestQuestionQueue::clearLeavesNothing()
{
    add(u"shown"_s);
    add(u"waits"_s);
    queue->tell(named(u"notice"_s));
    queue->begin(named(u"transfer"_s), {});
    queue->clear();
    QCOMPARE(face->title(), QString());
    QCOMPARE(face->waiting, 0);
    QCOMPARE(replies, QStringList());
    QCOMPARE(face->history, QStringList{u"shown"_s});
}

void TestQuestionQueue::nothingIsShownWhilePaused()
{
    add(u"first"_s);
    queue->setPaused(true);
    QCOMPARE(face->title(), QString());
    add(u"unasked"_s, Request::Delivery, {}, FakeRequest::AnswersItself);
    queue->tell(named(u"notice"_s));
    QCOMPARE(face->title(), QString());
    QCOMPARE(replies, QStringList());
    queue->setPaused(false);
    QCOMPARE(face->title(), u"first"_s);
    face->answer(Answer::No);
    QCOMPARE(replies, (QStringList{u"rejected first"_s, u"granted unasked"_s}));
    QCOMPARE(face->title(), u"notice"_s);
}

void TestQuestionQueue::nothingCoversARequestThatIsNotReady()
{
    add(u"slow"_s, Request::Sharing, {}, FakeRequest::AsksLater);
    FakeRequest *slow = latest;
    add(u"quick"_s);
    queue->tell(named(u"notice"_s));
    QCOMPARE(face->title(), QString());
    slow->ask();
    QCOMPARE(face->title(), u"slow"_s);
    face->answer(Answer::No);
    QCOMPARE(face->history, (QStringList{u"slow"_s, u"quick"_s}));
}

QTEST_GUILESS_MAIN(TestQuestionQueue)
#include "tst_questionqueue.moc"
