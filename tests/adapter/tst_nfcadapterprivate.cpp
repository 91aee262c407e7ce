// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <memory>
#include <utility>

#include <QDBusConnectionInterface>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <RadioState>

#include "adapter/nfcadapter_p.h"
#include "busmonitor.h"
#include "fakedaemon.h"
#include "nfcadapter.h"

using namespace std::chrono_literals;
using ConnUi::NfcAdapter;
using ConnUi::NfcAdapterPrivate;
using ConnUi::RadioState;

using AdapterPointer = std::unique_ptr<NfcAdapter>;

// Collects warnings, in their order, instead of the test's own handler.
class WarningLog
{
public:
    WarningLog() : former(qInstallMessageHandler(append)) { messages.clear(); }
    ~WarningLog() { qInstallMessageHandler(former); }
    Q_DISABLE_COPY_MOVE(WarningLog)

    inline static QStringList messages;

private:
    static void append(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        messages.append(message);
    }

    const QtMessageHandler former;
};

class TestNfcAdapterPrivate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void adaptersShareOneBinding();
    void adaptersAreListedInTheOrderOfCreation();

    void bindsToRunningDaemon();
    void bindingMakesNoIntrospectCall();
    void bindsWhenDaemonRegisters();
    void startsDaemonWhenRadioIsOn();
    void startsNoDaemonWhenRadioIsOff();
    void startsNoDaemonThatIsThere();
    void bindingWaitsForTheBusThreeTimes();
    void failedStartIsLogged();
    void unknownServiceIsLogged();
    void defaultAdapterErrorLeavesUnbound();
    void defaultAdapterOfAnotherTypeLeavesUnbound();
    void daemonDyingInDefaultAdapterLeavesUnbound();
    void daemonGoneBeforeItIsAskedLeavesUnbound();
    void daemonGoneAfterItsAnswerLeavesInvalidProxy();
    void invalidProxyIsReplacedWhenDaemonRegisters();
    void unregistrationIsAlwaysAnnounced();
    void restartedDaemonIsBoundAnew();
    void replacedDaemonIsBoundAnew();
    void replacedDaemonHasNotDied();
    void lastAdapterMayBeDeletedWhenTheDaemonIsReplaced();
    void signalsOfFormerAdapterPathAreNotHeard();
    void signalsOfAPathWithoutProxyAreNotHeard();
    void deletedBindingLeavesItsProxy();
    void unboundAdapterIsOffWhateverIsCached();
    void takenRequestorPathIsLogged();

    void daemonIsBrokenWhenItLivesLessThanThreeSeconds_data();
    void daemonIsBrokenWhenItLivesLessThanThreeSeconds();
    void daemonThatDiesWhileTheRadioIsOffIsNotBroken();
    void daemonNeverSeenComingUpIsNotBroken();
    void lifeIsMeasuredFromTheLastRegistration();
    void clockIsMonotonic();
    void daemonThatDiesAtOnceIsBroken();
    void daemonThatCannotBeBoundIsBrokenToo();
    void brokenBindingWaitsForTheNextRegistration();
    void brokenBindingStartsNoDaemon();
    void failedBindKeepsTheBrokenMark();
    void brokenMarkOutlivesTheBinding();
    void brokenDaemonIsMarkedBeforeItsEndIsAnnounced();
    void bindIsAnnouncedBeforeTheBrokenMarkGoes();
    void stopIsLoggedBeforeTheMark();

    void listenersHearInTheOrderOfCreation_data();
    void listenersHearInTheOrderOfCreation();
    void adapterDeletedInSlotHearsNothingMore_data();
    void adapterDeletedInSlotHearsNothingMore();
    void adapterDeletesItselfInSlot_data();
    void adapterDeletesItselfInSlot();
    void lastAdapterDeletedInSlotEndsTheBinding_data();
    void lastAdapterDeletedInSlotEndsTheBinding();
    void adapterCreatedInSlotHearsNothingOfIt_data();
    void adapterCreatedInSlotHearsNothingOfIt();
    void bindingIsReplacedInSlot();
    void requesterMayBeDeletedInHandoverFailed();

private:
    void sawBroken(int life);
    void eachSignal();
    // Makes the daemon cause the signal that the current row names.
    void cause(FakeDaemon &daemon);

    static NfcAdapterPrivate::Clock::time_point currentTime;
    std::unique_ptr<RadioState> radio;
};

