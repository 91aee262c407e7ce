// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>
#include <optional>

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
    void onlyStateOnIsPowered_data();
    void onlyStateOnIsPowered();
    void missingStateIsOff();
    void failedGetPropertiesIsLoggedAndTriedAgain();
    void failedGetPropertiesKeepsWhatIsKnown();
    void successfulSetPoweredMakesTheCacheStale();
    void failedSetPoweredIsLoggedAndKeepsTheCache();
    void setPoweredWritesState_data();
    void setPoweredWritesState();
    void radioIsSwitchedBeforeTheDaemonIsAsked();
    void propertyChangedKeepsTheCacheCurrent();
    void propertyChangedBeforeTheFirstReadDoesNotReplaceIt();
    void otherPropertiesChangeSilently();
    void stateIsRecognizedInAnyCaseButReadInOne();
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
    void signalsOfOtherServicesAreIgnored();
    void cancelIsSentWithoutHandover();
    void cancelErrorIsIgnored();
    void cancelDoesNotWait();

private:
    std::unique_ptr<RadioState> radio;
};

void TestNfcAdapter::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    radio = std::make_unique<RadioState>(RadioState::NFC);
    // On, the radio would have every adapter start the daemon, and a daemon's quick end break it.
    radio->setEnabled(false);
    ConnectivitySettings(1).set(QStringLiteral("nfc_show_confirmations"), {});
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
    QCOMPARE(signatures,
             QStringList({QStringLiteral("propertyChanged property"), QStringLiteral("adapterInvalid "),
                          QStringLiteral("adapterValid "), QStringLiteral("handoverStarted "),
                          QStringLiteral("handoverCarrierSelected carrier"),
                          QStringLiteral("handoverCompleted carrier data"),
                          QStringLiteral("handoverFailed reason")}));
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
    QCOMPARE(daemon.members().constLast(), QStringLiteral("SetProperty"));
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
    adapter.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    adapter.cancelHandoverRequest(QStringLiteral("carrier"));
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
    const QList<FakeCall> calls = daemon.calls(QStringLiteral("GetProperties"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.constFirst().path, FakeDaemon::adapterPath());
    QCOMPARE(calls.constFirst().interface, QStringLiteral("com.tavix.nfc.Adapter"));
    QCOMPARE(calls.constFirst().signature, QString());
}

void TestNfcAdapter::onlyStateOnIsPowered_data()
{
    QTest::addColumn<QVariant>("state");
    QTest::addColumn<bool>("powered");
    QTest::newRow("on") << QVariant(QStringLiteral("on")) << true;
    QTest::newRow("off") << QVariant(QStringLiteral("off")) << false;
    QTest::newRow("capitals") << QVariant(QStringLiteral("On")) << false;
    QTest::newRow("empty") << QVariant(QString()) << false;
    QTest::newRow("boolean") << QVariant(true) << false;
    QTest::newRow("number") << QVariant(1) << false;
}

void TestNfcAdapter::onlyStateOnIsPowered()
{
    QFETCH(QVariant, state);
    QFETCH(bool, powered);
    FakeDaemon daemon;
    daemon.reply(QStringLiteral("GetProperties"), {QVariantMap{{QStringLiteral("State"), state}}});
    daemon.start();
    QCOMPARE(NfcAdapter().isPowered(), powered);
}

void TestNfcAdapter::missingStateIsOff()
{
    FakeDaemon daemon;
    daemon.reply(QStringLiteral("GetProperties"),
                 {QVariantMap{{QStringLiteral("Name"), QStringLiteral("adapter")}}});
    daemon.start();
    const NfcAdapter adapter;
    QVERIFY(!adapter.isPowered());
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
}

void TestNfcAdapter::failedGetPropertiesIsLoggedAndTriedAgain()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("GetProperties"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("später, 100%s"));
    daemon.start();
    const NfcAdapter adapter;
    const char warning[] = "GetProperties returned error 'com.tavix.nfc.Busy': später, 100%s";
    QTest::ignoreMessage(QtWarningMsg, warning);
    QVERIFY(!adapter.isPowered());
    QTest::ignoreMessage(QtWarningMsg, warning);
    QVERIFY(!adapter.isPowered());
    daemon.setState(QStringLiteral("on"));
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 3);
}

