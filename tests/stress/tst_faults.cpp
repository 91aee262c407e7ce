// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// One adapter and one agent outlive everything that can happen to the daemon, and work again when it is back.
#include <csignal>
#include <functional>

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

using namespace Qt::Literals::StringLiterals;
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

const QDBusObjectPath target(u"/com/tavix/nfc/tag1"_s);

QVariant device()
{
    return QVariant::fromValue(target);
}

QVariant info()
{
    return QVariant::fromValue(QDBusVariant(QVariantMap{{u"Address"_s, u"00:11"_s}}));
}

struct Question
{
    QString member;
    QVariantList arguments;
};

QList<Question> questions()
{
    const QString address = u"00:11:22:33:44:55"_s;
    const QVariantList named{device(), address, u"Headset"_s, 0x240404U};
    QDBusArgument noHandlers;
    noHandlers << NdefMessageHandlerList();
    return {
        {u"RequestBTPairing"_s, named + QVariantList{u"0000"_s}},
        {u"RequestBTConnection"_s, named},
        {u"RequestBTDisconnection"_s, named},
        {u"RequestNDEFDataDelivery"_s, {QVariant::fromValue(noHandlers), device(), QByteArray("x")}},
        {u"RequestSharingPermission"_s, {u"bluetooth"_s, info(), QStringList(u"/a"_s)}},
        {u"RequestSharingSelection"_s, {u"bluetooth"_s, info()}},
        {u"NotifyTouch"_s, {device(), u"ok"_s}},
        {u"Release"_s, {}},
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
    QProcess::startDetached(u"sh"_s, {u"-c"_s, u"sleep %1; kill -CONT %2"_s.arg(seconds).arg(pid)});
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
    void meetDaemon();
    void comesBack();

    FakeDaemon *daemon = nullptr;
    NfcAdapter *adapter = nullptr;
    QPointer<NfcAgent> agent;
    // Whether the person answers at once.
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
    connect(adapter, &NfcAdapter::adapterValid, this, &TestFaults::meetDaemon);
    connect(adapter, &NfcAdapter::adapterInvalid, this, [this] { delete agent; });
}

void TestFaults::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    daemon = new FakeDaemon;
    daemon->start();
    QTRY_VERIFY(adapter->isValid());
}

void TestFaults::cleanup()
{
    if (!QTest::currentTestFailed())
        comesBack();
    delete daemon;
    QTRY_VERIFY(!adapter->isValid());
}

void TestFaults::cleanupTestCase()
{
    qInfo("%d daemons killed; the slowest return to full use took %lld ms", kills, slowest);
}

// As a client does: an agent for each daemon.
void TestFaults::meetDaemon()
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
void TestFaults::comesBack()
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
    QCOMPARE(daemon->calls(u"GetProperties"_s).size(), 1);
    QCOMPARE(daemon->calls(u"RegisterUIAgent"_s).size(), 1);
    QSignalSpy started(adapter, &NfcAdapter::handoverStarted);
    daemon->emitAdapterSignal(u"HandoverStarted"_s);
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
        daemon->dieOn(u"DefaultAdapter"_s);
        expectNoReply("DefaultAdapter");
        daemon->start();
        QTRY_COMPARE(daemon->isOnBus(), false);
    });
    QTest::newRow("bound") << Fault([this] { daemon->kill(); });
    QTest::newRow("asked for its properties") << Fault([this] {
        adapter->setPowered(false);
        daemon->dieOn(u"GetProperties"_s);
        expectNoReply("GetProperties");
        adapter->isPowered();
    });
    QTest::newRow("told a property") << Fault([this] {
        daemon->dieOn(u"SetProperty"_s);
        expectNoReply("SetProperty");
        adapter->setPowered(false);
    });
    QTest::newRow("told an agent") << Fault([this] {
        daemon->dieOn(u"RegisterUIAgent"_s);
        expectNoReply("RegisterUIAgent");
        adapter->registerAgent(agent);
    });
    QTest::newRow("told that the agent goes") << Fault([this] {
        adapter->registerAgent(agent);
        daemon->dieOn(u"UnregisterUIAgent"_s);
        expectNoReply("UnregisterUIAgent");
        adapter->unregisterAgent(agent);
    });
    QTest::newRow("in mid storm") << Fault([this] {
        daemon->emitSignal(FakeDaemon::adapterPath(), u"com.tavix.nfc.Adapter"_s, u"PropertyChanged"_s,
                           {u"State"_s, QVariant::fromValue(QDBusVariant(u"on"_s))}, 100);
        daemon->kill();
    });

    // Handover.
    QTest::newRow("asked for a handover") << Fault([this] {
        QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
        daemon->dieOn(u"RequestHandover"_s);
        adapter->requestHandover(u"bluetooth"_s, u"any"_s);
        QTRY_COMPARE(failed.count(), 1);
    });
    QTest::newRow("in a handover") << Fault([this] {
        daemon->hold(u"RequestHandover"_s);
        adapter->requestHandover(u"bluetooth"_s, u"any"_s);
        daemon->emitAdapterSignal(u"HandoverStarted"_s);
        QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
        daemon->kill();
        QTRY_COMPARE(failed.count(), 1);
    });
    QTest::newRow("asked to cancel a handover") << Fault([this] {
        daemon->dieOn(u"CancelHandoverRequest"_s);
        adapter->cancelHandoverRequest(u"bluetooth"_s);
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
            comesBack();
    }
}