NfcAdapterPrivate::Clock::time_point TestNfcAdapterPrivate::currentTime;

void TestNfcAdapterPrivate::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    NfcAdapterPrivate::adapterBroken = false;
    // Time stands still until a test moves it.
    currentTime = {};
    NfcAdapterPrivate::now = [] { return currentTime; };
    radio = std::make_unique<RadioState>(RadioState::NFC);
    radio->setEnabled(false);
}

void TestNfcAdapterPrivate::cleanup()
{
    QCOMPARE(NfcAdapterPrivate::adapters, QList<NfcAdapter *>());
    QVERIFY(!NfcAdapterPrivate::instance);
}

void TestNfcAdapterPrivate::sawBroken(int life)
{
    const QByteArray stopped = "NfcAdapterPrivate: nfcd stopped " + QByteArray::number(life) +
                               " msec after launch when adapter is powered";
    QTest::ignoreMessage(QtWarningMsg, stopped.constData());
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapterPrivate: marking adapter as broken");
}

void TestNfcAdapterPrivate::adaptersShareOneBinding()
{
    FakeDaemon daemon;
    daemon.start();
    AdapterPointer first(NfcAdapter::defaultAdapter());
    const QPointer<NfcAdapterPrivate> binding = NfcAdapterPrivate::instance;
    AdapterPointer second(NfcAdapter::defaultAdapter());
    QVERIFY(first != second);
    QVERIFY(!first->parent());
    QVERIFY(!second->parent());
    QVERIFY(binding);
    QCOMPARE(NfcAdapterPrivate::instance, binding.data());
    QCOMPARE(daemon.calls(QStringLiteral("DefaultAdapter")).size(), 1);

    first.reset();
    QCOMPARE(NfcAdapterPrivate::instance, binding.data());
    QVERIFY(second->isValid());

    second.reset();
    QVERIFY(!binding);
    QVERIFY(!NfcAdapterPrivate::instance);

    const AdapterPointer third(NfcAdapter::defaultAdapter());
    QVERIFY(NfcAdapterPrivate::instance);
    QVERIFY(third->isValid());
    QCOMPARE(daemon.calls(QStringLiteral("DefaultAdapter")).size(), 2);
}

void TestNfcAdapterPrivate::adaptersAreListedInTheOrderOfCreation()
{
    QObject parent;
    auto *first = new NfcAdapter(&parent);
    NfcAdapter second;
    auto *third = new NfcAdapter(&parent);
    QCOMPARE(NfcAdapterPrivate::adapters, QList<NfcAdapter *>({first, &second, third}));
    delete first;
    QCOMPARE(NfcAdapterPrivate::adapters, QList<NfcAdapter *>({&second, third}));
}

void TestNfcAdapterPrivate::bindsToRunningDaemon()
{
    FakeDaemon daemon;
    daemon.start();
    const NfcAdapter adapter;
    QVERIFY(adapter.isValid());

    const FakeCall call = daemon.calls().value(0);
    QCOMPARE(call.path, QStringLiteral("/"));
    QCOMPARE(call.interface, QStringLiteral("com.tavix.nfc.Manager"));
    QCOMPARE(call.member, QStringLiteral("DefaultAdapter"));
    QCOMPARE(call.signature, QString());
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
}

void TestNfcAdapterPrivate::bindingMakesNoIntrospectCall()
{
    FakeDaemon daemon;
    daemon.start();
    BusMonitor monitor;
    NfcAdapter adapter;
    QVERIFY(adapter.isValid());
    QStringList calls = monitor.takeCalls();
    QVERIFY2(calls.filter(QStringLiteral("Introspect")).isEmpty(), qPrintable(calls.join(u'\n')));
    QCOMPARE(calls.filter(QStringLiteral("com.tavix")),
             QStringList(QStringLiteral("com.tavix.nfc.Manager.DefaultAdapter")));

    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    daemon.stop();
    QCoreApplication::processEvents();
    monitor.takeCalls();
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    calls = monitor.takeCalls();
    QVERIFY2(calls.filter(QStringLiteral("Introspect")).isEmpty(), qPrintable(calls.join(u'\n')));
    QCOMPARE(calls.filter(QStringLiteral("com.tavix")),
             QStringList(QStringLiteral("com.tavix.nfc.Manager.DefaultAdapter")));
}