void TestNfcAdapter::failedGetPropertiesKeepsWhatIsKnown()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    adapter.setPowered(true);
    daemon.fail(QStringLiteral("GetProperties"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("later"));
    QTest::ignoreMessage(QtWarningMsg, "GetProperties returned error 'com.tavix.nfc.Busy': later");
    QVERIFY(adapter.isPowered());
}

void TestNfcAdapter::successfulSetPoweredMakesTheCacheStale()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    daemon.setState(QStringLiteral("off"));
    adapter.setPowered(false);
    QVERIFY(!adapter.isPowered());
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.members(), QStringList({QStringLiteral("DefaultAdapter"), QStringLiteral("GetProperties"),
                                            QStringLiteral("SetProperty"), QStringLiteral("GetProperties")}));
}

void TestNfcAdapter::failedSetPoweredIsLoggedAndKeepsTheCache()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("SetProperty"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("in use"));
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    QTest::ignoreMessage(QtWarningMsg, "SetProperty returned error 'com.tavix.nfc.Busy': in use");
    adapter.setPowered(false);
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
    QVERIFY(!radio->enabled());
}

void TestNfcAdapter::setPoweredWritesState_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("state");
    QTest::newRow("on") << true << QStringLiteral("on");
    QTest::newRow("off") << false << QStringLiteral("off");
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

    const QList<FakeCall> calls = daemon.calls(QStringLiteral("SetProperty"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.constFirst().path, FakeDaemon::adapterPath());
    QCOMPARE(calls.constFirst().interface, QStringLiteral("com.tavix.nfc.Adapter"));
    QCOMPARE(calls.constFirst().signature, QStringLiteral("sv"));
    QCOMPARE(calls.constFirst().arguments.value(0).toString(), QStringLiteral("State"));
    const QVariant value = calls.constFirst().arguments.value(1).value<QDBusVariant>().variant();
    QCOMPARE(value, QVariant(state));
}

namespace {

// Whether the radio was on when the daemon's refusal was logged.
std::optional<bool> radioAtTheRefusal;

void noteRadio(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (message == QLatin1String("SetProperty returned error 'com.tavix.nfc.Busy': in use"))
        radioAtTheRefusal = RadioState(RadioState::NFC).enabled();
}

} // namespace

void TestNfcAdapter::radioIsSwitchedBeforeTheDaemonIsAsked()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("SetProperty"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("in use"));
    daemon.start();
    NfcAdapter adapter;
    radioAtTheRefusal.reset();
    const QtMessageHandler former = qInstallMessageHandler(noteRadio);
    adapter.setPowered(true);
    qInstallMessageHandler(former);
    QCOMPARE(radioAtTheRefusal, std::optional<bool>(true));
}

void TestNfcAdapter::propertyChangedKeepsTheCacheCurrent()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    QSignalSpy firstSpy(&first, &NfcAdapter::propertyChanged);
    QSignalSpy secondSpy(&second, &NfcAdapter::propertyChanged);
    QVERIFY(!first.isPowered());

    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("on"));
    QTRY_COMPARE(firstSpy.count(), 1);
    QCOMPARE(secondSpy.count(), 1);
    QCOMPARE(firstSpy.constFirst(), QVariantList({QStringLiteral("powered")}));
    QCOMPARE(secondSpy.constFirst(), QVariantList({QStringLiteral("powered")}));
    QVERIFY(first.isPowered());
    QVERIFY(second.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
}

void TestNfcAdapter::propertyChangedBeforeTheFirstReadDoesNotReplaceIt()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("on"));
    QTRY_COMPARE(changed.count(), 1);
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
}

void TestNfcAdapter::otherPropertiesChangeSilently()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    QVERIFY(adapter.isPowered());
    daemon.emitPropertyChanged(QStringLiteral("Name"), QStringLiteral("off"));
    daemon.emitPropertyChanged(QStringLiteral("objectName"), QStringLiteral("off"));
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 0);
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
}

