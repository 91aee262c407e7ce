// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusArgument>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <ConnectivitySettings>
#include <NfcAdapter>
#include <NfcAgent>
#include <RadioState>

#include "busmonitor.h"
#include "fakedaemon.h"

using namespace Qt::Literals::StringLiterals;
using ConnUi::ConnectivitySettings;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::RadioState;

class TestNfcAdapter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void signalsKeepTheirOrderAndNames();
    void poweredIsAPropertyWithoutNotifier();
    void invalidAdapterSendsNothing();

    void isPoweredAsksOnce();
    void stateDecides_data();
    void stateDecides();
    void missingStateIsOff();
    void failedGetPropertiesIsLoggedAndTriedAgain();
    void failedGetPropertiesKeepsWhatIsKnown();
    void successfulSetPoweredMakesTheCacheStale();
    void failedSetPoweredIsLoggedAndKeepsTheCache();
    void setPoweredWritesState_data();
    void setPoweredWritesState();
    void propertyChangedKeepsTheCacheCurrent();
    void propertyChangedBeforeTheFirstReadDoesNotReplaceIt();
    void otherPropertiesChangeSilently();
    void stateIsRecognisedInAnyCaseButReadInOne();
    void propertyCalledPoweredIsAnnouncedToo();
    void departedDaemonIsForgotten();
    void switchingOnStartsTheDaemonOnly();
    void switchingOnWithoutDaemonIsLogged();
    void switchingOffWithoutDaemonSwitchesTheRadioOnly();
    void switchingUnboundAdapterSwitchesTheRadioOnly();

    void confirmationIsOffByDefault();
    void confirmationIsStored();
    void confirmationIsReadAnew();
    void confirmationThatIsNoBooleanIsOff_data();
    void confirmationThatIsNoBooleanIsOff();

    void agentIsRegisteredByItsPath_data();
    void agentIsRegisteredByItsPath();
    void failedRegistrationIsLogged_data();
    void failedRegistrationIsLogged();
    void nullAgentIsSkipped();
    void registrationIsNotRepeatedForANewDaemon();

    void handoverNamesTheRequestor();
    void handoverRequestDoesNotWait();
    void acceptedHandoverEmitsNothing();
    void refusedHandoverFailsOnceOnEveryAdapter();
    void daemonDyingInHandoverFailsIt();
    void deletedRequesterIsNotToldOfRefusal();
    void progressReachesEveryAdapter();
    void completedHandoverCarriesItsData();
    void onlyTheDaemonIsHeard();
    void cancelIsSentWithoutHandover();
    void cancelErrorIsIgnored();
    void cancelDoesNotWait();

private:
    std::unique_ptr<RadioState> radio;
};

void TestNfcAdapter::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    radio = std::make_unique<RadioState>(RadioState::NFC);
    // On, the radio would have every adapter start the daemon, and a daemon's quick end break it.
    radio->setEnabled(false);
    ConnectivitySettings(1).set(u"nfc_show_confirmations"_s, {});
}

void TestNfcAdapter::signalsKeepTheirOrderAndNames()
{
    const QMetaObject &meta = NfcAdapter::staticMetaObject;
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == QMetaMethod::Signal)
            signatures.append(QString::fromLatin1(method.name() + ' ' + method.parameterNames().join(' ')));
    }
    QCOMPARE(signatures, QStringList({u"propertyChanged property"_s, u"adapterInvalid "_s, u"adapterValid "_s,
                                      u"handoverStarted "_s, u"handoverCarrierSelected carrier"_s,
                                      u"handoverCompleted carrier data"_s, u"handoverFailed reason"_s}));
}

void TestNfcAdapter::poweredIsAPropertyWithoutNotifier()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    const QMetaObject *meta = adapter.metaObject();
    QVERIFY(!meta->property(meta->indexOfProperty("powered")).hasNotifySignal());
    QVERIFY(adapter.property("powered").toBool());
    QVERIFY(adapter.setProperty("powered", false));
    QCOMPARE(daemon.members().constLast(), u"SetProperty"_s);
}

void TestNfcAdapter::invalidAdapterSendsNothing()
{
    NfcAdapter adapter;
    NfcAgent agent;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    BusMonitor monitor;
    QVERIFY(!adapter.isPowered());
    adapter.registerAgent(&agent);
    adapter.unregisterAgent(&agent);
    adapter.requestHandover(u"carrier"_s, u"type"_s);
    adapter.cancelHandoverRequest(u"carrier"_s);
    QCoreApplication::processEvents();
    QCOMPARE(monitor.takeCalls(), QStringList());
    QCOMPARE(failed.count(), 0);
}