void TestNfcAdapterPrivate::bindsWhenDaemonRegisters()
{
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QVERIFY(!adapter.isValid());
    FakeDaemon daemon;
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(adapter.isValid());
}

void TestNfcAdapterPrivate::startsDaemonWhenRadioIsOn()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.makeActivatable();
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QVERIFY(daemon.isOnBus());
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(adapter.isValid());
}

void TestNfcAdapterPrivate::startsNoDaemonWhenRadioIsOff()
{
    FakeDaemon daemon;
    daemon.makeActivatable();
    QDBusConnection::systemBus();
    BusMonitor monitor;
    const NfcAdapter adapter;
    QVERIFY(!monitor.takeCalls().contains(QStringLiteral("org.freedesktop.DBus.StartServiceByName")));
    QVERIFY(!daemon.isOnBus());
    QVERIFY(!adapter.isValid());
}

void TestNfcAdapterPrivate::startsNoDaemonThatIsThere()
{
    FakeDaemon daemon;
    daemon.start();
    const NfcAdapter adapter;
    BusMonitor monitor;
    NfcAdapterPrivate::instance->startNfcService();
    QCOMPARE(monitor.takeCalls(), QStringList(QStringLiteral("org.freedesktop.DBus.NameHasOwner")));
}

void TestNfcAdapterPrivate::bindingWaitsForTheBusThreeTimes()
{
    FakeDaemon daemon;
    const NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    BusMonitor monitor;
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    QStringList waits = monitor.takeCalls();
    waits.removeAll(QStringLiteral("org.freedesktop.DBus.AddMatch"));
    QCOMPARE(waits, QStringList({QStringLiteral("org.freedesktop.DBus.GetNameOwner"),
                                 QStringLiteral("com.tavix.nfc.Manager.DefaultAdapter"),
                                 QStringLiteral("org.freedesktop.DBus.GetNameOwner")}));
}

void TestNfcAdapterPrivate::failedStartIsLogged()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.makeActivatable(QStringLiteral("/bin/false"));
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    const NfcAdapter adapter;
    QVERIFY(!adapter.isValid());
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
    QVERIFY(radio->enabled());
}

void TestNfcAdapterPrivate::unknownServiceIsLogged()
{
    radio->setEnabled(true);
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    const NfcAdapter adapter;
    QVERIFY(!adapter.isValid());
}

void TestNfcAdapterPrivate::defaultAdapterErrorLeavesUnbound()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.NoHardware"),
                QStringLiteral("kein Gerät: 100%s"));
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QTest::ignoreMessage(QtWarningMsg,
                         "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': kein Gerät: 100%s");
    daemon.start();
    QCoreApplication::processEvents();
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
    QVERIFY(!adapter.isValid());
    QVERIFY(!NfcAdapterPrivate::instance->adapterProxy);
    QCOMPARE(valid.count(), 0);
}

void TestNfcAdapterPrivate::defaultAdapterOfAnotherTypeLeavesUnbound()
{
    FakeDaemon daemon;
    daemon.reply(QStringLiteral("DefaultAdapter"), {QStringLiteral("/com/tavix/nfc/adapter0")});
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg,
                         "DefaultAdapter returned error 'org.freedesktop.DBus.Error.InvalidSignature': "
                         "Unexpected reply signature: got \"s\", expected \"o\"");
    const NfcAdapter adapter;
    QVERIFY(!adapter.isValid());
    QVERIFY(!NfcAdapterPrivate::instance->adapterProxy);
}

void TestNfcAdapterPrivate::daemonDyingInDefaultAdapterLeavesUnbound()
{
    FakeDaemon daemon;
    daemon.dieOn(QStringLiteral("DefaultAdapter"));
    daemon.start();
    QTest::ignoreMessage(
        QtWarningMsg, "DefaultAdapter returned error 'org.freedesktop.DBus.Error.NoReply': Message recipient "
                      "disconnected from message bus without replying");
    NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    QVERIFY(!adapter.isValid());
    QTRY_COMPARE(invalid.count(), 1);
}

void TestNfcAdapterPrivate::daemonGoneBeforeItIsAskedLeavesUnbound()
{
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    FakeDaemon daemon;
    daemon.start();
    daemon.stop();
    QTest::ignoreMessage(QtWarningMsg, "Nfc server does not exist");
    QTRY_COMPARE(invalid.count(), 1);
    QCOMPARE(valid.count(), 0);
    QVERIFY(!adapter.isValid());
    QVERIFY(!NfcAdapterPrivate::instance->adapterProxy);
}