void TestNfcAdapter::stateIsRecognizedInAnyCaseButReadInOne()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    QVERIFY(adapter.isPowered());
    daemon.emitPropertyChanged(QStringLiteral("STATE"), QStringLiteral("off"));
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.constFirst(), QVariantList({QStringLiteral("powered")}));
    QVERIFY(adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
}

void TestNfcAdapter::propertyCalledPoweredIsAnnouncedToo()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    daemon.emitPropertyChanged(QStringLiteral("Powered"), false);
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.constFirst(), QVariantList({QStringLiteral("powered")}));
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
    daemon.fail(QStringLiteral("GetProperties"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("later"));
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
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
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
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.NoHardware"),
                QStringLiteral("none"));
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': none");
    NfcAdapter adapter;
    adapter.setPowered(true);
    QVERIFY(radio->enabled());
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
}

void TestNfcAdapter::confirmationIsOffByDefault()
{
    QVERIFY(!NfcAdapter().isConfirmationEnabled());
}

void TestNfcAdapter::confirmationIsStored()
{
    NfcAdapter adapter;
    adapter.setConfirmationEnabled(true);
    QCOMPARE(ConnectivitySettings(1).get(QStringLiteral("nfc_show_confirmations")), QVariant(true));
    QVERIFY(adapter.isConfirmationEnabled());
    QVERIFY(NfcAdapter().isConfirmationEnabled());
    adapter.setConfirmationEnabled(false);
    QCOMPARE(ConnectivitySettings(1).get(QStringLiteral("nfc_show_confirmations")), QVariant(false));
    QVERIFY(!adapter.isConfirmationEnabled());
}

void TestNfcAdapter::confirmationIsReadAnew()
{
    const NfcAdapter adapter;
    QVERIFY(!adapter.isConfirmationEnabled());
    ConnectivitySettings(1).set(QStringLiteral("nfc_show_confirmations"), true);
    QVERIFY(adapter.isConfirmationEnabled());
}

void TestNfcAdapter::confirmationThatIsNoBooleanIsOff_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("string") << QVariant(QStringLiteral("true"));
    QTest::newRow("number") << QVariant(1);
    QTest::newRow("real number") << QVariant(1.0);
    QTest::newRow("bytes") << QVariant(QByteArray("true"));
    QTest::newRow("list") << QVariant(QVariantList{true});
}

void TestNfcAdapter::confirmationThatIsNoBooleanIsOff()
{
    QFETCH(QVariant, stored);
    ConnectivitySettings(1).set(QStringLiteral("nfc_show_confirmations"), stored);
    QVERIFY(ConnectivitySettings(1).get(QStringLiteral("nfc_show_confirmations")).isValid());
    QVERIFY(!NfcAdapter().isConfirmationEnabled());
}

void TestNfcAdapter::agentIsRegisteredByItsPath_data()
{
    QTest::addColumn<QString>("member");
    QTest::newRow("register") << QStringLiteral("RegisterUIAgent");
    QTest::newRow("unregister") << QStringLiteral("UnregisterUIAgent");
}

void TestNfcAdapter::agentIsRegisteredByItsPath()
{
    QFETCH(QString, member);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    NfcAgent agent;
    daemon.clearCalls();
    if (member == QStringLiteral("RegisterUIAgent"))
        adapter.registerAgent(&agent);
    else
        adapter.unregisterAgent(&agent);
    QCOMPARE(daemon.members(), QStringList(member));
    const FakeCall call = daemon.calls().constFirst();
    QCOMPARE(call.path, FakeDaemon::adapterPath());
    QCOMPARE(call.interface, QStringLiteral("com.tavix.nfc.Adapter"));
    QCOMPARE(call.signature, QStringLiteral("o"));
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
    daemon.fail(member, QStringLiteral("com.tavix.nfc.AlreadyExists"), QStringLiteral("there is one, 100%s"));
    daemon.start();
    NfcAdapter adapter;
    NfcAgent agent;
    const QByteArray warning =
        member.toUtf8() + " returned error 'com.tavix.nfc.AlreadyExists': there is one, 100%s";
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    if (member == QStringLiteral("RegisterUIAgent"))
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
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
}

