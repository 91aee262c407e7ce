// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include "agentprocess.h"
#include "daemon/adapter.h"
#include "daemon/daemonservice.h"
#include "daemon/uiagent.h"
#include "fakepolkit.h"

namespace {

const QString alreadyExists = QStringLiteral("com.tavix.nfc.Error.AlreadyExists");

QString busName(const AgentProcess &client)
{
    return QDBusConnection::systemBus().interface()->serviceOwner(client.service());
}

} // namespace

// The agents of two clients, between whom only polkit decides.
class TestAdapter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void nextAgentIsRefusedWhileTheFirstIsAllowed();
    void nextAgentTakesThePlaceOfOneThatIsNotAllowed();
    void agentPutAsideMayRegisterAgain();
    void agentPutAsideDoesNotReplaceAnother();
    void agentMayUnregisterInAnyCase_data();
    void agentMayUnregisterInAnyCase();
    void strangerMayNotUnregister();
    void callsBehindARegistrationWaitForIt();
    void handoverIsCanceledByItsCarrier();

private:
    static QString errorOfCanceling(const QDBusConnection &caller, const QString &carrier);
    bool isInUse(const AgentProcess &client) const;
    void putFirstAside();

    DaemonService service;
    std::unique_ptr<FakePolkit> polkit;
    std::unique_ptr<Adapter> adapter;
    std::unique_ptr<AgentProcess> first;
    std::unique_ptr<AgentProcess> second;
};

void TestAdapter::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
}

void TestAdapter::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    polkit = std::make_unique<FakePolkit>();
    adapter = std::make_unique<Adapter>(QSet<uint>());
    QString reason;
    QVERIFY2(service.start(adapter.get(), reason), qUtf8Printable(reason));
    first = std::make_unique<AgentProcess>(QStringLiteral("org.connui.test.First"));
    second = std::make_unique<AgentProcess>(QStringLiteral("org.connui.test.Second"));
    polkit->allow({busName(*first)});
    QCOMPARE(first->registerAgent().error, QString());
    QVERIFY(isInUse(*first));
}

void TestAdapter::cleanup()
{
    service.bus().unregisterService(QStringLiteral("com.tavix.nfc"));
    adapter.reset();
    polkit.reset();
    first.reset();
    second.reset();
}

bool TestAdapter::isInUse(const AgentProcess &client) const
{
    const QDBusObjectPath path(AgentProcess::path());
    return adapter->agent() && adapter->agent()->is(busName(client), path);
}

void TestAdapter::putFirstAside()
{
    polkit->allow({busName(*second)});
    polkit->reportChange();
    QTRY_VERIFY(!adapter->agent());
}

void TestAdapter::nextAgentIsRefusedWhileTheFirstIsAllowed()
{
    polkit->allow({busName(*first), busName(*second)});
    QCOMPARE(second->registerAgent().error, alreadyExists);
    QVERIFY(isInUse(*first));
}

// Also before polkit has reported a change.
void TestAdapter::nextAgentTakesThePlaceOfOneThatIsNotAllowed()
{
    polkit->allow({busName(*second)});
    QCOMPARE(second->registerAgent().error, QString());
    QVERIFY(isInUse(*second));
    QCOMPARE(first->members(), QStringList());
}

void TestAdapter::agentPutAsideMayRegisterAgain()
{
    putFirstAside();
    polkit->allow({busName(*first)});
    QCOMPARE(first->registerAgent().error, QString());
    QVERIFY(isInUse(*first));
}

void TestAdapter::agentPutAsideDoesNotReplaceAnother()
{
    putFirstAside();
    QCOMPARE(second->registerAgent().error, QString());
    polkit->allow({busName(*first), busName(*second)});
    QCOMPARE(first->registerAgent().error, alreadyExists);
    QVERIFY(isInUse(*second));
}

void TestAdapter::agentMayUnregisterInAnyCase_data()
{
    QTest::addColumn<bool>("isPutAside");
    QTest::newRow("in use") << false;
    QTest::newRow("put aside") << true;
}

