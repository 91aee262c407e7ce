// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <chrono>
#include <functional>
#include <memory>

#include <QDBusObjectPath>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <NfcAdapter>
#include <NfcAgent>
#include <NfcPendingCall>
#include <RadioState>

#include "adapter/nfcadapter_p.h"
#include "busmonitor.h"
#include "fakedaemon.h"
#include "outcome.h"

using namespace std::chrono_literals;
using ConnUi::NfcAdapter;
using ConnUi::NfcAdapterPrivate;
using ConnUi::NfcAgent;
using ConnUi::NfcPendingCall;
using ConnUi::RadioState;

namespace {

const QString noService = QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown");
const QString denied = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied");
const QString noReply = QStringLiteral("org.freedesktop.DBus.Error.NoReply");

QStringList withoutMatches(QStringList calls)
{
    calls.removeAll(QStringLiteral("org.freedesktop.DBus.AddMatch"));
    calls.removeAll(QStringLiteral("org.freedesktop.DBus.RemoveMatch"));
    return calls;
}

} // namespace

/** The functions of the adapter that do not wait. */
class TestNfcAdapterAsync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void makingAnAdapterDoesNotWaitForTheDaemon();
    void daemonThatIsThereIsAnnounced();
    void bindingAsksTheDaemonAlone();
    void laterAdaptersShareTheBinding();
    void waitingBindingStopsWaiting();
    void adaptersTellWhetherTheirBindingWaits();
    void absentDaemonIsStartedWhenTheRadioIsOn();
    void absentDaemonStaysAwayWhenTheRadioIsOff();
    void daemonThatCannotBeStartedIsLogged();
    void refusedBindingIsLogged();
    void daemonThatGoesWithoutAnAnswerIsForgotten();
    void daemonThatGoesBeforeItIsAskedStaysAway();
    void daemonThatIsReplacedWithoutAnAnswerIsForgotten();
    void replacedDaemonIsBoundAnew();
    void brokenDaemonIsNotLookedFor();
    void signalsOfTheDaemonArrive();

    void powerIsAskedOfTheDaemon_data();
    void powerIsAskedOfTheDaemon();
    void knownPowerIsThereAtOnce();
    void powerOfAnInvalidAdapterIsOff();
    void failedReadingOfPowerIsLogged();
    void answerOfAFormerDaemonIsNotKept();
    void waitForPowerCanBeLimited();

    void switchingWritesState_data();
    void switchingWritesState();
    void switchingMakesTheCacheStale();
    void failedSwitchingIsLogged();
    void switchingOnStartsAnAbsentDaemonOnly();
    void switchingOnFailsWhereNoDaemonCanBeStarted();
    void switchingOnDoesNotStartABrokenDaemon();
    void switchingOnAnUnboundDaemonSwitchesTheRadio();
    void switchingOffWithoutDaemonSwitchesTheRadio();

    void agentIsRegisteredByItsPath_data();
    void agentIsRegisteredByItsPath();
    void failedRegistrationIsLogged_data();
    void failedRegistrationIsLogged();
    void registrationNeedsAnAgentAndADaemon_data();
    void registrationNeedsAnAgentAndADaemon();
    void cancellationTellsItsOutcome();
    void failedCancellationIsNotLogged();

    void deletedAdapterHearsNothing();
    void deletedCallGoesOn();
    void slotMayDeleteTheLastAdapter();

private:
    void addRegistrations() const;
    /** Makes the adapter and lets it find the daemon. */
    void bind();

    std::unique_ptr<RadioState> radio;
    std::unique_ptr<FakeDaemon> daemon;
    std::unique_ptr<NfcAdapter> adapter;
};

void TestNfcAdapterAsync::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    radio = std::make_unique<RadioState>(RadioState::NFC);
    radio->setEnabled(false);
    NfcAdapterPrivate::adapterBroken = false;
    daemon = std::make_unique<FakeDaemon>();
}

void TestNfcAdapterAsync::cleanup()
{
    adapter.reset();
    daemon.reset();
}

void TestNfcAdapterAsync::bind()
{
    daemon->start();
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QTRY_VERIFY(adapter->isValid());
    daemon->clearCalls();
}

