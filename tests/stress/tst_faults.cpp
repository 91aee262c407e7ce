// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// One adapter and one agent outlive everything that can happen to the daemon, and work again when it is back.
#include <algorithm>
#include <csignal>
#include <functional>
#include <iterator>

#include <QDBusConnectionInterface>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <RadioState>

#include "adapter/nfcadapter_p.h"
#include "amount.h"
#include "fakedaemon.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "nfcadapter.h"
#include "nfcagent.h"
#include "unmatchedcalls.h"

using namespace std::chrono_literals;
using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcAdapterPrivate;
using ConnUi::NfcAgent;
using ConnUi::RadioState;

using Fault = std::function<void()>;
Q_DECLARE_METATYPE(Fault)

namespace {

const QDBusObjectPath target(QStringLiteral("/com/tavix/nfc/tag1"));

QVariant device()
{
    return QVariant::fromValue(target);
}

QVariant info()
{
    return QVariant::fromValue(
        QDBusVariant(QVariantMap{{QStringLiteral("Address"), QStringLiteral("00:11")}}));
}

struct Question
{
    QString member;
    QVariantList arguments;
};

QList<Question> questions()
{
    const QString address = QStringLiteral("00:11:22:33:44:55");
    const QVariantList named{device(), address, QStringLiteral("Headset"), 0x240404U};
    QDBusArgument noHandlers;
    noHandlers << NdefMessageHandlerList();
    return {
        {QStringLiteral("RequestBTPairing"), named + QVariantList{QStringLiteral("0000")}},
        {QStringLiteral("RequestBTConnection"), named},
        {QStringLiteral("RequestBTDisconnection"), named},
        {QStringLiteral("RequestNDEFDataDelivery"),
         {QVariant::fromValue(noHandlers), device(), QByteArray("x")}},
        {QStringLiteral("RequestSharingPermission"),
         {QStringLiteral("bluetooth"), info(), QStringList(QStringLiteral("/a"))}},
        {QStringLiteral("RequestSharingSelection"), {QStringLiteral("bluetooth"), info()}},
        {QStringLiteral("NotifyTouch"), {device(), QStringLiteral("ok")}},
        {QStringLiteral("Release"), {}},
    };
}

void expectFailedCall(const char *member, const char *error, const char *message)
{
    QTest::ignoreMessage(QtWarningMsg, QByteArray(member) + " returned error '" + error + "': " + message);
}

void expectNoReply(const char *member)
{
    expectFailedCall(member, "org.freedesktop.DBus.Error.NoReply",
                     "Message recipient disconnected from message bus without replying");
}

// Stops a service in the middle of whatever it does, and lets it go on later.
void hang(const FakeService &service, int seconds)
{
    const uint pid = QDBusConnection::systemBus().interface()->servicePid(service.service());
    kill(pid_t(pid), SIGSTOP);
    // From another process: this one may wait for the service meanwhile.
    QProcess::startDetached(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("sleep %1; kill -CONT %2").arg(seconds).arg(pid)});
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void killedDaemon_data();
    void killedDaemon();
    void daemonWithoutObjects();
    void daemonThatAnswersErrors();
    void daemonThatAnswersRubbish();
    void daemonThatSendsRubbish();
    void daemonThatHangs();
    void daemonReplacedByAnother();
    void policyDaemonThatHangs();
    void policyDaemonThatDiesInMidCall();
    void handlerThatDiesInMidCall();

private:
    void registerAgentAnew();
    void verifyAdapterComesBack();

    FakeDaemon *daemon = nullptr;
    NfcAdapter *adapter = nullptr;
    QPointer<NfcAgent> agent;
    // Whether the user answers at once.
    bool answers = true;
    qint64 slowest = 0;
    int kills = 0;
};

void TestFaults::initTestCase()
{
    // Registers the types of the questions; that of an empty list of records is found out with a record.
    FakeOhm ohm;
    ohm.start();
    const NfcAgent first;
    QVERIFY(!questions().isEmpty());
    // Every look at the clock comes an hour after the last: no daemon dies young.
    NfcAdapterPrivate::now = [] {
        static NfcAdapterPrivate::Clock::time_point time;
        return time += 1h;
    };
    RadioState(RadioState::NFC).setEnabled(false);
    adapter = new NfcAdapter(this);
    connect(adapter, &NfcAdapter::adapterValid, this, &TestFaults::registerAgentAnew);
    connect(adapter, &NfcAdapter::adapterInvalid, this, [this] { delete agent; });
}

