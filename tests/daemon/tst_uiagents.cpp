// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QSignalSpy>
#include <QTest>

#include "daemon/authority.h"
#include "daemon/question.h"
#include "daemon/uiagent.h"
#include "daemon/uiagents.h"
#include "fakepolkit.h"
#include "fakeservice.h"

namespace {

const QString request = QStringLiteral("RequestNDEFDataDelivery");
constexpr uint daemonUser = 4710;
constexpr uint firstUser = 4711;
constexpr uint secondUser = 4712;

// A client with an agent, in a process of its own.
class Client : public FakeService
{
public:
    explicit Client(const QString &name) : FakeService(QDBusConnection::SystemBus, name)
    {
        start();
        busName = QDBusConnection::systemBus().interface()->serviceOwner(name);
    }

    // A call of this client's.
    QDBusMessage call() const
    {
        return QDBusMessage::createMethodCall(busName, QStringLiteral("/"), QString(), QStringLiteral("Any"));
    }

    QString busName;
};

QDBusObjectPath path()
{
    return QDBusObjectPath(QStringLiteral("/agent"));
}

} // namespace

class TestUiAgents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void agentWhoseUserHasLeftIsPutAside();
    void openQuestionOfAnAgentPutAsideIsCanceled();
    void agentComesBackByItself();
    void agentComesBackWhenTheOtherOneGoes();
    void onlyOneAgentIsInUse();
    void agentStaysInUse_data();
    void agentStaysInUse();
    void agentIsReviewedBeforeACall_data();
    void agentIsReviewedBeforeACall();
    void callerWithTheAgentDoesNotWait();
    void oneAgentOfAUserIsPutAside();
    void agentPutAsideMayBeUsedAgain();
    void agentPutAsideMayLeave();
    void agentThatHasGoneDoesNotComeBack();
    void lateAnswerDoesNotConcernTheNextAgent_data();
    void lateAnswerDoesNotConcernTheNextAgent();

private:
    bool isInUse(const Client &client) const;
    void use(const Client &client, uint user);
    Question *ask(const UiAgent *agent) const;
    void leaveSeat();
    void holdAnswer();
    void waitForAnswers();

    std::unique_ptr<FakePolkit> polkit;
    std::unique_ptr<Authority> authority;
    std::unique_ptr<UiAgents> agents;
    std::unique_ptr<Client> first;
    std::unique_ptr<Client> second;
};

void TestUiAgents::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
}

void TestUiAgents::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    polkit = std::make_unique<FakePolkit>();
    authority = std::make_unique<Authority>(QSet<uint>{daemonUser});
    agents = std::make_unique<UiAgents>(authority.get());
    first = std::make_unique<Client>(QStringLiteral("org.connui.test.First"));
    second = std::make_unique<Client>(QStringLiteral("org.connui.test.Second"));
}

void TestUiAgents::cleanup()
{
    agents.reset();
    authority.reset();
    polkit.reset();
    first.reset();
    second.reset();
}

bool TestUiAgents::isInUse(const Client &client) const
{
    return agents->inUse() && agents->inUse() == agents->find(client.busName, path());
}

void TestUiAgents::use(const Client &client, uint user)
{
    agents->use(client.busName, path(), user);
}

Question *TestUiAgents::ask(const UiAgent *agent) const
{
    return new Question(agent, request, {}, QStringLiteral("granted"), agents.get());
}

// Has the agent in use put aside.
void TestUiAgents::leaveSeat()
{
    polkit->allow({});
    polkit->reportChange();
    QTRY_VERIFY(!agents->inUse());
}

// Has a change reported, and polkit's answer held.
void TestUiAgents::holdAnswer()
{
    const int asked = polkit->questions();
    polkit->hold();
    polkit->reportChange();
    QTRY_VERIFY(polkit->questions() > asked);
}

// Waits until the answers that polkit has given so far have arrived.
void TestUiAgents::waitForAnswers()
{
    bool isAnswered = false;
    authority->review(QStringLiteral(":1.0"), firstUser, [&](std::optional<bool>) { isAnswered = true; });
    QTRY_VERIFY(isAnswered);
}

void TestUiAgents::agentWhoseUserHasLeftIsPutAside()
{
    use(*first, firstUser);
    leaveSeat();
    QVERIFY(agents->find(first->busName, path()));
    QCOMPARE(first->members(), QStringList());
    use(*second, secondUser);
    agents->inUse()->call(request);
    QTRY_COMPARE(second->members(), QStringList{request});
    QCOMPARE(first->members(), QStringList());
}

void TestUiAgents::openQuestionOfAnAgentPutAsideIsCanceled()
{
    first->hold(request);
    use(*first, firstUser);
    const QSignalSpy decided(ask(agents->inUse()), &Question::decided);
    QTRY_COMPARE(first->calls(request).size(), 1);
    leaveSeat();
    const QList<QVariantList> canceled{{QStringLiteral("canceled")}};
    QCOMPARE(decided, canceled);
    // The user answers too late: both answers come in their order.
    first->release(request);
    const QSignalSpy next(ask(agents->find(first->busName, path())), &Question::decided);
    QTRY_COMPARE(next, (QList<QVariantList>{{QStringLiteral("granted")}}));
    QCOMPARE(decided, canceled);
}

void TestUiAgents::agentComesBackByItself()
{
    use(*first, firstUser);
    leaveSeat();
    use(*second, secondUser);
    polkit->allow({first->busName});
    polkit->reportChange();
    QTRY_VERIFY(isInUse(*first));
    agents->inUse()->call(request);
    QTRY_COMPARE(first->members(), QStringList{request});
    QCOMPARE(second->members(), QStringList());
    QVERIFY(agents->find(second->busName, path()));
}