void TestNfcAdapterAsync::makingAnAdapterDoesNotWaitForTheDaemon()
{
    daemon->hold(QStringLiteral("DefaultAdapter"));
    daemon->start();
    BusMonitor monitor;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QVERIFY(!adapter->isValid());
    QCOMPARE(withoutMatches(monitor.takeCalls()),
             QStringList({QStringLiteral("org.freedesktop.DBus.GetNameOwner"),
                          QStringLiteral("com.tavix.nfc.Manager.DefaultAdapter")}));
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    QTRY_COMPARE(daemon->members(), QStringList(QStringLiteral("DefaultAdapter")));
    QVERIFY(!adapter->isValid());
    daemon->release(QStringLiteral("DefaultAdapter"));
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(adapter->isValid());
}

void TestNfcAdapterAsync::daemonThatIsThereIsAnnounced()
{
    daemon->start();
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(adapter->isPowered());
}

void TestNfcAdapterAsync::bindingAsksTheDaemonAlone()
{
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    BusMonitor monitor;
    daemon->start();
    QTRY_COMPARE(valid.count(), 1);
    QCOMPARE(withoutMatches(monitor.takeCalls()),
             QStringList(QStringLiteral("com.tavix.nfc.Manager.DefaultAdapter")));
}

void TestNfcAdapterAsync::laterAdaptersShareTheBinding()
{
    bind();
    const NfcAdapter second;
    QVERIFY(second.isValid());
    QCOMPARE(daemon->members(), QStringList());
}

void TestNfcAdapterAsync::waitingBindingStopsWaiting()
{
    const NfcAdapter waiting;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    daemon->hold(QStringLiteral("DefaultAdapter"));
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    daemon->start();
    QTRY_COMPARE(daemon->members(), QStringList(QStringLiteral("DefaultAdapter")));
    QCOMPARE(valid.count(), 0);
    daemon->release(QStringLiteral("DefaultAdapter"));
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(waiting.isValid());
}

void TestNfcAdapterAsync::adaptersTellWhetherTheirBindingWaits()
{
    daemon->start();
    const NfcAdapter waiting;
    QVERIFY(!waiting.isAsynchronous());
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QVERIFY(adapter->isAsynchronous());
    QVERIFY(waiting.isAsynchronous());
}

void TestNfcAdapterAsync::absentDaemonIsStartedWhenTheRadioIsOn()
{
    radio->setEnabled(true);
    daemon->makeActivatable();
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QVERIFY(!daemon->isOnBus());
    QTRY_VERIFY(adapter->isValid());
    // Not a daemon that died early.
    radio->setEnabled(false);
}

void TestNfcAdapterAsync::absentDaemonStaysAwayWhenTheRadioIsOff()
{
    daemon->makeActivatable();
    BusMonitor monitor;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const Outcome outcome(adapter->isPoweredAsync());
    QTRY_COMPARE(outcome.times, 1);
    QVERIFY(!withoutMatches(monitor.takeCalls())
                 .contains(QStringLiteral("org.freedesktop.DBus.StartServiceByName")));
    QVERIFY(!daemon->isOnBus());
}

void TestNfcAdapterAsync::daemonThatCannotBeStartedIsLogged()
{
    radio->setEnabled(true);
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    // At once, and when it is asked for.
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    const Outcome outcome(adapter->setPoweredAsync(true));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, noService);
}

void TestNfcAdapterAsync::refusedBindingIsLogged()
{
    daemon->fail(QStringLiteral("DefaultAdapter"), denied, QStringLiteral("No"));
    daemon->start();
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    QTest::ignoreMessage(QtWarningMsg,
                         "DefaultAdapter returned error 'org.freedesktop.DBus.Error.AccessDenied': No");
    QTRY_COMPARE(daemon->members(), QStringList(QStringLiteral("DefaultAdapter")));
    // Its answer follows the other one.
    QTRY_VERIFY(!NfcAdapterPrivate::instance->findChild<QDBusPendingCallWatcher *>());
    QCOMPARE(valid.count(), 0);
    QVERIFY(!adapter->isValid());
}

void TestNfcAdapterAsync::daemonThatGoesWithoutAnAnswerIsForgotten()
{
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    const QSignalSpy invalid(adapter.get(), &NfcAdapter::adapterInvalid);
    daemon->hold(QStringLiteral("DefaultAdapter"));
    daemon->start();
    QTRY_COMPARE(daemon->members(), QStringList(QStringLiteral("DefaultAdapter")));
    daemon->kill();
    QTRY_COMPARE(invalid.count(), 1);
    daemon->start();
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(adapter->isValid());
}