void TestNfcAdapter::handoverNamesTheRequestor()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    adapter.requestHandover(QStringLiteral("bluetooth é"), QString());
    QTRY_COMPARE(daemon.calls(QStringLiteral("RequestHandover")).size(), 1);
    const FakeCall call = daemon.calls().constLast();
    QCOMPARE(call.path, FakeDaemon::adapterPath());
    QCOMPARE(call.interface, QStringLiteral("com.tavix.nfc.Adapter"));
    QCOMPARE(call.signature, QStringLiteral("oss"));
    QCOMPARE(call.arguments.value(0).value<QDBusObjectPath>().path(),
             QStringLiteral("/com/tavix/nfcHandoverRequestor"));
    QCOMPARE(call.arguments.value(1).toString(), QStringLiteral("bluetooth é"));
    QCOMPARE(call.arguments.value(2).toString(), QString());
}

void TestNfcAdapter::handoverRequestDoesNotWait()
{
    FakeDaemon daemon;
    daemon.hold(QStringLiteral("RequestHandover"));
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy called(&daemon, &FakeService::called);
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    QVERIFY(called.wait());
    QCOMPARE(failed.count(), 0);
    daemon.fail(QStringLiteral("RequestHandover"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("busy"));
    daemon.release(QStringLiteral("RequestHandover"));
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
    adapter.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    // The watcher is gone when the reply has been dealt with.
    QCOMPARE(adapter.children().size(), 1);
    QTRY_COMPARE(adapter.children().size(), 0);
    QCOMPARE(started.count() + selected.count() + completed.count() + failed.count(), 0);
}

void TestNfcAdapter::refusedHandoverFailsOnceOnEveryAdapter()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("RequestHandover"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("radio busy"));
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    QSignalSpy firstSpy(&first, &NfcAdapter::handoverFailed);
    QSignalSpy secondSpy(&second, &NfcAdapter::handoverFailed);
    first.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    QTRY_COMPARE(first.children().size(), 0);
    const QVariantList reason{QStringLiteral("Unable to start handover: radio busy")};
    QCOMPARE(firstSpy.count(), 1);
    QCOMPARE(secondSpy.count(), 1);
    QCOMPARE(firstSpy.constFirst(), reason);
    QCOMPARE(secondSpy.constFirst(), reason);
}

void TestNfcAdapter::daemonDyingInHandoverFailsIt()
{
    FakeDaemon daemon;
    daemon.dieOn(QStringLiteral("RequestHandover"));
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    adapter.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    QTRY_COMPARE(failed.count(), 1);
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(failed.constFirst().constFirst().toString().startsWith(
        QStringLiteral("Unable to start handover: Message recipient ")));
}

void TestNfcAdapter::deletedRequesterIsNotToldOfRefusal()
{
    FakeDaemon daemon;
    daemon.hold(QStringLiteral("RequestHandover"));
    daemon.start();
    auto requester = std::make_unique<NfcAdapter>();
    NfcAdapter other;
    QSignalSpy called(&daemon, &FakeService::called);
    QSignalSpy failed(&other, &NfcAdapter::handoverFailed);
    requester->requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    QVERIFY(called.wait());
    requester.reset();
    daemon.fail(QStringLiteral("RequestHandover"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("busy"));
    daemon.release(QStringLiteral("RequestHandover"));
    daemon.emitAdapterSignal(QStringLiteral("HandoverFailed"), {QStringLiteral("later")});
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.constFirst(), QVariantList({QStringLiteral("later")}));
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
    first.requestHandover(QStringLiteral("bluetooth"), QStringLiteral("type"));
    QTRY_COMPARE(daemon.calls(QStringLiteral("RequestHandover")).size(), 1);

    daemon.emitAdapterSignal(QStringLiteral("HandoverStarted"));
    daemon.emitAdapterSignal(QStringLiteral("HandoverCarrierSelected"), {QStringLiteral("bluetooth")});
    daemon.emitAdapterSignal(
        QStringLiteral("HandoverCompleted"),
        {QStringLiteral("bluetooth"), QVariant::fromValue(QDBusVariant(QStringLiteral("data")))});
    daemon.emitAdapterSignal(QStringLiteral("HandoverFailed"), {QStringLiteral("out of reach")});
    QTRY_COMPARE(secondFailed.count(), 1);
    QCOMPARE(firstStarted.count(), 1);
    QCOMPARE(secondStarted.count(), 1);
    QCOMPARE(QList<QVariantList>(firstSelected), QList<QVariantList>({{QStringLiteral("bluetooth")}}));
    QCOMPARE(QList<QVariantList>(secondSelected), QList<QVariantList>({{QStringLiteral("bluetooth")}}));
    QCOMPARE(QList<QVariantList>(firstCompleted),
             QList<QVariantList>({{QStringLiteral("bluetooth"), QStringLiteral("data")}}));
    QCOMPARE(QList<QVariantList>(secondCompleted),
             QList<QVariantList>({{QStringLiteral("bluetooth"), QStringLiteral("data")}}));
    QCOMPARE(QList<QVariantList>(firstFailed), QList<QVariantList>({{QStringLiteral("out of reach")}}));
    QCOMPARE(QList<QVariantList>(secondFailed), QList<QVariantList>({{QStringLiteral("out of reach")}}));
}