void TestUiAgents::agentComesBackWhenTheOtherOneGoes()
{
    use(*first, firstUser);
    leaveSeat();
    use(*second, secondUser);
    polkit->allow({first->busName, second->busName});
    second->kill();
    QTRY_VERIFY(isInUse(*first));
}

void TestUiAgents::onlyOneAgentIsInUse()
{
    use(*first, firstUser);
    leaveSeat();
    use(*second, secondUser);
    polkit->allow({first->busName});
    polkit->reportChange();
    // The one put aside is now the later one: were it asked about, its answer would come last.
    QTRY_VERIFY(isInUse(*first));
    polkit->allow({first->busName, second->busName});
    holdAnswer();
    polkit->release();
    waitForAnswers();
    QVERIFY(isInUse(*first));
}

void TestUiAgents::agentStaysInUse_data()
{
    QTest::addColumn<bool>("isAllowed");
    QTest::addColumn<bool>("isChallenging");
    QTest::addColumn<bool>("isFailing");
    QTest::addColumn<uint>("user");
    QTest::newRow("allowed") << true << false << false << firstUser;
    // The user has typed it when the agent was registered.
    QTest::newRow("password wanted") << false << true << false << firstUser;
    QTest::newRow("no answer") << false << false << true << firstUser;
    QTest::newRow("trusted") << false << false << false << daemonUser;
}

void TestUiAgents::agentStaysInUse()
{
    QFETCH(bool, isAllowed);
    QFETCH(bool, isChallenging);
    QFETCH(bool, isFailing);
    QFETCH(uint, user);
    use(*first, user);
    if (isChallenging)
        polkit->challenge();
    if (isAllowed)
        polkit->allow({first->busName});
    if (isFailing)
        polkit->fail();
    bool isReviewed = false;
    agents->reviewBefore(second->call(), [&isReviewed] { isReviewed = true; });
    QTRY_VERIFY(isReviewed);
    QVERIFY(isInUse(*first));
    QCOMPARE(polkit->questions(), user == daemonUser ? 0 : 1);
}

void TestUiAgents::agentIsReviewedBeforeACall_data()
{
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("allowed") << true;
    QTest::newRow("refused") << false;
}

void TestUiAgents::agentIsReviewedBeforeACall()
{
    QFETCH(bool, isAllowed);
    use(*first, firstUser);
    if (isAllowed)
        polkit->allow({first->busName});
    std::optional<bool> isFirstInUse;
    agents->reviewBefore(second->call(), [&] { isFirstInUse = isInUse(*first); });
    QVERIFY(!isFirstInUse);
    QTRY_COMPARE(isFirstInUse, isAllowed);
}

void TestUiAgents::callerWithTheAgentDoesNotWait()
{
    bool isReviewed = false;
    agents->reviewBefore(first->call(), [&isReviewed] { isReviewed = true; });
    QVERIFY(isReviewed);
    use(*first, firstUser);
    isReviewed = false;
    agents->reviewBefore(first->call(), [&isReviewed] { isReviewed = true; });
    QVERIFY(isReviewed);
    QVERIFY(isInUse(*first));
}

void TestUiAgents::oneAgentOfAUserIsPutAside()
{
    use(*first, firstUser);
    leaveSeat();
    use(*second, firstUser);
    leaveSeat();
    QTRY_COMPARE(second->members(), QStringList{QStringLiteral("Release")});
    QVERIFY(!agents->find(second->busName, path()));
    QVERIFY(agents->find(first->busName, path()));
    QCOMPARE(first->members(), QStringList());
}

void TestUiAgents::agentPutAsideMayBeUsedAgain()
{
    use(*first, firstUser);
    const UiAgent *agent = agents->inUse();
    leaveSeat();
    use(*first, firstUser);
    QCOMPARE(agents->inUse(), agent);
}

void TestUiAgents::agentPutAsideMayLeave()
{
    use(*first, firstUser);
    leaveSeat();
    first->kill();
    QTRY_VERIFY(!agents->find(first->busName, path()));
}

void TestUiAgents::agentThatHasGoneDoesNotComeBack()
{
    use(*first, firstUser);
    leaveSeat();
    polkit->allow({first->busName});
    holdAnswer();
    agents->remove(agents->find(first->busName, path()));
    polkit->release();
    waitForAnswers();
    QVERIFY(!agents->inUse());
}

void TestUiAgents::lateAnswerDoesNotConcernTheNextAgent_data()
{
    QTest::addColumn<bool>("isPutAside");
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("allowed") << true << true;
    QTest::newRow("not allowed") << true << false;
    QTest::newRow("not allowed, gone") << false << false;
}

void TestUiAgents::lateAnswerDoesNotConcernTheNextAgent()
{
    QFETCH(bool, isPutAside);
    QFETCH(bool, isAllowed);
    use(*first, firstUser);
    if (isPutAside)
        leaveSeat();
    if (isAllowed)
        polkit->allow({first->busName});
    holdAnswer();
    if (!isPutAside)
        agents->remove(agents->inUse());
    use(*second, secondUser);
    polkit->allow({second->busName});
    polkit->release();
    waitForAnswers();
    QVERIFY(isInUse(*second));
}

QTEST_GUILESS_MAIN(TestUiAgents)
#include "tst_uiagents.moc"