void TestNfcAdapterAsync::daemonThatGoesBeforeItIsAskedStaysAway()
{
    const QTemporaryDir folder;
    const QString started = folder.filePath(QStringLiteral("started"));
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const QSignalSpy invalid(adapter.get(), &NfcAdapter::adapterInvalid);
    daemon->makeActivatable(QStringLiteral("/usr/bin/touch ") + started);
    daemon->start();
    daemon->stop();
    QTRY_COMPARE(invalid.count(), 1);
    // The bus starts one after the other, and this one takes longer.
    FakeService startedLater(QDBusConnection::SystemBus, QStringLiteral("org.connui.Later"));
    startedLater.makeActivatable();
    QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
        startedLater.service(), QStringLiteral("/"), startedLater.service(), QStringLiteral("Start")));
    QVERIFY(startedLater.isOnBus());
    QVERIFY(!QFile::exists(started));
}

void TestNfcAdapterAsync::daemonThatIsReplacedWithoutAnAnswerIsForgotten()
{
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    daemon->hold(QStringLiteral("DefaultAdapter"));
    daemon->start();
    QTRY_COMPARE(daemon->members(), QStringList(QStringLiteral("DefaultAdapter")));
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.succeed(daemon->service());
    daemon->stop();
    QTRY_COMPARE(successor.members(), QStringList(QStringLiteral("DefaultAdapter")));
    QTRY_COMPARE(valid.count(), 1);
    daemon->release(QStringLiteral("DefaultAdapter"));
    const Outcome outcome(adapter->isPoweredAsync());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(valid.count(), 1);
    QCOMPARE(successor.members().constLast(), QStringLiteral("GetProperties"));
}

void TestNfcAdapterAsync::replacedDaemonIsBoundAnew()
{
    bind();
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.succeed(daemon->service());
    const QSignalSpy invalid(adapter.get(), &NfcAdapter::adapterInvalid);
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    daemon->stop();
    QTRY_COMPARE(valid.count(), 1);
    QCOMPARE(invalid.count(), 1);
    const Outcome outcome(adapter->isPoweredAsync());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(successor.members(),
             QStringList({QStringLiteral("DefaultAdapter"), QStringLiteral("GetProperties")}));
}

void TestNfcAdapterAsync::brokenDaemonIsNotLookedFor()
{
    daemon->start();
    NfcAdapterPrivate::adapterBroken = true;
    BusMonitor monitor;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QCOMPARE(withoutMatches(monitor.takeCalls()),
             QStringList(QStringLiteral("org.freedesktop.DBus.GetNameOwner")));
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    daemon->stop();
    daemon->start();
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterAsync::signalsOfTheDaemonArrive()
{
    bind();
    const QSignalSpy started(adapter.get(), &NfcAdapter::handoverStarted);
    const QSignalSpy changed(adapter.get(), &NfcAdapter::propertyChanged);
    daemon->emitAdapterSignal(QStringLiteral("HandoverStarted"));
    daemon->emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(started.count(), 1);
}

void TestNfcAdapterAsync::powerIsAskedOfTheDaemon_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("powered");
    QTest::newRow("on") << QStringLiteral("on") << true;
    QTest::newRow("off") << QStringLiteral("off") << false;
}

void TestNfcAdapterAsync::powerIsAskedOfTheDaemon()
{
    QFETCH(QString, state);
    QFETCH(bool, powered);
    bind();
    daemon->setState(state);
    BusMonitor monitor;
    const Outcome outcome(adapter->isPoweredAsync());
    QVERIFY(!outcome.call->isFinished());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.value, QVariant(powered));
    QCOMPARE(monitor.takeCalls(), QStringList(QStringLiteral("com.tavix.nfc.Adapter.GetProperties")));
    QCOMPARE(adapter->isPowered(), powered);
    QCOMPARE(daemon->members().count(QStringLiteral("GetProperties")), 1);
}

void TestNfcAdapterAsync::knownPowerIsThereAtOnce()
{
    bind();
    QVERIFY(adapter->isPowered());
    const Outcome outcome(adapter->isPoweredAsync());
    QVERIFY(outcome.call->isFinished());
    QCOMPARE(outcome.call->value(), QVariant(true));
    QCOMPARE(outcome.times, 0);
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(true));
    QCOMPARE(daemon->members().count(QStringLiteral("GetProperties")), 1);
}