void TestNfcAdapter::isPoweredAsksOnce()
{
    FakeDaemon daemon;
    daemon.start();
    const NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    QVERIFY(adapter.isPowered());
    const QList<FakeCall> calls = daemon.calls(u"GetProperties"_s);
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.constFirst().path, FakeDaemon::adapterPath());
    QCOMPARE(calls.constFirst().interface, u"com.tavix.nfc.Adapter"_s);
    QCOMPARE(calls.constFirst().signature, QString());
}

void TestNfcAdapter::stateDecides_data()
{
    QTest::addColumn<QVariant>("state");
    QTest::addColumn<bool>("powered");
    QTest::newRow("on") << QVariant(u"on"_s) << true;
    QTest::newRow("off") << QVariant(u"off"_s) << false;
    QTest::newRow("capitals") << QVariant(u"On"_s) << false;
    QTest::newRow("empty") << QVariant(QString()) << false;
    QTest::newRow("boolean") << QVariant(true) << false;
    QTest::newRow("number") << QVariant(1) << false;
}

void TestNfcAdapter::stateDecides()
{
    QFETCH(QVariant, state);
    QFETCH(bool, powered);
    FakeDaemon daemon;
    daemon.reply(u"GetProperties"_s, {QVariantMap{{u"State"_s, state}}});
    daemon.start();
    QCOMPARE(NfcAdapter().isPowered(), powered);
}

void TestNfcAdapter::missingStateIsOff()
{
    FakeDaemon daemon;
    daemon.reply(u"GetProperties"_s, {QVariantMap{{u"Name"_s, u"adapter"_s}}});
    daemon.start();
    const NfcAdapter adapter;
    QVERIFY(!adapter.isPowered());
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 1);
}

void TestNfcAdapter::failedGetPropertiesIsLoggedAndTriedAgain()
{
    FakeDaemon daemon;
    daemon.fail(u"GetProperties"_s, u"com.tavix.nfc.Busy"_s, u"später, 100%s"_s);
    daemon.start();
    const NfcAdapter adapter;
    const char warning[] = "GetProperties returned error 'com.tavix.nfc.Busy': später, 100%s";
    QTest::ignoreMessage(QtWarningMsg, warning);
    QVERIFY(!adapter.isPowered());
    QTest::ignoreMessage(QtWarningMsg, warning);
    QVERIFY(!adapter.isPowered());
    daemon.setState(u"on"_s);
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 3);
}

void TestNfcAdapter::failedGetPropertiesKeepsWhatIsKnown()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    adapter.setPowered(true);
    daemon.fail(u"GetProperties"_s, u"com.tavix.nfc.Busy"_s, u"later"_s);
    QTest::ignoreMessage(QtWarningMsg, "GetProperties returned error 'com.tavix.nfc.Busy': later");
    QVERIFY(adapter.isPowered());
}

void TestNfcAdapter::successfulSetPoweredMakesTheCacheStale()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    daemon.setState(u"off"_s);
    adapter.setPowered(false);
    QVERIFY(!adapter.isPowered());
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.members(),
             QStringList({u"DefaultAdapter"_s, u"GetProperties"_s, u"SetProperty"_s, u"GetProperties"_s}));
}

void TestNfcAdapter::failedSetPoweredIsLoggedAndKeepsTheCache()
{
    FakeDaemon daemon;
    daemon.fail(u"SetProperty"_s, u"com.tavix.nfc.Busy"_s, u"in use"_s);
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    QTest::ignoreMessage(QtWarningMsg, "SetProperty returned error 'com.tavix.nfc.Busy': in use");
    adapter.setPowered(false);
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 1);
    QVERIFY(!radio->enabled());
}

void TestNfcAdapter::setPoweredWritesState_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("state");
    QTest::newRow("on") << true << u"on"_s;
    QTest::newRow("off") << false << u"off"_s;
}