void TestNfcAdapter::completedHandoverCarriesItsData()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy completed(&adapter, &NfcAdapter::handoverCompleted);
    const QVariantMap data{{QStringLiteral("key"), QStringLiteral("value")}};
    daemon.emitAdapterSignal(QStringLiteral("HandoverCompleted"),
                             {QStringLiteral("carrier"), QVariant::fromValue(QDBusVariant(data))});
    QTRY_COMPARE(completed.count(), 1);
    QCOMPARE(qdbus_cast<QVariantMap>(completed.constFirst().at(1).value<QVariant>()), data);
}

void TestNfcAdapter::signalsOfOtherServicesAreIgnored()
{
    FakeDaemon daemon;
    daemon.start();
    FakeService impostor(QDBusConnection::SystemBus, QStringLiteral("org.example.Impostor"));
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    impostor.emitSignal(FakeDaemon::adapterPath(), QStringLiteral("com.tavix.nfc.Adapter"),
                        QStringLiteral("HandoverFailed"), {QStringLiteral("false")});
    daemon.emitAdapterSignal(QStringLiteral("HandoverFailed"), {QStringLiteral("true")});
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.constFirst(), QVariantList({QStringLiteral("true")}));
}

void TestNfcAdapter::cancelIsSentWithoutHandover()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.cancelHandoverRequest(QStringLiteral("bluetooth"));
    QTRY_COMPARE(daemon.calls(QStringLiteral("CancelHandoverRequest")).size(), 1);
    const FakeCall call = daemon.calls().constLast();
    QCOMPARE(call.path, FakeDaemon::adapterPath());
    QCOMPARE(call.interface, QStringLiteral("com.tavix.nfc.Adapter"));
    QCOMPARE(call.signature, QStringLiteral("s"));
    QCOMPARE(call.arguments, QVariantList({QStringLiteral("bluetooth")}));
    QCOMPARE(failed.count(), 0);
}

void TestNfcAdapter::cancelErrorIsIgnored()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("CancelHandoverRequest"), QStringLiteral("com.tavix.nfc.NoHandover"),
                QStringLiteral("none"));
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    adapter.cancelHandoverRequest(QStringLiteral("bluetooth"));
    QTRY_COMPARE(daemon.calls(QStringLiteral("CancelHandoverRequest")).size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(failed.count(), 0);
}

void TestNfcAdapter::cancelDoesNotWait()
{
    FakeDaemon daemon;
    daemon.hold(QStringLiteral("CancelHandoverRequest"));
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy called(&daemon, &FakeService::called);
    adapter.cancelHandoverRequest(QStringLiteral("bluetooth"));
    QVERIFY(called.wait());
    QVERIFY(adapter.isPowered());
    QCOMPARE(called.count(), 1);
}

QTEST_GUILESS_MAIN(TestNfcAdapter)
#include "tst_nfcadapter.moc"