void TestNfcAdapterAsync::powerOfAnInvalidAdapterIsOff()
{
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const Outcome outcome(adapter->isPoweredAsync());
    QVERIFY(outcome.call->isFinished());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(false));
    QCOMPARE(outcome.error, noService);
}

void TestNfcAdapterAsync::failedReadingOfPowerIsLogged()
{
    bind();
    QVERIFY(adapter->isPowered());
    const Outcome written(adapter->setPoweredAsync(true));
    QTRY_COMPARE(written.times, 1);
    daemon->fail(QStringLiteral("GetProperties"), denied, QStringLiteral("No"));
    QTest::ignoreMessage(QtWarningMsg,
                         "GetProperties returned error 'org.freedesktop.DBus.Error.AccessDenied': No");
    const Outcome outcome(adapter->isPoweredAsync());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, denied);
    QCOMPARE(outcome.message, QStringLiteral("No"));
    // The value that was known before.
    QCOMPARE(outcome.value, QVariant(true));

    daemon->setState(QStringLiteral("off"));
    const Outcome again(adapter->isPoweredAsync());
    QVERIFY(!again.call->isFinished());
    QTRY_COMPARE(again.times, 1);
    QCOMPARE(again.value, QVariant(false));
}

void TestNfcAdapterAsync::answerOfAFormerDaemonIsNotKept()
{
    bind();
    daemon->hold(QStringLiteral("GetProperties"));
    const Outcome outcome(adapter->isPoweredAsync());
    QTRY_COMPARE(daemon->members(), QStringList(QStringLiteral("GetProperties")));
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.reply(QStringLiteral("GetProperties"),
                    {QVariantMap{{QStringLiteral("State"), QStringLiteral("off")}}});
    successor.succeed(daemon->service());
    const QSignalSpy valid(adapter.get(), &NfcAdapter::adapterValid);
    daemon->stop();
    QTRY_COMPARE(valid.count(), 1);
    daemon->release(QStringLiteral("GetProperties"));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(false));
    QVERIFY(!adapter->isPowered());
    QCOMPARE(successor.members().count(QStringLiteral("GetProperties")), 1);
}

void TestNfcAdapterAsync::waitForPowerCanBeLimited()
{
    bind();
    QVERIFY(adapter->isPowered(10s));
    const Outcome written(adapter->setPoweredAsync(true));
    QTRY_COMPARE(written.times, 1);
    daemon->hold(QStringLiteral("GetProperties"));
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral(
                          "^GetProperties returned error 'org\\.freedesktop\\.DBus\\.Error\\.NoReply': ")));
    QVERIFY(adapter->isPowered(10ms));

    // Only this once.
    daemon->delay(QStringLiteral("SetProperty"), 100);
    const Outcome late(adapter->setPoweredAsync(false));
    QTRY_COMPARE(late.times, 1);
    QCOMPARE(late.error, QString());
    daemon->release(QStringLiteral("GetProperties"));
    daemon->delay(QStringLiteral("GetProperties"), 100);
    daemon->setState(QStringLiteral("off"));
    QVERIFY(!adapter->isPowered());
}

void TestNfcAdapterAsync::switchingWritesState_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("state");
    QTest::newRow("on") << true << QStringLiteral("on");
    QTest::newRow("off") << false << QStringLiteral("off");
}

void TestNfcAdapterAsync::switchingWritesState()
{
    QFETCH(bool, on);
    QFETCH(QString, state);
    bind();
    radio->setEnabled(!on);
    daemon->hold(QStringLiteral("SetProperty"));
    BusMonitor monitor;
    const Outcome outcome(adapter->setPoweredAsync(on));
    QCOMPARE(monitor.takeCalls(), QStringList(QStringLiteral("com.tavix.nfc.Adapter.SetProperty")));
    QCOMPARE(radio->enabled(), on);
    const QList<FakeCall> calls = daemon->calls(QStringLiteral("SetProperty"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.constFirst().arguments.value(0), QVariant(QStringLiteral("State")));
    QCOMPARE(calls.constFirst().arguments.value(1).value<QDBusVariant>().variant(), QVariant(state));
    QVERIFY(!outcome.call->isFinished());
    daemon->release(QStringLiteral("SetProperty"));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    radio->setEnabled(false);
}

void TestNfcAdapterAsync::switchingMakesTheCacheStale()
{
    bind();
    QVERIFY(adapter->isPowered());
    const Outcome written(adapter->setPoweredAsync(false));
    QTRY_COMPARE(written.times, 1);
    daemon->setState(QStringLiteral("off"));
    const Outcome outcome(adapter->isPoweredAsync());
    QVERIFY(!outcome.call->isFinished());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(false));
}