void TestNfcAdapter::setPoweredWritesState()
{
    QFETCH(bool, on);
    QFETCH(QString, state);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    radio->setEnabled(!on);
    adapter.setPowered(on);
    QCOMPARE(radio->enabled(), on);

    const QList<FakeCall> calls = daemon.calls(u"SetProperty"_s);
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.constFirst().path, FakeDaemon::adapterPath());
    QCOMPARE(calls.constFirst().interface, u"com.tavix.nfc.Adapter"_s);
    QCOMPARE(calls.constFirst().signature, u"sv"_s);
    QCOMPARE(calls.constFirst().arguments.value(0).toString(), u"State"_s);
    const QVariant value = calls.constFirst().arguments.value(1).value<QDBusVariant>().variant();
    QCOMPARE(value, QVariant(state));
}

void TestNfcAdapter::propertyChangedKeepsTheCacheCurrent()
{
    FakeDaemon daemon;
    daemon.setState(u"off"_s);
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    QSignalSpy firstSpy(&first, &NfcAdapter::propertyChanged);
    QSignalSpy secondSpy(&second, &NfcAdapter::propertyChanged);
    QVERIFY(!first.isPowered());

    daemon.emitPropertyChanged(u"State"_s, u"on"_s);
    QTRY_COMPARE(firstSpy.count(), 1);
    QCOMPARE(secondSpy.count(), 1);
    QCOMPARE(firstSpy.constFirst(), QVariantList({u"powered"_s}));
    QCOMPARE(secondSpy.constFirst(), QVariantList({u"powered"_s}));
    QVERIFY(first.isPowered());
    QVERIFY(second.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 1);
}

void TestNfcAdapter::propertyChangedBeforeTheFirstReadDoesNotReplaceIt()
{
    FakeDaemon daemon;
    daemon.setState(u"off"_s);
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    daemon.emitPropertyChanged(u"State"_s, u"on"_s);
    QTRY_COMPARE(changed.count(), 1);
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 1);
}

void TestNfcAdapter::otherPropertiesChangeSilently()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    QVERIFY(adapter.isPowered());
    daemon.emitPropertyChanged(u"Name"_s, u"off"_s);
    daemon.emitPropertyChanged(u"objectName"_s, u"off"_s);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 0);
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 1);
}

void TestNfcAdapter::stateIsRecognisedInAnyCaseButReadInOne()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    QVERIFY(adapter.isPowered());
    daemon.emitPropertyChanged(u"STATE"_s, u"off"_s);
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.constFirst(), QVariantList({u"powered"_s}));
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(u"GetProperties"_s).size(), 1);
}

void TestNfcAdapter::propertyCalledPoweredIsAnnouncedToo()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    daemon.emitPropertyChanged(u"Powered"_s, false);
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.constFirst(), QVariantList({u"powered"_s}));
    QVERIFY(adapter.isPowered());
}

void TestNfcAdapter::departedDaemonIsForgotten()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    QVERIFY(adapter.isPowered());
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(!adapter.isPowered());

    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    daemon.fail(u"GetProperties"_s, u"com.tavix.nfc.Busy"_s, u"later"_s);
    QTest::ignoreMessage(QtWarningMsg, "GetProperties returned error 'com.tavix.nfc.Busy': later");
    QVERIFY(!adapter.isPowered());
}

void TestNfcAdapter::switchingOnStartsTheDaemonOnly()
{
    FakeDaemon daemon;
    daemon.makeActivatable();
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    adapter.setPowered(true);
    QVERIFY(daemon.isOnBus());
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(!radio->enabled());
    QCOMPARE(daemon.members(), QStringList(u"DefaultAdapter"_s));
}

void TestNfcAdapter::switchingOnWithoutDaemonIsLogged()
{
    NfcAdapter adapter;
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    adapter.setPowered(true);
    QVERIFY(!radio->enabled());
}

void TestNfcAdapter::switchingOffWithoutDaemonSwitchesTheRadioOnly()
{
    NfcAdapter adapter;
    radio->setEnabled(true);
    BusMonitor monitor;
    adapter.setPowered(false);
    QVERIFY(!radio->enabled());
    QCOMPARE(monitor.takeCalls(), QStringList());
}

void TestNfcAdapter::switchingUnboundAdapterSwitchesTheRadioOnly()
{
    FakeDaemon daemon;
    daemon.fail(u"DefaultAdapter"_s, u"com.tavix.nfc.NoHardware"_s, u"none"_s);
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': none");
    NfcAdapter adapter;
    adapter.setPowered(true);
    QVERIFY(radio->enabled());
    QCOMPARE(daemon.members(), QStringList(u"DefaultAdapter"_s));
}

void TestNfcAdapter::confirmationIsOffByDefault()
{
    QVERIFY(!NfcAdapter().isConfirmationEnabled());
}