void TestFaults::daemonWithoutObjects()
{
    daemon->kill();
    daemon->fail(u"DefaultAdapter"_s, u"org.freedesktop.DBus.Error.UnknownObject"_s, u"No such object"_s);
    daemon->start();
    expectFailedCall("DefaultAdapter", "org.freedesktop.DBus.Error.UnknownObject", "No such object");
    QTRY_COMPARE(daemon->calls(u"DefaultAdapter"_s).size(), 1);
    QVERIFY(!adapter->isValid());
    QVERIFY(!adapter->isPowered());
}

void TestFaults::daemonThatAnswersErrors()
{
    const QString error = u"com.tavix.nfc.Error.Failed"_s;
    for (const char *member : {"GetProperties", "SetProperty", "RegisterUIAgent", "UnregisterUIAgent"}) {
        daemon->fail(QString::fromLatin1(member), error, u"Out of order"_s);
        expectFailedCall(member, "com.tavix.nfc.Error.Failed", "Out of order");
    }
    daemon->fail(u"RequestHandover"_s, error, u"Out of order"_s);
    daemon->fail(u"CancelHandoverRequest"_s, error, u"Out of order"_s);
    QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
    QVERIFY(!adapter->isPowered());
    adapter->setPowered(false);
    adapter->registerAgent(agent);
    adapter->unregisterAgent(agent);
    adapter->requestHandover(u"bluetooth"_s, u"any"_s);
    adapter->cancelHandoverRequest(u"bluetooth"_s);
    QTRY_COMPARE(failed.count(), 1);

    // It needs no new daemon, either.
    daemon->setState(u"on"_s);
    QVERIFY(adapter->isPowered());
}