void TestNfcAdapterPrivate::daemonGoneAfterItsAnswerLeavesInvalidProxy()
{
    FakeDaemon daemon;
    daemon.leaveOn(QStringLiteral("DefaultAdapter"));
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "Unable to get adapter proxy for /com/tavix/nfc/adapter0");
    NfcAdapter adapter;
    QVERIFY(!adapter.isValid());
    QVERIFY(NfcAdapterPrivate::instance->adapterProxy);

    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(!NfcAdapterPrivate::instance->adapterProxy);
}

void TestNfcAdapterPrivate::invalidProxyIsReplacedWhenDaemonRegisters()
{
    FakeDaemon daemon;
    daemon.leaveOn(QStringLiteral("DefaultAdapter"));
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "Unable to get adapter proxy for /com/tavix/nfc/adapter0");
    NfcAdapter adapter;
    daemon.kill();
    daemon.start();
    QTRY_VERIFY(adapter.isValid());
}

void TestNfcAdapterPrivate::unregistrationIsAlwaysAnnounced()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.NoHardware"),
                QStringLiteral("none"));
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': none");
    NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 1);

    daemon.reply(QStringLiteral("DefaultAdapter"),
                 {QVariant::fromValue(QDBusObjectPath(FakeDaemon::adapterPath()))});
    daemon.start();
    QTRY_VERIFY(adapter.isValid());
    daemon.kill();
    QTRY_COMPARE(invalid.count(), 2);
    QVERIFY(!adapter.isValid());
}

void TestNfcAdapterPrivate::restartedDaemonIsBoundAnew()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    daemon.kill();
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    QCOMPARE(invalid.count(), 1);
    QVERIFY(adapter.isValid());
    QSignalSpy started(&adapter, &NfcAdapter::handoverStarted);
    daemon.emitAdapterSignal(QStringLiteral("HandoverStarted"));
    QCoreApplication::processEvents();
    QCOMPARE(started.count(), 1);
}

void TestNfcAdapterPrivate::replacedDaemonIsBoundAnew()
{
    FakeDaemon daemon;
    daemon.start();
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.reply(QStringLiteral("GetProperties"),
                    {QVariantMap{{QStringLiteral("State"), QStringLiteral("off")}}});
    successor.succeed(daemon.service());
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    QStringList news;
    connect(
        &adapter, &NfcAdapter::adapterInvalid, this,
        [&] {
            QVERIFY(!adapter.isValid());
            news.append(QStringLiteral("invalid"));
        });
    connect(&adapter, &NfcAdapter::adapterValid, this, [&] { news.append(QStringLiteral("valid")); });

    daemon.stop();
    QTRY_COMPARE(news, QStringList({QStringLiteral("invalid"), QStringLiteral("valid")}));
    QVERIFY(!adapter.isPowered());
    QSignalSpy started(&adapter, &NfcAdapter::handoverStarted);
    successor.emitSignal(FakeDaemon::adapterPath(), QStringLiteral("com.tavix.nfc.Adapter"),
                         QStringLiteral("HandoverStarted"));
    QCoreApplication::processEvents();
    QCOMPARE(started.count(), 1);
}

void TestNfcAdapterPrivate::replacedDaemonHasNotDied()
{
    FakeDaemon daemon;
    daemon.start();
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.succeed(daemon.service());
    radio->setEnabled(true);
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);

    daemon.stop();
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(radio->enabled());
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::lastAdapterMayBeDeletedWhenTheDaemonIsReplaced()
{
    FakeDaemon daemon;
    daemon.start();
    FakeService successor(QDBusConnection::SystemBus, QStringLiteral("org.connui.Successor"));
    successor.succeed(daemon.service());
    auto *adapter = new NfcAdapter;
    connect(adapter, &NfcAdapter::adapterInvalid, this, [adapter] { delete adapter; });

    daemon.stop();
    QTRY_VERIFY(!NfcAdapterPrivate::instance);
    QCOMPARE(successor.members(), QStringList());
}