void TestNfcAdapter::confirmationIsStored()
{
    NfcAdapter adapter;
    adapter.setConfirmationEnabled(true);
    QCOMPARE(ConnectivitySettings(1).get(u"nfc_show_confirmations"_s), QVariant(true));
    QVERIFY(adapter.isConfirmationEnabled());
    QVERIFY(NfcAdapter().isConfirmationEnabled());
    adapter.setConfirmationEnabled(false);
    QCOMPARE(ConnectivitySettings(1).get(u"nfc_show_confirmations"_s), QVariant(false));
    QVERIFY(!adapter.isConfirmationEnabled());
}

void TestNfcAdapter::confirmationIsReadAnew()
{
    const NfcAdapter adapter;
    QVERIFY(!adapter.isConfirmationEnabled());
    ConnectivitySettings(1).set(u"nfc_show_confirmations"_s, true);
    QVERIFY(adapter.isConfirmationEnabled());
}

void TestNfcAdapter::confirmationThatIsNoBooleanIsOff_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("string") << QVariant(u"true"_s);
    QTest::newRow("number") << QVariant(1);
    QTest::newRow("real number") << QVariant(1.0);
    QTest::newRow("bytes") << QVariant(QByteArray("true"));
    QTest::newRow("list") << QVariant(QVariantList{true});
}

void TestNfcAdapter::confirmationThatIsNoBooleanIsOff()
{
    QFETCH(QVariant, stored);
    ConnectivitySettings(1).set(u"nfc_show_confirmations"_s, stored);
    QVERIFY(ConnectivitySettings(1).get(u"nfc_show_confirmations"_s).isValid());
    QVERIFY(!NfcAdapter().isConfirmationEnabled());
}

void TestNfcAdapter::agentIsRegisteredByItsPath_data()
{
    QTest::addColumn<QString>("member");
    QTest::newRow("register") << u"RegisterUIAgent"_s;
    QTest::newRow("unregister") << u"UnregisterUIAgent"_s;
}

void TestNfcAdapter::agentIsRegisteredByItsPath()
{
    QFETCH(QString, member);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    NfcAgent agent;
    daemon.clearCalls();
    if (member == u"RegisterUIAgent"_s)
        adapter.registerAgent(&agent);
    else
        adapter.unregisterAgent(&agent);
    QCOMPARE(daemon.members(), QStringList(member));
    const FakeCall call = daemon.calls().constFirst();
    QCOMPARE(call.path, FakeDaemon::adapterPath());
    QCOMPARE(call.interface, u"com.tavix.nfc.Adapter"_s);
    QCOMPARE(call.signature, u"o"_s);
    QCOMPARE(call.arguments.value(0).value<QDBusObjectPath>().path(), agent.path());
}

void TestNfcAdapter::failedRegistrationIsLogged_data()
{
    agentIsRegisteredByItsPath_data();
}

void TestNfcAdapter::failedRegistrationIsLogged()
{
    QFETCH(QString, member);
    FakeDaemon daemon;
    daemon.fail(member, u"com.tavix.nfc.AlreadyExists"_s, u"there is one, 100%s"_s);
    daemon.start();
    NfcAdapter adapter;
    NfcAgent agent;
    const QByteArray warning =
        member.toUtf8() + " returned error 'com.tavix.nfc.AlreadyExists': there is one, 100%s";
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    if (member == u"RegisterUIAgent"_s)
        adapter.registerAgent(&agent);
    else
        adapter.unregisterAgent(&agent);
    QCoreApplication::processEvents();
    QCOMPARE(daemon.calls(member).size(), 1);
}

void TestNfcAdapter::nullAgentIsSkipped()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    daemon.clearCalls();
    adapter.registerAgent(nullptr);
    adapter.unregisterAgent(nullptr);
    QCOMPARE(daemon.members(), QStringList());
}

void TestNfcAdapter::registrationIsNotRepeatedForANewDaemon()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    NfcAgent agent;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    adapter.registerAgent(&agent);
    daemon.kill();
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    QCOMPARE(daemon.members(), QStringList(u"DefaultAdapter"_s));
}