void TestNfcAdapterAsync::failedSwitchingIsLogged()
{
    bind();
    QVERIFY(adapter->isPowered());
    daemon->fail(QStringLiteral("SetProperty"), denied, QStringLiteral("No"));
    QTest::ignoreMessage(QtWarningMsg,
                         "SetProperty returned error 'org.freedesktop.DBus.Error.AccessDenied': No");
    const Outcome outcome(adapter->setPoweredAsync(false));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, denied);
    QCOMPARE(outcome.message, QStringLiteral("No"));
    const std::unique_ptr<NfcPendingCall> known(adapter->isPoweredAsync());
    QVERIFY(known->isFinished());
}

void TestNfcAdapterAsync::switchingOnStartsAnAbsentDaemonOnly()
{
    daemon->makeActivatable();
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const Outcome outcome(adapter->setPoweredAsync(true));
    QVERIFY(!outcome.call->isFinished());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    QVERIFY(daemon->isOnBus());
    QVERIFY(!radio->enabled());
    QTRY_VERIFY(adapter->isValid());
    QVERIFY(!daemon->members().contains(QStringLiteral("SetProperty")));
}

void TestNfcAdapterAsync::switchingOnFailsWhereNoDaemonCanBeStarted()
{
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    const Outcome outcome(adapter->setPoweredAsync(true));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, noService);
    QVERIFY(!radio->enabled());
}

void TestNfcAdapterAsync::switchingOnDoesNotStartABrokenDaemon()
{
    daemon->makeActivatable();
    NfcAdapterPrivate::adapterBroken = true;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken");
    const Outcome outcome(adapter->setPoweredAsync(true));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, noService);
    QVERIFY(!daemon->isOnBus());
}

void TestNfcAdapterAsync::switchingOnAnUnboundDaemonSwitchesTheRadio()
{
    daemon->start();
    NfcAdapterPrivate::adapterBroken = true;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const Outcome outcome(adapter->setPoweredAsync(true));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, noService);
    QVERIFY(radio->enabled());
    QCOMPARE(daemon->members(), QStringList());
    radio->setEnabled(false);
}

void TestNfcAdapterAsync::switchingOffWithoutDaemonSwitchesTheRadio()
{
    // Made before the radio is on, so that it starts nothing.
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    radio->setEnabled(true);
    const Outcome outcome(adapter->setPoweredAsync(false));
    QVERIFY(!radio->enabled());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
}

void TestNfcAdapterAsync::addRegistrations() const
{
    using Function = std::function<NfcPendingCall *(NfcAdapter *, NfcAgent *)>;
    QTest::addColumn<Function>("call");
    QTest::addColumn<QString>("member");
    QTest::newRow("register") << Function(&NfcAdapter::registerAgentAsync)
                              << QStringLiteral("RegisterUIAgent");
    QTest::newRow("unregister") << Function(&NfcAdapter::unregisterAgentAsync)
                                << QStringLiteral("UnregisterUIAgent");
}

void TestNfcAdapterAsync::agentIsRegisteredByItsPath_data()
{
    addRegistrations();
}

void TestNfcAdapterAsync::agentIsRegisteredByItsPath()
{
    using Function = std::function<NfcPendingCall *(NfcAdapter *, NfcAgent *)>;
    QFETCH(Function, call);
    QFETCH(QString, member);
    bind();
    NfcAgent agent;
    daemon->hold(member);
    const Outcome outcome(call(adapter.get(), &agent));
    QCOMPARE(daemon->members(), QStringList(member));
    QCOMPARE(daemon->calls(member).constFirst().arguments,
             QVariantList{QVariant::fromValue(QDBusObjectPath(agent.path()))});
    QVERIFY(!outcome.call->isFinished());
    daemon->release(member);
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
}