void TestNfcAdapterPrivate::signalsOfFormerAdapterPathAreNotHeard()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy started(&adapter, &NfcAdapter::handoverStarted);
    daemon.stop();
    const QString newPath = QStringLiteral("/com/tavix/nfc/adapter1");
    daemon.reply(QStringLiteral("DefaultAdapter"), {QVariant::fromValue(QDBusObjectPath(newPath))});
    daemon.start();
    QTRY_COMPARE(daemon.calls(QStringLiteral("DefaultAdapter")).size(), 2);

    daemon.emitAdapterSignal(QStringLiteral("HandoverStarted"));
    QCoreApplication::processEvents();
    QCOMPARE(started.count(), 0);
    daemon.emitSignal(newPath, QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("HandoverStarted"));
    QCoreApplication::processEvents();
    QCOMPARE(started.count(), 1);
}

void TestNfcAdapterPrivate::signalsOfAPathWithoutProxyAreNotHeard()
{
    FakeDaemon daemon;
    daemon.leaveOn(QStringLiteral("DefaultAdapter"));
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "Unable to get adapter proxy for /com/tavix/nfc/adapter0");
    NfcAdapter adapter;
    const QSignalSpy started(&adapter, &NfcAdapter::handoverStarted);
    daemon.kill();
    const QDBusObjectPath newPath(QStringLiteral("/com/tavix/nfc/adapter1"));
    daemon.reply(QStringLiteral("DefaultAdapter"), {QVariant::fromValue(newPath)});
    daemon.start();
    QTRY_VERIFY(adapter.isValid());
    daemon.emitAdapterSignal(QStringLiteral("HandoverStarted"));
    QCoreApplication::processEvents();
    QCOMPARE(started.count(), 0);
}

void TestNfcAdapterPrivate::deletedBindingLeavesItsProxy()
{
    FakeDaemon daemon;
    daemon.start();
    AdapterPointer adapter(NfcAdapter::defaultAdapter());
    const QPointer<QObject> watcher(reinterpret_cast<QObject *>(NfcAdapterPrivate::instance->serviceWatcher));
    const QPointer<QObject> proxy(reinterpret_cast<QObject *>(NfcAdapterPrivate::instance->adapterProxy));
    QVERIFY(!proxy->parent());
    adapter.reset();
    QVERIFY(!watcher);
    QVERIFY(proxy);
    delete proxy;
}

void TestNfcAdapterPrivate::unboundAdapterIsOffWhateverIsCached()
{
    FakeDaemon daemon;
    daemon.start();
    const NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.NoHardware"),
                QStringLiteral("none"));
    QTest::ignoreMessage(QtWarningMsg, "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': none");
    NfcAdapterPrivate::instance->serviceRegistered();
    QVERIFY(!NfcAdapterPrivate::instance->properties.isEmpty());
    QVERIFY(!adapter.isPowered());
}

void TestNfcAdapterPrivate::takenRequestorPathIsLogged()
{
    FakeDaemon daemon;
    daemon.start();
    const QString path = QStringLiteral("/com/tavix/nfcHandoverRequestor");
    QObject squatter;
    QVERIFY(QDBusConnection::systemBus().registerObject(path, &squatter));
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: Unable to register handler for handover");
    NfcAdapter adapter;
    QVERIFY(adapter.isValid());
    adapter.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    QTRY_COMPARE(daemon.calls(QStringLiteral("RequestHandover")).size(), 1);
    QCOMPARE(daemon.calls().constLast().arguments.value(0).value<QDBusObjectPath>().path(), path);
}

void TestNfcAdapterPrivate::daemonIsBrokenWhenItLivesLessThanThreeSeconds_data()
{
    QTest::addColumn<int>("life");
    QTest::addColumn<bool>("broken");
    QTest::newRow("at once") << 0 << true;
    QTest::newRow("2999 ms") << 2999 << true;
    QTest::newRow("3000 ms") << 3000 << false;
    QTest::newRow("a day") << 86400000 << false;
}

void TestNfcAdapterPrivate::daemonIsBrokenWhenItLivesLessThanThreeSeconds()
{
    QFETCH(int, life);
    QFETCH(bool, broken);
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    QVERIFY(adapter.isValid());

    currentTime += std::chrono::milliseconds(life);
    if (broken)
        sawBroken(life);
    daemon.kill();
    QTRY_COMPARE(invalid.count(), 1);
    QCOMPARE(NfcAdapterPrivate::adapterBroken, broken);
    QCOMPARE(radio->enabled(), !broken);
    QVERIFY(!adapter.isValid());
}