void TestFaults::init()
{
    failOnWarningsExceptOfUnmatchedCalls();
    daemon = new FakeDaemon;
    daemon->start();
    QTRY_VERIFY(adapter->isValid());
}

void TestFaults::cleanup()
{
    if (!QTest::currentTestFailed())
        verifyAdapterComesBack();
    delete daemon;
    QTRY_VERIFY(!adapter->isValid());
}

void TestFaults::cleanupTestCase()
{
    qInfo("%d daemons killed; the slowest return to full use took %lld ms", kills, slowest);
}

// As a client does: an agent for each daemon.
void TestFaults::registerAgentAnew()
{
    agent = new NfcAgent(this);
    const auto answer = [this](auto grant) {
        return [this, grant](const QDBusObjectPath &target) {
            if (answers)
                std::invoke(grant, *agent, target);
        };
    };
    const auto accept = [this](const QString &, const QVariant &info) {
        if (answers)
            agent->acceptSharing(info);
    };
    connect(agent, &NfcAgent::btPairingRequested, this, answer(&NfcAgent::btPairingRequestGranted));
    connect(agent, &NfcAgent::btConnectionRequested, this, answer(&NfcAgent::btConnectionRequestGranted));
    connect(agent, &NfcAgent::btDisconnectionRequested, this,
            answer(&NfcAgent::btDisconnectionRequestGranted));
    connect(agent, &NfcAgent::dataDeliveryRequested, this,
            [granted = answer(&NfcAgent::dataDeliveryGranted)](
                const NdefMessageHandlerList &, const QDBusObjectPath &target) { granted(target); });
    connect(agent, &NfcAgent::sharingPermissionRequested, this, accept);
    connect(agent, &NfcAgent::sharingSelectionRequested, this, accept);
    adapter->registerAgent(agent);
}

// A healthy daemon appears, and everything works.
void TestFaults::verifyAdapterComesBack()
{
    answers = true;
    daemon->kill();
    QTRY_VERIFY(!agent && !adapter->isValid());
    QElapsedTimer clock;
    daemon->start();
    clock.start();
    QTRY_VERIFY(adapter->isValid());
    QVERIFY(adapter->isPowered());
    // Asked anew: what the last one said does not count.
    QCOMPARE(daemon->calls(QStringLiteral("GetProperties")).size(), 1);
    QCOMPARE(daemon->calls(QStringLiteral("RegisterUIAgent")).size(), 1);
    QSignalSpy started(adapter, &NfcAdapter::handoverStarted);
    daemon->emitAdapterSignal(QStringLiteral("HandoverStarted"));
    QTRY_COMPARE(started.count(), 1);
    const QList<Question> all = questions();
    for (const Question &question : all)
        daemon->callAgent(agent->path(), question.member, question.arguments);
    QTRY_COMPARE(daemon->replies().size(), all.size());
    const QList<FakeReply> replies = daemon->replies();
    for (const FakeReply &reply : replies)
        QCOMPARE(reply.error, QString());
    slowest = std::max(slowest, clock.elapsed());
}