void TestNfcAdapterAsync::failedRegistrationIsLogged_data()
{
    addRegistrations();
}

void TestNfcAdapterAsync::failedRegistrationIsLogged()
{
    using Function = std::function<NfcPendingCall *(NfcAdapter *, NfcAgent *)>;
    QFETCH(Function, call);
    QFETCH(QString, member);
    bind();
    NfcAgent agent;
    daemon->fail(member, denied, QStringLiteral("No"));
    const QString warning = member + QStringLiteral(" returned error '%1': No").arg(denied);
    QTest::ignoreMessage(QtWarningMsg, warning.toUtf8());
    const Outcome outcome(call(adapter.get(), &agent));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, denied);
}

void TestNfcAdapterAsync::registrationNeedsAnAgentAndADaemon_data()
{
    addRegistrations();
}

void TestNfcAdapterAsync::registrationNeedsAnAgentAndADaemon()
{
    using Function = std::function<NfcPendingCall *(NfcAdapter *, NfcAgent *)>;
    QFETCH(Function, call);
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    NfcAgent agent;
    const Outcome withoutDaemon(call(adapter.get(), &agent));
    QTRY_COMPARE(withoutDaemon.times, 1);
    QCOMPARE(withoutDaemon.error, noService);
    bind();
    const Outcome withoutAgent(call(adapter.get(), nullptr));
    QTRY_COMPARE(withoutAgent.times, 1);
    QCOMPARE(withoutAgent.error, QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    QCOMPARE(daemon->members(), QStringList());
}

void TestNfcAdapterAsync::cancellationTellsItsOutcome()
{
    bind();
    const Outcome outcome(adapter->cancelHandoverRequestAsync(QStringLiteral("bluetooth")));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(daemon->calls(QStringLiteral("CancelHandoverRequest")).constFirst().arguments,
             QVariantList{QStringLiteral("bluetooth")});
}

void TestNfcAdapterAsync::failedCancellationIsNotLogged()
{
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    const Outcome withoutDaemon(adapter->cancelHandoverRequestAsync(QStringLiteral("bluetooth")));
    QTRY_COMPARE(withoutDaemon.times, 1);
    QCOMPARE(withoutDaemon.error, noService);
    bind();
    daemon->fail(QStringLiteral("CancelHandoverRequest"), denied, QStringLiteral("No"));
    const Outcome outcome(adapter->cancelHandoverRequestAsync(QStringLiteral("bluetooth")));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, denied);
}

void TestNfcAdapterAsync::deletedAdapterHearsNothing()
{
    bind();
    std::unique_ptr<NfcAdapter> other(NfcAdapter::defaultAdapterAsync());
    daemon->hold(QStringLiteral("GetProperties"));
    const Outcome outcome(other->isPoweredAsync());
    const Outcome own(adapter->isPoweredAsync());
    other.reset();
    QVERIFY(!outcome.call);
    daemon->release(QStringLiteral("GetProperties"));
    QTRY_COMPARE(own.times, 1);
    QCOMPARE(outcome.times, 0);
}

void TestNfcAdapterAsync::deletedCallGoesOn()
{
    bind();
    NfcAgent agent;
    daemon->fail(QStringLiteral("RegisterUIAgent"), denied, QStringLiteral("No"));
    delete adapter->registerAgentAsync(&agent);
    delete adapter->isPoweredAsync();
    QTest::ignoreMessage(QtWarningMsg,
                         "RegisterUIAgent returned error 'org.freedesktop.DBus.Error.AccessDenied': No");
    const Outcome outcome(adapter->cancelHandoverRequestAsync({}));
    QTRY_COMPARE(outcome.times, 1);
    const std::unique_ptr<NfcPendingCall> known(adapter->isPoweredAsync());
    QVERIFY(known->isFinished());
    QCOMPARE(known->value(), QVariant(true));
}

void TestNfcAdapterAsync::slotMayDeleteTheLastAdapter()
{
    bind();
    const QPointer<NfcPendingCall> call(adapter->isPoweredAsync());
    connect(call, &NfcPendingCall::finished, this, [this] { adapter.reset(); });
    QTRY_VERIFY(!adapter);
    QVERIFY(!call);
    QVERIFY(!NfcAdapterPrivate::instance);
}

QTEST_GUILESS_MAIN(TestNfcAdapterAsync)

#include "tst_nfcadapterasync.moc"