void TestNfcAdapterPrivate::daemonThatDiesWhileTheRadioIsOffIsNotBroken()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    daemon.kill();
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
    QVERIFY(!radio->enabled());
}

void TestNfcAdapterPrivate::daemonNeverSeenComingUpIsNotBroken()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapterPrivate::adapterBroken = true;
    NfcAdapter adapter;
    NfcAdapterPrivate::adapterBroken = false;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    daemon.kill();
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
    QVERIFY(radio->enabled());
}

void TestNfcAdapterPrivate::lifeIsMeasuredFromTheLastRegistration()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    currentTime += 3000ms;
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(!NfcAdapterPrivate::adapterBroken);

    currentTime += 3000ms;
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    currentTime += 1ms;
    sawBroken(1);
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 2);
    QVERIFY(NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::clockIsMonotonic()
{
    QVERIFY(NfcAdapterPrivate::Clock::is_steady);
}

void TestNfcAdapterPrivate::daemonThatDiesAtOnceIsBroken()
{
    NfcAdapterPrivate::now = NfcAdapterPrivate::Clock::now;
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    // A machine that needs three seconds from here to the announcement has broken nothing.
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral(
                             "^NfcAdapterPrivate: nfcd stopped [12]?[0-9]{1,3} msec after launch when "
                             "adapter is powered$")));
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapterPrivate: marking adapter as broken");
    daemon.kill();
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(NfcAdapterPrivate::adapterBroken);
    QVERIFY(!radio->enabled());
}

void TestNfcAdapterPrivate::daemonThatCannotBeBoundIsBrokenToo()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.NoHardware"),
                QStringLiteral("none"));
    daemon.start();
    QTest::ignoreMessage(QtWarningMsg, "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': none");
    NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    sawBroken(0);
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 1);
    QVERIFY(NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::brokenBindingWaitsForTheNextRegistration()
{
    NfcAdapterPrivate::adapterBroken = true;
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QCoreApplication::processEvents();
    QVERIFY(!adapter.isValid());
    QCOMPARE(daemon.members(), QStringList());

    daemon.stop();
    daemon.start();
    QTRY_COMPARE(valid.count(), 1);
    QVERIFY(adapter.isValid());
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::brokenBindingStartsNoDaemon()
{
    NfcAdapterPrivate::adapterBroken = true;
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.makeActivatable();
    NfcAdapter adapter;
    QVERIFY(!daemon.isOnBus());

    BusMonitor monitor;
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken");
    NfcAdapterPrivate::instance->startNfcService();
    QCOMPARE(monitor.takeCalls(), QStringList());
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken");
    adapter.setPowered(true);
    QVERIFY(!daemon.isOnBus());
    QVERIFY(NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::failedBindKeepsTheBrokenMark()
{
    NfcAdapterPrivate::adapterBroken = true;
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.NoHardware"),
                QStringLiteral("none"));
    const NfcAdapter adapter;
    QTest::ignoreMessage(QtWarningMsg, "DefaultAdapter returned error 'com.tavix.nfc.NoHardware': none");
    daemon.start();
    QCoreApplication::processEvents();
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
    QVERIFY(NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::brokenMarkOutlivesTheBinding()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    AdapterPointer adapter(NfcAdapter::defaultAdapter());
    QSignalSpy invalid(adapter.get(), &NfcAdapter::adapterInvalid);
    sawBroken(0);
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 1);
    adapter.reset();
    QVERIFY(NfcAdapterPrivate::adapterBroken);

    radio->setEnabled(true);
    daemon.start();
    daemon.clearCalls();
    adapter.reset(NfcAdapter::defaultAdapter());
    QVERIFY(!adapter->isValid());
    QCOMPARE(daemon.members(), QStringList());
}

void TestNfcAdapterPrivate::brokenDaemonIsMarkedBeforeItsEndIsAnnounced()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    const NfcAdapter adapter;
    QList<bool> broken;
    QList<bool> radioOn;
    connect(&adapter, &NfcAdapter::adapterInvalid, this, [&] {
        broken.append(NfcAdapterPrivate::adapterBroken);
        radioOn.append(radio->enabled());
    });
    sawBroken(0);
    daemon.stop();
    QTRY_COMPARE(broken, QList<bool>{true});
    QCOMPARE(radioOn, QList<bool>{false});
}

void TestNfcAdapterPrivate::bindIsAnnouncedBeforeTheBrokenMarkGoes()
{
    NfcAdapterPrivate::adapterBroken = true;
    const NfcAdapter adapter;
    QList<bool> broken;
    connect(&adapter, &NfcAdapter::adapterValid, this,
            [&] { broken.append(NfcAdapterPrivate::adapterBroken); });
    FakeDaemon daemon;
    daemon.start();
    QTRY_COMPARE(broken, QList<bool>{true});
    QVERIFY(!NfcAdapterPrivate::adapterBroken);
}

void TestNfcAdapterPrivate::stopIsLoggedBeforeTheMark()
{
    radio->setEnabled(true);
    FakeDaemon daemon;
    daemon.start();
    const NfcAdapter adapter;
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    // Expected messages may come in any order: those that come are collected here.
    const WarningLog log;
    daemon.stop();
    QTRY_COMPARE(invalid.count(), 1);
    QCOMPARE(
        WarningLog::messages,
        QStringList({QStringLiteral("NfcAdapterPrivate: nfcd stopped 0 msec after launch when adapter is "
                                    "powered"),
                     QStringLiteral("NfcAdapterPrivate: marking adapter as broken")}));
}

void TestNfcAdapterPrivate::eachSignal()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char *signal :
         {SIGNAL(propertyChanged(QString)), SIGNAL(adapterInvalid()), SIGNAL(adapterValid()),
          SIGNAL(handoverStarted()), SIGNAL(handoverCarrierSelected(QString)),
          SIGNAL(handoverCompleted(QString, QVariant)), SIGNAL(handoverFailed(QString))}) {
        const QByteArray name(signal);
        QTest::newRow(name.mid(1, name.indexOf('(') - 1).constData()) << name;
    }
}