void TestFaults::killedDaemon_data()
{
    QTest::addColumn<Fault>("fault");

    // Binding.
    QTest::newRow("before anybody has seen it") << Fault([this] {
        daemon->kill();
        QTest::ignoreMessage(QtWarningMsg, "Nfc server does not exist");
        daemon->start();
        daemon->kill();
    });
    QTest::newRow("asked for its adapter") << Fault([this] {
        daemon->kill();
        daemon->dieOn(QStringLiteral("DefaultAdapter"));
        expectNoReply("DefaultAdapter");
        daemon->start();
        QTRY_COMPARE(daemon->isOnBus(), false);
    });
    QTest::newRow("bound") << Fault([this] { daemon->kill(); });
    QTest::newRow("asked for its properties") << Fault([this] {
        adapter->setPowered(false);
        daemon->dieOn(QStringLiteral("GetProperties"));
        expectNoReply("GetProperties");
        adapter->isPowered();
    });
    QTest::newRow("told a property") << Fault([this] {
        daemon->dieOn(QStringLiteral("SetProperty"));
        expectNoReply("SetProperty");
        adapter->setPowered(false);
    });
    QTest::newRow("told an agent") << Fault([this] {
        daemon->dieOn(QStringLiteral("RegisterUIAgent"));
        expectNoReply("RegisterUIAgent");
        adapter->registerAgent(agent);
    });
    QTest::newRow("told that the agent goes") << Fault([this] {
        adapter->registerAgent(agent);
        daemon->dieOn(QStringLiteral("UnregisterUIAgent"));
        expectNoReply("UnregisterUIAgent");
        adapter->unregisterAgent(agent);
    });
    QTest::newRow("in mid storm") << Fault([this] {
        daemon->emitSignal(FakeDaemon::adapterPath(), QStringLiteral("com.tavix.nfc.Adapter"),
                           QStringLiteral("PropertyChanged"),
                           {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(QStringLiteral("on")))},
                           100);
        daemon->kill();
    });

    // Handover.
    QTest::newRow("asked for a handover") << Fault([this] {
        QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
        daemon->dieOn(QStringLiteral("RequestHandover"));
        adapter->requestHandover(QStringLiteral("bluetooth"), QStringLiteral("any"));
        QTRY_COMPARE(failed.count(), 1);
    });
    QTest::newRow("in a handover") << Fault([this] {
        daemon->hold(QStringLiteral("RequestHandover"));
        adapter->requestHandover(QStringLiteral("bluetooth"), QStringLiteral("any"));
        daemon->emitAdapterSignal(QStringLiteral("HandoverStarted"));
        QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
        daemon->kill();
        QTRY_COMPARE(failed.count(), 1);
    });
    QTest::newRow("asked to cancel a handover") << Fault([this] {
        daemon->dieOn(QStringLiteral("CancelHandoverRequest"));
        adapter->cancelHandoverRequest(QStringLiteral("bluetooth"));
        QTRY_COMPARE(daemon->isOnBus(), false);
    });

    // Requests: with the question open, and with the answer on its way.
    for (const Question &question : questions()) {
        QTest::addRow("%s open", qPrintable(question.member)) << Fault([this, question] {
            answers = false;
            daemon->callAgent(agent->path(), question.member, question.arguments);
            daemon->kill();
            QCoreApplication::processEvents();
        });
        QTest::addRow("%s answered", qPrintable(question.member)) << Fault([this, question] {
            daemon->callAgent(agent->path(), question.member, question.arguments);
            daemon->kill();
            QCoreApplication::processEvents();
        });
    }
}

void TestFaults::killedDaemon()
{
    QFETCH(Fault, fault);

    for (int i = amount(1, 38); i > 0 && !QTest::currentTestFailed(); --i) {
        fault();
        ++kills;
        if (!QTest::currentTestFailed())
            verifyAdapterComesBack();
    }
}

void TestFaults::daemonWithoutObjects()
{
    daemon->kill();
    daemon->fail(QStringLiteral("DefaultAdapter"), QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"),
                 QStringLiteral("No such object"));
    daemon->start();
    expectFailedCall("DefaultAdapter", "org.freedesktop.DBus.Error.UnknownObject", "No such object");
    QTRY_COMPARE(daemon->calls(QStringLiteral("DefaultAdapter")).size(), 1);
    QVERIFY(!adapter->isValid());
    QVERIFY(!adapter->isPowered());
}

void TestFaults::daemonThatAnswersErrors()
{
    const QString error = QStringLiteral("com.tavix.nfc.Error.Failed");
    for (const char *member : {"GetProperties", "SetProperty", "RegisterUIAgent", "UnregisterUIAgent"}) {
        daemon->fail(QString::fromLatin1(member), error, QStringLiteral("Out of order"));
        expectFailedCall(member, "com.tavix.nfc.Error.Failed", "Out of order");
    }
    daemon->fail(QStringLiteral("RequestHandover"), error, QStringLiteral("Out of order"));
    daemon->fail(QStringLiteral("CancelHandoverRequest"), error, QStringLiteral("Out of order"));
    QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
    QVERIFY(!adapter->isPowered());
    adapter->setPowered(false);
    adapter->registerAgent(agent);
    adapter->unregisterAgent(agent);
    adapter->requestHandover(QStringLiteral("bluetooth"), QStringLiteral("any"));
    adapter->cancelHandoverRequest(QStringLiteral("bluetooth"));
    QTRY_COMPARE(failed.count(), 1);

    // It needs no new daemon, either.
    daemon->setState(QStringLiteral("on"));
    QVERIFY(adapter->isPowered());
}