void TestFaults::daemonThatAnswersRubbish()
{
    QDBusArgument structure;
    structure.beginStructure();
    structure << u"on"_s << 1;
    structure.endStructure();
    const QVariantList values{QVariant::fromValue(structure),
                              QVariantMap{{u"on"_s, u"on"_s}},
                              QVariantList{u"on"_s},
                              QByteArray(1000000, 'o'),
                              1,
                              true,
                              QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(u"on"_s))))};
    for (const QVariant &state : values) {
        daemon->reply(u"GetProperties"_s, {QVariantMap{{u"State"_s, state}}});
        adapter->setPowered(false);
        QVERIFY(!adapter->isPowered());
    }
    expectFailedCall("GetProperties", "org.freedesktop.DBus.Error.InvalidSignature",
                     "Unexpected reply signature: got \"s\", expected \"a{sv}\"");
    daemon->reply(u"GetProperties"_s, {u"on"_s});
    adapter->setPowered(false);
    QVERIFY(!adapter->isPowered());

    // More than was asked for does no harm.
    const QVariantList rubbish{u"rubbish"_s, 7, QByteArray("x")};
    for (const char *member : {"SetProperty", "RegisterUIAgent", "UnregisterUIAgent", "RequestHandover"})
        daemon->reply(QString::fromLatin1(member), rubbish);
    QSignalSpy failed(adapter, &NfcAdapter::handoverFailed);
    // First, so that its answer is there when the last one is.
    adapter->requestHandover(u"bluetooth"_s, u"any"_s);
    adapter->setPowered(false);
    adapter->registerAgent(agent);
    adapter->unregisterAgent(agent);
    QCOMPARE(daemon->calls(u"RequestHandover"_s).size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(failed.count(), 0);

    daemon->kill();
    daemon->reply(u"DefaultAdapter"_s, {7});
    expectFailedCall("DefaultAdapter", "org.freedesktop.DBus.Error.InvalidSignature",
                     "Unexpected reply signature: got \"i\", expected \"o\"");
    daemon->start();
    QTRY_COMPARE(daemon->calls(u"DefaultAdapter"_s).size(), 1);
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
    daemon->emitAdapterSignal(u"PropertyChanged"_s, {u"State"_s, u"off"_s});
    daemon->emitAdapterSignal(u"PropertyChanged"_s, {7});
    daemon->emitAdapterSignal(u"HandoverCarrierSelected"_s, {7});
    daemon->emitAdapterSignal(u"HandoverCompleted"_s, {});
    daemon->emitPropertyChanged(QString(), 7);
    daemon->emitPropertyChanged(QString(0x10000, u'S'), u"off"_s);
    daemon->emitPropertyChanged(u"\u202eState\n"_s, u"off"_s);

    const QVariantList calls[] = {{}, {7}, {u"/no/path/object"_s}, {device()}, {device(), 1, 2, 3, 4}};
    for (const QVariantList &arguments : calls) {
        daemon->callAgent(agent->path(), u"RequestBTPairing"_s, arguments);
        daemon->callAgent(agent->path(), u"RequestNDEFDataDelivery"_s, arguments);
    }
    daemon->callAgent(agent->path(), u"requestBTPairing"_s);
    // Without an interface, a name is looked for in all that the object exports.
    daemon->call(QDBusConnection::systemBus().baseService(), agent->path(), {}, u"deleteLater"_s);
    daemon->callAgent(agent->path() + u"/0"_s, u"Release"_s);
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
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^GetProperties returned error "
                                                "'org\\.freedesktop\\.DBus\\.Error\\.NoReply': .*"_s));
    }
    QElapsedTimer clock;
    hang(*daemon, seconds);
    clock.start();
    while (!adapter->isPowered())
        QVERIFY(clock.elapsed() < (seconds + patience) * 1000);
}

void TestFaults::daemonReplacedByAnother()
{
    FakeService successor(QDBusConnection::SystemBus, u"org.connui.Successor"_s);
    successor.succeed(daemon->service());
    QSignalSpy valid(adapter, &NfcAdapter::adapterValid);
    daemon->stop();
    QTRY_COMPARE(valid.count(), 1);
    QCOMPARE(successor.members(), QStringList({u"DefaultAdapter"_s, u"RegisterUIAgent"_s}));
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
    ohm.setActive(u"viewer"_s, {}, {}, pid);
    ohm.start();
    const auto inFront = [&viewer] {
        return NdefMessageHandler(u"viewer"_s, u"session"_s, viewer.service(), QDBusObjectPath(u"/"_s))
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
    ohm.dieOn(u"Subscribe"_s);
    ohm.start();
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    {
        const NdefMessageHandler handler;
        QVERIFY(!ohm.isOnBus());
    }
    ohm.start();
    const NdefMessageHandler handler;
    QCOMPARE(ohm.members(), QStringList(u"Subscribe"_s));
}

void TestFaults::handlerThatDiesInMidCall()
{
    FakeOhm ohm;
    ohm.start();
    FakeHandler viewer;
    viewer.dieOn(u"NDEFData"_s);
    viewer.start();
    NdefMessageHandler handler(u"viewer"_s, u"session"_s, viewer.service(), QDBusObjectPath(u"/"_s));
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcAgentTagReadRequest: Calling NDEFData() for the handler fails: "
                         "org.freedesktop.DBus.Error.NoReply Message recipient disconnected from message "
                         "bus without replying");
    handler.forwardData(target, "x");
    QVERIFY(!viewer.isOnBus());

    viewer.start();
    handler.forwardData(target, "x");
    QCOMPARE(viewer.calls(u"NDEFData"_s).size(), 1);
}

QTEST_GUILESS_MAIN(TestFaults)

#include "tst_faults.moc"