void TestNfcAdapterPrivate::cause(FakeDaemon &daemon)
{
    const QByteArray signal = QTest::currentDataTag();
    const QVariant data = QVariant::fromValue(QDBusVariant(QStringLiteral("data")));
    if (signal == "propertyChanged") {
        daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("on"));
    } else if (signal == "adapterInvalid") {
        daemon.stop();
    } else if (signal == "adapterValid") {
        // Registered again without having left, so that no other signal comes before it.
        QMetaObject::invokeMethod(NfcAdapterPrivate::instance, "serviceRegistered", Qt::QueuedConnection);
    } else if (signal == "handoverStarted") {
        daemon.emitAdapterSignal(QStringLiteral("HandoverStarted"));
    } else if (signal == "handoverCarrierSelected") {
        daemon.emitAdapterSignal(QStringLiteral("HandoverCarrierSelected"), {QStringLiteral("carrier")});
    } else if (signal == "handoverCompleted") {
        daemon.emitAdapterSignal(QStringLiteral("HandoverCompleted"), {QStringLiteral("carrier"), data});
    } else if (signal == "handoverFailed") {
        daemon.emitAdapterSignal(QStringLiteral("HandoverFailed"), {QStringLiteral("reason")});
    } else {
        QFAIL("no such signal");
    }
}

// Calls a function at a signal that is known by its name only.
class Reaction : public QObject
{
    Q_OBJECT

public:
    Reaction(NfcAdapter *adapter, const QByteArray &signal, std::function<void()> react)
        : reaction(std::move(react))
    {
        connect(adapter, signal.constData(), this, SLOT(react()));
    }

private Q_SLOTS:
    void react() { reaction(); }

private:
    std::function<void()> reaction;
};

void TestNfcAdapterPrivate::listenersHearInTheOrderOfCreation_data()
{
    eachSignal();
}

void TestNfcAdapterPrivate::listenersHearInTheOrderOfCreation()
{
    QFETCH(QByteArray, signal);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    NfcAdapter third;
    QList<int> heard;
    const Reaction three(
        &third, signal, [&heard] { heard.append(3); });
    const Reaction one(
        &first, signal, [&heard] { heard.append(1); });
    const Reaction two(&second, signal, [&heard] { heard.append(2); });
    cause(daemon);
    QCoreApplication::processEvents();
    QCOMPARE(heard, QList<int>({1, 2, 3}));
}

void TestNfcAdapterPrivate::adapterDeletedInSlotHearsNothingMore_data()
{
    eachSignal();
}