void TestFaults::daemonThatAnswersRubbish()
{
    QDBusArgument structure;
    structure.beginStructure();
    structure << QStringLiteral("on") << 1;
    structure.endStructure();
    const QVariantList values{
        QVariant::fromValue(structure),
        QVariantMap{{QStringLiteral("on"), QStringLiteral("on")}},
        QVariantList{QStringLiteral("on")},
        QByteArray(1000000, 'o'),
        1,
        true,
        QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(QStringLiteral("on")))))};
    for (const QVariant &state : values) {
        daemon->reply(QStringLiteral("GetProperties"), {QVariantMap{{QStringLiteral("State"), state}}});
        adapter->setPowered(false);
        QVERIFY(!adapter->isPowered());
    }
    expectFailedCall("GetProperties", "org.freedesktop.DBus.Error.InvalidSignature",
                     "Unexpected reply signature: got \"s\", expected \"a{sv}\"");
    daemon->reply(QStringLiteral("GetProperties"), {QStringLiteral("on")});
    adapter->setPowered(false);
    QVERIFY(!adapter->isPowered());

    // More than was asked for does no harm.
    const QVariantList rubbish{QStringLiteral("rubbish"), 7, QByteArray("x")};
    for (const char *member : {"SetProperty", "RegisterUIAgent", "UnregisterUIAgent", "RequestHandover"})
        daemon->reply(QString::fromLatin1(member), rubbish);
    QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
    // First, so that its answer is there when the last one is.
    adapter->requestHandover(QStringLiteral("bluetooth"), QStringLiteral("any"));
    adapter->setPowered(false);
    adapter->registerAgent(agent);
    adapter->unregisterAgent(agent);
    QCOMPARE(daemon->calls(QStringLiteral("RequestHandover")).size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(failed.count(), 0);

    daemon->kill();
    daemon->reply(QStringLiteral("DefaultAdapter"), {7});
    expectFailedCall("DefaultAdapter", "org.freedesktop.DBus.Error.InvalidSignature",
                     "Unexpected reply signature: got \"i\", expected \"o\"");
    daemon->start();
    QTRY_COMPARE(daemon->calls(QStringLiteral("DefaultAdapter")).size(), 1);
    QVERIFY(!adapter->isValid());
}

void TestFaults::daemonThatSendsRubbish()
{
    QVERIFY(adapter->isPowered());
    QSignalSpy changed(adapter, &NfcAdapter::propertyChanged);
    QSignalSpy selected(adapter, &NfcAdapter::handoverCarrierSelected);
    QSignalSpy completed(adapter, &NfcAdapter::handoverCompleted);
    QSignalSpy paired(agent, &NfcAgent::btPairingRequested);
    QSignalSpy delivered(agent, &NfcAgent::dataDeliveryRequested);
    daemon->emitAdapterSignal(QStringLiteral("PropertyChanged"),
                              {QStringLiteral("State"), QStringLiteral("off")});
    daemon->emitAdapterSignal(QStringLiteral("PropertyChanged"), {7});
    daemon->emitAdapterSignal(QStringLiteral("HandoverCarrierSelected"), {7});
    daemon->emitAdapterSignal(QStringLiteral("HandoverCompleted"), {});
    daemon->emitPropertyChanged(QString(), 7);
    daemon->emitPropertyChanged(QString(0x10000, u'S'), QStringLiteral("off"));
    daemon->emitPropertyChanged(QStringLiteral("\u202eState\n"), QStringLiteral("off"));

    const QVariantList calls[] = {
        {}, {7}, {QStringLiteral("/no/path/object")}, {device()}, {device(), 1, 2, 3, 4}};
    for (const QVariantList &arguments : calls) {
        daemon->callAgent(agent->path(), QStringLiteral("RequestBTPairing"), arguments);
        daemon->callAgent(agent->path(), QStringLiteral("RequestNDEFDataDelivery"), arguments);
    }
    daemon->callAgent(agent->path(), QStringLiteral("requestBTPairing"));
    // Without an interface, a name is looked for in all that the object exports.
    daemon->call(QDBusConnection::systemBus().baseService(), agent->path(), {},
                 QStringLiteral("deleteLater"));
    daemon->callAgent(agent->path() + QStringLiteral("/0"), QStringLiteral("Release"));
    const int bad = 2 * int(std::size(calls)) + 3;
    QTRY_COMPARE(daemon->replies().size(), bad);
    const QList<FakeReply> replies = daemon->replies();
    for (const FakeReply &reply : replies)
        QVERIFY2(!reply.error.isEmpty(), qPrintable(QString::number(reply.id)));
    QCOMPARE(changed.count() + selected.count() + completed.count(), 0);
    QCOMPARE(paired.count() + delivered.count(), 0);
    QVERIFY(adapter->isPowered());
    QVERIFY(agent);
}