void TestAdapter::agentMayUnregisterInAnyCase()
{
    QFETCH(bool, isPutAside);
    polkit->allow({busName(*second)});
    if (isPutAside)
        putFirstAside();
    QCOMPARE(first->unregisterAgent().error, QString());
    polkit->allow({busName(*first), busName(*second)});
    QCOMPARE(second->registerAgent().error, QString());
    QVERIFY(isInUse(*second));
    // It is not among those that may come back.
    QCOMPARE(second->unregisterAgent().error, QString());
    QCOMPARE(second->registerAgent(QStringLiteral("/other")).error, QString());
    QVERIFY(adapter->agent()->is(busName(*second), QDBusObjectPath(QStringLiteral("/other"))));
}

void TestAdapter::strangerMayNotUnregister()
{
    QCOMPARE(second->unregisterAgent().error, QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"));
    QVERIFY(isInUse(*first));
}

// Else an agent could end before it was registered, and stay.
void TestAdapter::callsBehindARegistrationWaitForIt()
{
    polkit->allow({busName(*second)});
    polkit->hold();
    const auto call = [this](const QString &member) {
        return second->call(QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
                            QStringLiteral("com.tavix.nfc.Adapter"), member,
                            {QVariant::fromValue(QDBusObjectPath(AgentProcess::path()))});
    };
    const int asked = polkit->questions();
    const int registration = call(QStringLiteral("RegisterUIAgent"));
    const int end = call(QStringLiteral("UnregisterUIAgent"));
    QTRY_COMPARE(polkit->questions(), asked + 2);
    polkit->release();
    QTRY_COMPARE(second->replies().size(), 2);
    const QList<FakeReply> replies = second->replies();
    QCOMPARE(replies.at(0).id, registration);
    QCOMPARE(replies.at(0).error, QString());
    QCOMPARE(replies.at(1).id, end);
    QCOMPARE(replies.at(1).error, QString());
    QVERIFY(!isInUse(*second));
}

QString TestAdapter::errorOfCanceling(const QDBusConnection &caller, const QString &carrier)
{
    QDBusMessage cancel = QDBusMessage::createMethodCall(
        QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
        QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("CancelHandoverRequest"));
    cancel.setArguments({carrier});
    const QDBusPendingCall call = caller.asyncCall(cancel);
    return QTest::qWaitFor([&call] { return call.isFinished(); }) ? call.error().name()
                                                                  : QStringLiteral("no answer");
}

void TestAdapter::handoverIsCanceledByItsCarrier()
{
    const auto callerName = QStringLiteral("caller");
    const QDBusConnection caller = QDBusConnection::connectToBus(QDBusConnection::SystemBus, callerName);
    const auto leave = qScopeGuard([&] { QDBusConnection::disconnectFromBus(callerName); });
    polkit->allow({caller.baseService()});
    QSignalSpy accepted(adapter.get(), &Adapter::handoverAccepted);
    QString reason;
    Handover *handover = adapter->acceptHandover(QStringLiteral("bluetooth"), {}, reason);
    QVERIFY(handover);
    QCOMPARE(accepted.size(), 1);
    QCOMPARE(accepted.constFirst().constFirst().value<Handover *>(), handover);
    QCOMPARE(errorOfCanceling(caller, QStringLiteral("other")),
             QStringLiteral("com.tavix.nfc.Error.NoHandover"));
    QCOMPARE(adapter->currentHandover(), handover);
    QCOMPARE(errorOfCanceling(caller, QStringLiteral("bluetooth")), QString());
    QVERIFY(!adapter->currentHandover());
    QCOMPARE(errorOfCanceling(caller, QStringLiteral("bluetooth")),
             QStringLiteral("com.tavix.nfc.Error.NoHandover"));
}

QTEST_GUILESS_MAIN(TestAdapter)
#include "tst_adapter.moc"