void TestNfcAdapter::handoverNamesTheRequestor()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    adapter.requestHandover(u"bluetooth é"_s, QString());
    QTRY_COMPARE(daemon.calls(u"RequestHandover"_s).size(), 1);
    const FakeCall call = daemon.calls().constLast();
    QCOMPARE(call.path, FakeDaemon::adapterPath());
    QCOMPARE(call.interface, u"com.tavix.nfc.Adapter"_s);
    QCOMPARE(call.signature, u"oss"_s);
    QCOMPARE(call.arguments.value(0).value<QDBusObjectPath>().path(), u"/com/tavix/nfcHandoverRequestor"_s);
    QCOMPARE(call.arguments.value(1).toString(), u"bluetooth é"_s);
    QCOMPARE(call.arguments.value(2).toString(), QString());
}

void TestNfcAdapter::handoverRequestDoesNotWait()
{
    FakeDaemon daemon;
    daemon.hold(u"RequestHandover"_s);
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy called(&daemon, &FakeService::called);
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.requestHandover(u"carrier"_s, u"type"_s);
    QVERIFY(called.wait());
    QCOMPARE(failed.count(), 0);
    daemon.fail(u"RequestHandover"_s, u"com.tavix.nfc.Busy"_s, u"busy"_s);
    daemon.release(u"RequestHandover"_s);
    QTRY_COMPARE(failed.count(), 1);
}

void TestNfcAdapter::acceptedHandoverEmitsNothing()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy started(&adapter, &NfcAdapter::handoverStarted);
    QSignalSpy selected(&adapter, &NfcAdapter::handoverCarrierSelected);
    QSignalSpy completed(&adapter, &NfcAdapter::handoverCompleted);
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.requestHandover(u"carrier"_s, u"type"_s);
    // The watcher is gone when the reply has been dealt with.
    QCOMPARE(adapter.children().size(), 1);
    QTRY_COMPARE(adapter.children().size(), 0);
    QCOMPARE(started.count() + selected.count() + completed.count() + failed.count(), 0);
}

void TestNfcAdapter::refusedHandoverFailsOnceOnEveryAdapter()
{
    FakeDaemon daemon;
    daemon.fail(u"RequestHandover"_s, u"com.tavix.nfc.Busy"_s, u"radio busy"_s);
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    QSignalSpy firstSpy(&first, &NfcAdapter::handoverFailed);
    QSignalSpy secondSpy(&second, &NfcAdapter::handoverFailed);
    first.requestHandover(u"carrier"_s, u"type"_s);
    QTRY_COMPARE(first.children().size(), 0);
    const QVariantList reason{u"Unable to start handover: radio busy"_s};
    QCOMPARE(firstSpy.count(), 1);
    QCOMPARE(secondSpy.count(), 1);
    QCOMPARE(firstSpy.constFirst(), reason);
    QCOMPARE(secondSpy.constFirst(), reason);
}

void TestNfcAdapter::daemonDyingInHandoverFailsIt()
{
    FakeDaemon daemon;
    daemon.dieOn(u"RequestHandover"_s);
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    adapter.requestHandover(u"carrier"_s, u"type"_s);
    QTRY_COMPARE(failed.count(), 1);
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(failed.constFirst().constFirst().toString().startsWith(
        u"Unable to start handover: Message recipient "_s));
}

void TestNfcAdapter::deletedRequesterIsNotToldOfRefusal()
{
    FakeDaemon daemon;
    daemon.hold(u"RequestHandover"_s);
    daemon.start();
    auto requester = std::make_unique<NfcAdapter>();
    NfcAdapter other;
    QSignalSpy called(&daemon, &FakeService::called);
    QSignalSpy failed(&other, &NfcAdapter::handoverFailed);
    requester->requestHandover(u"carrier"_s, u"type"_s);
    QVERIFY(called.wait());
    requester.reset();
    daemon.fail(u"RequestHandover"_s, u"com.tavix.nfc.Busy"_s, u"busy"_s);
    daemon.release(u"RequestHandover"_s);
    daemon.emitAdapterSignal(u"HandoverFailed"_s, {u"later"_s});
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.constFirst(), QVariantList({u"later"_s}));
}