void TestNfcAdapterPrivate::adapterDeletedInSlotHearsNothingMore()
{
    QFETCH(QByteArray, signal);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter first;
    AdapterPointer second(NfcAdapter::defaultAdapter());
    NfcAdapter third;
    QSignalSpy secondSpy(second.get(), signal.constData());
    QSignalSpy thirdSpy(&third, signal.constData());
    const Reaction reaction(&first, signal, [&second] { second.reset(); });
    cause(daemon);
    QCoreApplication::processEvents();
    QVERIFY(!second);
    QCOMPARE(secondSpy.count(), 0);
    QCOMPARE(thirdSpy.count(), 1);
}

void TestNfcAdapterPrivate::adapterDeletesItselfInSlot_data()
{
    eachSignal();
}

void TestNfcAdapterPrivate::adapterDeletesItselfInSlot()
{
    QFETCH(QByteArray, signal);
    FakeDaemon daemon;
    daemon.start();
    AdapterPointer first(NfcAdapter::defaultAdapter());
    NfcAdapter second;
    QSignalSpy spy(&second, signal.constData());
    const Reaction reaction(first.get(), signal, [&first] { first.reset(); });
    cause(daemon);
    QCoreApplication::processEvents();
    QVERIFY(!first);
    QCOMPARE(spy.count(), 1);
    QVERIFY(NfcAdapterPrivate::instance);
}

void TestNfcAdapterPrivate::lastAdapterDeletedInSlotEndsTheBinding_data()
{
    eachSignal();
}

void TestNfcAdapterPrivate::lastAdapterDeletedInSlotEndsTheBinding()
{
    QFETCH(QByteArray, signal);
    FakeDaemon daemon;
    daemon.start();
    AdapterPointer first(NfcAdapter::defaultAdapter());
    AdapterPointer second(NfcAdapter::defaultAdapter());
    const QPointer<NfcAdapterPrivate> binding = NfcAdapterPrivate::instance;
    const Reaction reaction(first.get(), signal, [&first, &second] {
        second.reset();
        first.reset();
    });
    cause(daemon);
    QCoreApplication::processEvents();
    QVERIFY(!first);
    QVERIFY(!binding);
    QVERIFY(!NfcAdapterPrivate::instance);
}

void TestNfcAdapterPrivate::adapterCreatedInSlotHearsNothingOfIt_data()
{
    eachSignal();
}

void TestNfcAdapterPrivate::adapterCreatedInSlotHearsNothingOfIt()
{
    QFETCH(QByteArray, signal);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter first;
    NfcAdapter second;
    AdapterPointer created;
    std::unique_ptr<QSignalSpy> createdSpy;
    QSignalSpy secondSpy(&second, signal.constData());
    const Reaction reaction(&first, signal, [&created, &createdSpy, signal] {
        created.reset(NfcAdapter::defaultAdapter());
        createdSpy = std::make_unique<QSignalSpy>(created.get(), signal.constData());
    });
    cause(daemon);
    QCoreApplication::processEvents();
    QVERIFY(created);
    QCOMPARE(createdSpy->count(), 0);
    QCOMPARE(secondSpy.count(), 1);
}

void TestNfcAdapterPrivate::bindingIsReplacedInSlot()
{
    FakeDaemon daemon;
    daemon.start();
    AdapterPointer adapter(NfcAdapter::defaultAdapter());
    const Reaction reaction(adapter.get(), SIGNAL(adapterInvalid()), [&adapter] {
        adapter.reset();
        adapter.reset(NfcAdapter::defaultAdapter());
    });
    daemon.stop();
    QCoreApplication::processEvents();
    QVERIFY(adapter);
    QVERIFY(!adapter->isValid());
    daemon.start();
    QTRY_VERIFY(adapter->isValid());
}

void TestNfcAdapterPrivate::requesterMayBeDeletedInHandoverFailed()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("RequestHandover"), QStringLiteral("com.tavix.nfc.Busy"),
                QStringLiteral("busy"));
    daemon.start();
    AdapterPointer adapter(NfcAdapter::defaultAdapter());
    const Reaction reaction(adapter.get(), SIGNAL(handoverFailed(QString)), [&adapter] { adapter.reset(); });
    adapter->requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    QTRY_VERIFY(!adapter);
    QVERIFY(!NfcAdapterPrivate::instance);
}

QTEST_GUILESS_MAIN(TestNfcAdapterPrivate)
#include "tst_nfcadapterprivate.moc"