void TestFaults::daemonThatHangs()
{
    // Longer than Qt waits for an answer, when there is time.
    const int seconds = amount(1, 60);
    constexpr int patience = 25;
    for (int i = 0; i < seconds / patience; ++i) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
                                               "^GetProperties returned error "
                                               "'org\\.freedesktop\\.DBus\\.Error\\.NoReply': .*")));
    }
    QElapsedTimer clock;
    hang(*daemon, seconds);
    clock.start();
    while (!adapter->isPowered())
        QVERIFY(clock.elapsed() < (seconds + patience) * 1000);
}

void TestFaults::daemonReplacedByAnother()
{
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.succeed(daemon->service());
    QSignalSpy valid(adapter, &NfcAdapter::adapterValid);
    daemon->stop();
    QTRY_COMPARE(valid.count(), 1);
    QCOMPARE(successor.members(),
             QStringList({QStringLiteral("DefaultAdapter"), QStringLiteral("RegisterUIAgent")}));
    QVERIFY(adapter->isPowered());
    successor.kill();
}

void TestFaults::policyDaemonThatHangs()
{
    const int seconds = amount(1, 60);
    FakeHandler viewer;
    viewer.start();
    const uint pid = QDBusConnection::sessionBus().interface()->servicePid(viewer.service());
    FakeOhm ohm;
    ohm.setActive(QStringLiteral("viewer"), {}, {}, pid);
    ohm.start();
    const auto inFront = [&viewer] {
        return NdefMessageHandler(QStringLiteral("viewer"), QStringLiteral("session"), viewer.service(),
                                  QDBusObjectPath(QStringLiteral("/")))
            .isRunningOnForeground();
    };
    QVERIFY(inFront());

    if (seconds > 25)
        QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    hang(ohm, seconds);
    QCOMPARE(inFront(), seconds < 25);
    QTRY_VERIFY_WITH_TIMEOUT(inFront(), seconds * 1000);
}

void TestFaults::policyDaemonThatDiesInMidCall()
{
    FakeOhm ohm;
    ohm.dieOn(QStringLiteral("Subscribe"));
    ohm.start();
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    {
        const NdefMessageHandler handler;
        QVERIFY(!ohm.isOnBus());
    }
    ohm.start();
    const NdefMessageHandler handler;
    QCOMPARE(ohm.members(), QStringList(QStringLiteral("Subscribe")));
}

void TestFaults::handlerThatDiesInMidCall()
{
    FakeOhm ohm;
    ohm.start();
    FakeHandler viewer;
    viewer.dieOn(QStringLiteral("NDEFData"));
    viewer.start();
    NdefMessageHandler handler(QStringLiteral("viewer"), QStringLiteral("session"), viewer.service(),
                               QDBusObjectPath(QStringLiteral("/")));
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcAgentTagReadRequest: Calling NDEFData() for the handler fails: "
                         "org.freedesktop.DBus.Error.NoReply Message recipient disconnected from message "
                         "bus without replying");
    handler.forwardData(target, "x");
    QVERIFY(!viewer.isOnBus());

    viewer.start();
    handler.forwardData(target, "x");
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 1);
}

QTEST_GUILESS_MAIN(TestFaults)

#include "tst_faults.moc"