void TestNfcAdapter::progressReachesEveryAdapter()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    QSignalSpy firstStarted(&first, &NfcAdapter::handoverStarted);
    QSignalSpy secondStarted(&second, &NfcAdapter::handoverStarted);
    QSignalSpy firstSelected(&first, &NfcAdapter::handoverCarrierSelected);
    QSignalSpy secondSelected(&second, &NfcAdapter::handoverCarrierSelected);
    QSignalSpy firstCompleted(&first, &NfcAdapter::handoverCompleted);
    QSignalSpy secondCompleted(&second, &NfcAdapter::handoverCompleted);
    QSignalSpy firstFailed(&first, &NfcAdapter::handoverFailed);
    QSignalSpy secondFailed(&second, &NfcAdapter::handoverFailed);
    first.requestHandover(u"bluetooth"_s, u"type"_s);
    QTRY_COMPARE(daemon.calls(u"RequestHandover"_s).size(), 1);

    daemon.emitAdapterSignal(u"HandoverStarted"_s);
    daemon.emitAdapterSignal(u"HandoverCarrierSelected"_s, {u"bluetooth"_s});
    daemon.emitAdapterSignal(u"HandoverCompleted"_s,
                             {u"bluetooth"_s, QVariant::fromValue(QDBusVariant(u"data"_s))});
    daemon.emitAdapterSignal(u"HandoverFailed"_s, {u"out of reach"_s});
    QTRY_COMPARE(secondFailed.count(), 1);
    QCOMPARE(firstStarted.count(), 1);
    QCOMPARE(secondStarted.count(), 1);
    QCOMPARE(QList<QVariantList>(firstSelected), QList<QVariantList>({{u"bluetooth"_s}}));
    QCOMPARE(QList<QVariantList>(secondSelected), QList<QVariantList>({{u"bluetooth"_s}}));
    QCOMPARE(QList<QVariantList>(firstCompleted), QList<QVariantList>({{u"bluetooth"_s, u"data"_s}}));
    QCOMPARE(QList<QVariantList>(secondCompleted), QList<QVariantList>({{u"bluetooth"_s, u"data"_s}}));
    QCOMPARE(QList<QVariantList>(firstFailed), QList<QVariantList>({{u"out of reach"_s}}));
    QCOMPARE(QList<QVariantList>(secondFailed), QList<QVariantList>({{u"out of reach"_s}}));
}

void TestNfcAdapter::completedHandoverCarriesItsData()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy completed(&adapter, &NfcAdapter::handoverCompleted);
    const QVariantMap data{{u"key"_s, u"value"_s}};
    daemon.emitAdapterSignal(u"HandoverCompleted"_s, {u"carrier"_s, QVariant::fromValue(QDBusVariant(data))});
    QTRY_COMPARE(completed.count(), 1);
    QCOMPARE(qdbus_cast<QVariantMap>(completed.constFirst().at(1).value<QVariant>()), data);
}

void TestNfcAdapter::onlyTheDaemonIsHeard()
{
    FakeDaemon daemon;
    daemon.start();
    FakeService impostor(QDBusConnection::SystemBus, u"org.example.Impostor"_s);
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    impostor.emitSignal(FakeDaemon::adapterPath(), u"com.tavix.nfc.Adapter"_s, u"HandoverFailed"_s,
                        {u"false"_s});
    daemon.emitAdapterSignal(u"HandoverFailed"_s, {u"true"_s});
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.constFirst(), QVariantList({u"true"_s}));
}

void TestNfcAdapter::cancelIsSentWithoutHandover()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.cancelHandoverRequest(u"bluetooth"_s);
    QTRY_COMPARE(daemon.calls(u"CancelHandoverRequest"_s).size(), 1);
    const FakeCall call = daemon.calls().constLast();
    QCOMPARE(call.path, FakeDaemon::adapterPath());
    QCOMPARE(call.interface, u"com.tavix.nfc.Adapter"_s);
    QCOMPARE(call.signature, u"s"_s);
    QCOMPARE(call.arguments, QVariantList({u"bluetooth"_s}));
    QCOMPARE(failed.count(), 0);
}

void TestNfcAdapter::cancelErrorIsIgnored()
{
    FakeDaemon daemon;
    daemon.fail(u"CancelHandoverRequest"_s, u"com.tavix.nfc.NoHandover"_s, u"none"_s);
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.cancelHandoverRequest(u"bluetooth"_s);
    QTRY_COMPARE(daemon.calls(u"CancelHandoverRequest"_s).size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(failed.count(), 0);
}

void TestNfcAdapter::cancelDoesNotWait()
{
    FakeDaemon daemon;
    daemon.hold(u"CancelHandoverRequest"_s);
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy called(&daemon, &FakeService::called);
    adapter.cancelHandoverRequest(u"bluetooth"_s);
    QVERIFY(called.wait());
    QVERIFY(adapter.isPowered());
    QCOMPARE(called.count(), 1);
}

QTEST_GUILESS_MAIN(TestNfcAdapter)
#include "tst_nfcadapter.moc"
