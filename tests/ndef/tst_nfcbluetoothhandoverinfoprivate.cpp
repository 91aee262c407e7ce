// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMetaMethod>
#include <QTimer>
#include <QtTest>

#include "fakebluetooth.h"
#include "ndef/nfcbluetoothhandoverinfo_p.h"
#include "nfcbluetoothhandoverinfo.h"
#include "nfcpendingcall.h"

using ConnUi::BluetoothAdapter;
using ConnUi::BluetoothDevice;
using ConnUi::BluetoothHandoverData;
using ConnUi::NfcBluetoothHandoverInfo;
using ConnUi::NfcBluetoothHandoverInfoPrivate;
using ConnUi::NfcPendingCall;

namespace {

const auto peerAddress = QStringLiteral("00:11:22:AA:BB:CC");
const auto otherAddress = QStringLiteral("00:11:22:AA:BB:DD");
const char *const noAdapter = "NfcBluetoothHandoverInfo: No Bluetooth adapter for creating device";
const char *const otherCreated =
    "NfcBluetoothHandoverInfo: device 00:11:22:AA:BB:DD created when expecting creation of 00:11:22:AA:BB:CC";
const char *const hostDown =
    "NfcBluetoothHandoverInfo: Unable to create device 00:11:22:AA:BB:CC: Host is down";

BluetoothDevice device(const QString &address, const QString &name = {})
{
    return BluetoothDevice({{QStringLiteral("Address"), address}, {QStringLiteral("Name"), name}});
}

void create(BluetoothAdapter *adapter)
{
    Q_EMIT adapter->deviceCreated(device(peerAddress, QStringLiteral("Peer")));
}

void fail(BluetoothAdapter *adapter)
{
    Q_EMIT adapter->deviceCreationFailed(QStringLiteral("Host is down"));
}

void later(const std::function<void()> &action)
{
    QTimer::singleShot(0, qApp, action);
}

void createLater(BluetoothAdapter *adapter)
{
    QTimer::singleShot(
        0, adapter, [=] { create(adapter); });
}

void failLater(BluetoothAdapter *adapter)
{
    QTimer::singleShot(
        0, adapter, [=] { fail(adapter); });
}

} // namespace

// How the creation of a device goes on, with an adapter that does what the test says.
class TestNfcBluetoothHandoverInfoPrivate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void slotsHaveTheirNames_data();
    void slotsHaveTheirNames();
    void startsIdle();
    void creationIsStartedOnceForTheAddress();
    void createdDeviceIsKept();
    void missingAdapterEndsAtOnceAndIsLookedForAgain();
    void invalidAdapterIsRefusedOnceThenUsed();
    void otherDeviceIsIgnoredUntilTheExpectedOneComes();
    void otherDeviceIsIgnoredUntilTheFailure();
    void addressInOtherLettersIsAnotherDevice();
    void failureLeavesNoDeviceAndTheNextCallTriesAgain();
    void successInsideTheStartDoesNotWait();
    void failureInsideTheStartDoesNotWait();
    void laterOutcomesAreNotHeard();
    void invalidHeldDeviceIsReturnedAsItIs();
    void invalidHeldDeviceIsReplacedByTheNextCreation();
    void creationUnderWayIsWaitedFor();
    void callInTheWaitSharesTheDevice();
    void callInTheWaitSharesTheFailure();
    void deletionInTheWaitEndsIt();
    void deletionByTheInnerCallerEndsTheOuterWait();
    void otherEventsAreProcessedInTheWait();
    void deletionDeletesTheAdapter();
    void callBringsTheDevice();
    void callsShareOneCreation();
    void callSharesTheCreationOfAWaitingCaller();
    void failedCallTellsTheReason();
    void callWithoutAdapterFailsAndTheNextLooksAgain();
    void callThatWaitsMayOvertake();
    void callsEndUnheardWithTheInfo();

private:
    QVariant sentInfo;

public Q_SLOTS:
    void received(const QDBusVariant &info) { sentInfo = info.variant(); }
};

void TestNfcBluetoothHandoverInfoPrivate::initTestCase()
{
    auto bus = QDBusConnection::systemBus();
    qRegisterMetaType<QDBusVariant>();
    QVERIFY(bus.connect(QString(), QStringLiteral("/info"), QStringLiteral("org.example.Info"),
                        QStringLiteral("Info"), this, SLOT(received(QDBusVariant))));
    auto peer = QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("peer"));
    QDBusArgument argument;
    argument << BluetoothHandoverData{QDBusObjectPath(QStringLiteral("/carrier")), peerAddress};
    auto signal = QDBusMessage::createSignal(QStringLiteral("/info"), QStringLiteral("org.example.Info"),
                                             QStringLiteral("Info"));
    signal << QVariant::fromValue(QDBusVariant(QVariant::fromValue(argument)));
    QVERIFY(peer.send(signal));
    QTRY_VERIFY(sentInfo.isValid());
    QDBusConnection::disconnectFromBus(QStringLiteral("peer"));
}

void TestNfcBluetoothHandoverInfoPrivate::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestNfcBluetoothHandoverInfoPrivate::slotsHaveTheirNames_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QList<QByteArray>>("arguments");
    QTest::newRow("start") << QByteArray("startCreatingDevice()") << QByteArray("bool")
                           << QList<QByteArray>();
    QTest::newRow("success") << QByteArray("deviceCreated(BluetoothDevice)") << QByteArray("void")
                             << QList<QByteArray>{"newDevice"};
    QTest::newRow("failure") << QByteArray("deviceCreationFailed(QString)") << QByteArray("void")
                             << QList<QByteArray>{"reason"};
}

void TestNfcBluetoothHandoverInfoPrivate::slotsHaveTheirNames()
{
    QFETCH(QByteArray, signature);
    QFETCH(QByteArray, type);
    QFETCH(QList<QByteArray>, arguments);
    const QMetaObject &meta = NfcBluetoothHandoverInfoPrivate::staticMetaObject;
    const QMetaMethod method = meta.method(meta.indexOfSlot(signature.constData()));
    QVERIFY(method.isValid());
    QCOMPARE(QByteArray(method.typeName()), type);
    QCOMPARE(method.parameterNames(), arguments);
}

void TestNfcBluetoothHandoverInfoPrivate::startsIdle()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfoPrivate info(sentInfo);
    QVERIFY(!info.creating);
    QVERIFY(!info.device);
    QVERIFY(!info.adapter);
    QCOMPARE(info.parent(), nullptr);
    QCOMPARE(info.data.path.path(), QStringLiteral("/carrier"));
    QCOMPARE(info.data.address, peerAddress);
    QCOMPARE(bluetooth.defaultAdapterCalls, 0);
}

void TestNfcBluetoothHandoverInfoPrivate::creationIsStartedOnceForTheAddress()
{
    FakeBluetooth bluetooth;
    NfcBluetoothHandoverInfoPrivate info(sentInfo);
    QVERIFY(info.startCreatingDevice());
    QVERIFY(info.creating);
    QVERIFY(info.startCreatingDevice());
    QCOMPARE(bluetooth.started, QStringList(peerAddress));
    QCOMPARE(bluetooth.defaultAdapterCalls, 1);
    QCOMPARE(info.adapter.get(), bluetooth.adapters.value(0));
}

void TestNfcBluetoothHandoverInfoPrivate::createdDeviceIsKept()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = createLater;
    for (int i = 0; i < 2; ++i) {
        const BluetoothDevice created = info.device();
        QVERIFY(created.isValid());
        QCOMPARE(created.address(), peerAddress);
        QCOMPARE(created.name(), QStringLiteral("Peer"));
    }
    QCOMPARE(bluetooth.started.size(), 1);
    QCOMPARE(bluetooth.defaultAdapterCalls, 1);

    NfcBluetoothHandoverInfoPrivate direct(sentInfo);
    QVERIFY(direct.startCreatingDevice());
    create(direct.adapter.get());
    QVERIFY(!direct.creating);
    QVERIFY(direct.startCreatingDevice());
    QVERIFY(!direct.creating);
    QCOMPARE(bluetooth.started.size(), 2);
}

void TestNfcBluetoothHandoverInfoPrivate::missingAdapterEndsAtOnceAndIsLookedForAgain()
{
    FakeBluetooth bluetooth;
    bluetooth.hasAdapter = false;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bool processed = false;
    later([&] { processed = true; });
    QTest::ignoreMessage(QtWarningMsg, noAdapter);
    QVERIFY(!info.device().isValid());
    QVERIFY(!processed);
    QTRY_VERIFY(processed);

    bluetooth.hasAdapter = true;
    bluetooth.onStart = createLater;
    QVERIFY(info.device().isValid());
    QCOMPARE(bluetooth.defaultAdapterCalls, 2);
}

void TestNfcBluetoothHandoverInfoPrivate::invalidAdapterIsRefusedOnceThenUsed()
{
    FakeBluetooth bluetooth;
    bluetooth.adapterIsValid = false;
    const NfcBluetoothHandoverInfo info(sentInfo);
    QTest::ignoreMessage(QtWarningMsg, noAdapter);
    QVERIFY(!info.device().isValid());
    QCOMPARE(bluetooth.started, QStringList());

    bluetooth.onStart = createLater;
    QVERIFY(info.device().isValid());
    QCOMPARE(bluetooth.started, QStringList(peerAddress));
    QCOMPARE(bluetooth.defaultAdapterCalls, 1);
}

void TestNfcBluetoothHandoverInfoPrivate::otherDeviceIsIgnoredUntilTheExpectedOneComes()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bool stillWaiting = false;
    bluetooth.onStart = [&](BluetoothAdapter *adapter) {
        later([&, adapter] {
            Q_EMIT adapter->deviceCreated(device(otherAddress));
            later([&, adapter] {
                stillWaiting = true;
                create(adapter);
            });
        });
    };
    QTest::ignoreMessage(QtWarningMsg, otherCreated);
    QCOMPARE(info.device().address(), peerAddress);
    QVERIFY(stillWaiting);
}

void TestNfcBluetoothHandoverInfoPrivate::otherDeviceIsIgnoredUntilTheFailure()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = [](BluetoothAdapter *adapter) {
        later([=] {
            Q_EMIT adapter->deviceCreated(device(otherAddress));
            failLater(adapter);
        });
    };
    QTest::ignoreMessage(QtWarningMsg, otherCreated);
    QTest::ignoreMessage(QtWarningMsg, hostDown);
    const BluetoothDevice none = info.device();
    QVERIFY(!none.isValid());
    QCOMPARE(none.address(), QString());
}

void TestNfcBluetoothHandoverInfoPrivate::addressInOtherLettersIsAnotherDevice()
{
    FakeBluetooth bluetooth;
    NfcBluetoothHandoverInfoPrivate info(sentInfo);
    QVERIFY(info.startCreatingDevice());
    QTest::ignoreMessage(QtWarningMsg, "NfcBluetoothHandoverInfo: device 00:11:22:aa:bb:cc created when "
                                       "expecting creation of 00:11:22:AA:BB:CC");
    Q_EMIT info.adapter->deviceCreated(device(peerAddress.toLower()));
    QVERIFY(info.creating);
    QVERIFY(!info.device);
}

void TestNfcBluetoothHandoverInfoPrivate::failureLeavesNoDeviceAndTheNextCallTriesAgain()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = failLater;
    QTest::ignoreMessage(QtWarningMsg, hostDown);
    QVERIFY(!info.device().isValid());
    bluetooth.onStart = createLater;
    QVERIFY(info.device().isValid());
    QCOMPARE(bluetooth.started.size(), 2);
    QCOMPARE(bluetooth.defaultAdapterCalls, 1);
}

void TestNfcBluetoothHandoverInfoPrivate::successInsideTheStartDoesNotWait()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = create;
    bool processed = false;
    later([&] { processed = true; });
    QVERIFY(info.device().isValid());
    QVERIFY(!processed);
    QTRY_VERIFY(processed);
}

void TestNfcBluetoothHandoverInfoPrivate::failureInsideTheStartDoesNotWait()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = fail;
    bool processed = false;
    later([&] { processed = true; });
    QTest::ignoreMessage(QtWarningMsg, hostDown);
    QVERIFY(!info.device().isValid());
    QVERIFY(!processed);
    QTRY_VERIFY(processed);
}

void TestNfcBluetoothHandoverInfoPrivate::laterOutcomesAreNotHeard()
{
    FakeBluetooth bluetooth;
    NfcBluetoothHandoverInfoPrivate info(sentInfo);
    QVERIFY(info.startCreatingDevice());
    create(info.adapter.get());
    Q_EMIT info.adapter->deviceCreated(device(otherAddress));
    Q_EMIT info.adapter->deviceCreated(device(peerAddress, QStringLiteral("Second")));
    fail(info.adapter.get());
    QCOMPARE(info.device->name(), QStringLiteral("Peer"));

    NfcBluetoothHandoverInfoPrivate failed(sentInfo);
    QVERIFY(failed.startCreatingDevice());
    QTest::ignoreMessage(QtWarningMsg, hostDown);
    fail(failed.adapter.get());
    create(failed.adapter.get());
    fail(failed.adapter.get());
    QVERIFY(!failed.device);
}

void TestNfcBluetoothHandoverInfoPrivate::invalidHeldDeviceIsReturnedAsItIs()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info{QVariant()};
    bluetooth.onStart = [](BluetoothAdapter *adapter) { Q_EMIT adapter->deviceCreated(BluetoothDevice()); };
    QVERIFY(!info.device().isValid());
    QVERIFY(!info.device().isValid());
    QCOMPARE(bluetooth.started, QStringList(QString()));
}

void TestNfcBluetoothHandoverInfoPrivate::invalidHeldDeviceIsReplacedByTheNextCreation()
{
    FakeBluetooth bluetooth;
    NfcBluetoothHandoverInfoPrivate info(sentInfo);
    info.device = std::make_unique<BluetoothDevice>();
    QVERIFY(info.startCreatingDevice());
    QVERIFY(info.creating);
    QVERIFY(!info.device);
    create(info.adapter.get());
    QVERIFY(info.device->isValid());
}

void TestNfcBluetoothHandoverInfoPrivate::creationUnderWayIsWaitedFor()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = [](BluetoothAdapter *) { later([] { QCoreApplication::exit(); }); };
    // An application that quits does not hang in the wait, and what was started stays under way.
    later([&] { QVERIFY(!info.device().isValid()); });
    QCoreApplication::exec();
    createLater(bluetooth.adapters.constFirst());
    QVERIFY(info.device().isValid());
    QCOMPARE(bluetooth.started.size(), 1);
}

void TestNfcBluetoothHandoverInfoPrivate::callInTheWaitSharesTheDevice()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = [&](BluetoothAdapter *adapter) {
        later([&, adapter] {
            createLater(adapter);
            QCOMPARE(info.device().name(), QStringLiteral("Peer"));
        });
    };
    QCOMPARE(info.device().name(), QStringLiteral("Peer"));
    QCOMPARE(bluetooth.started.size(), 1);
}

void TestNfcBluetoothHandoverInfoPrivate::callInTheWaitSharesTheFailure()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    bluetooth.onStart = [&](BluetoothAdapter *adapter) {
        later([&, adapter] {
            failLater(adapter);
            QVERIFY(!info.device().isValid());
        });
    };
    QTest::ignoreMessage(QtWarningMsg, hostDown);
    QVERIFY(!info.device().isValid());
    QCOMPARE(bluetooth.started.size(), 1);
}

void TestNfcBluetoothHandoverInfoPrivate::deletionInTheWaitEndsIt()
{
    FakeBluetooth bluetooth;
    auto *info = new NfcBluetoothHandoverInfo(sentInfo);
    bluetooth.onStart = [&](BluetoothAdapter *) { later([&] { delete info; }); };
    QVERIFY(!info->device().isValid());
    QCOMPARE(bluetooth.adapters.size(), 0);
}

void TestNfcBluetoothHandoverInfoPrivate::deletionByTheInnerCallerEndsTheOuterWait()
{
    FakeBluetooth bluetooth;
    auto *info = new NfcBluetoothHandoverInfo(sentInfo);
    bluetooth.onStart = [&](BluetoothAdapter *adapter) {
        later([&, adapter] {
            createLater(adapter);
            QVERIFY(info->device().isValid());
            delete info;
        });
    };
    QVERIFY(!info->device().isValid());
    QCOMPARE(bluetooth.adapters.size(), 0);
}

void TestNfcBluetoothHandoverInfoPrivate::otherEventsAreProcessedInTheWait()
{
    FakeBluetooth bluetooth;
    const NfcBluetoothHandoverInfo info(sentInfo);
    const NfcBluetoothHandoverInfo other(sentInfo);
    int events = 0;
    bluetooth.onStart = [&](BluetoothAdapter *adapter) {
        later([&, adapter] {
            ++events;
            bluetooth.onStart = create;
            QVERIFY(other.device().isValid());
            create(adapter);
        });
    };
    QVERIFY(info.device().isValid());
    QCOMPARE(events, 1);
}

void TestNfcBluetoothHandoverInfoPrivate::deletionDeletesTheAdapter()
{
    FakeBluetooth bluetooth;
    auto info = std::make_unique<NfcBluetoothHandoverInfoPrivate>(sentInfo);
    QVERIFY(info->startCreatingDevice());
    QCOMPARE(bluetooth.adapters.size(), 1);
    info.reset();
    QCOMPARE(bluetooth.adapters.size(), 0);
}

// The outcome of a call of deviceAsync(): the device's address, and the reason of a failure.
class Ending
{
public:
    explicit Ending(NfcPendingCall *call)
    {
        QObject::connect(
            call, &NfcPendingCall::finished, &context,
            [this](const NfcPendingCall *ended) {
                ++endings;
                address = ended->value().value<BluetoothDevice>().address();
                reason = ended->error().message();
            });
    }

    int endings = 0;
    QString address;
    QString reason;

private:
    QObject context;
};

void TestNfcBluetoothHandoverInfoPrivate::callBringsTheDevice()
{
    FakeBluetooth bluetooth;
    bluetooth.onStart = create; // inside the start, even
    NfcBluetoothHandoverInfo info(sentInfo);
    const Ending first(info.deviceAsync());
    QCOMPARE(first.endings, 0);
    QCOMPARE(bluetooth.defaultAdapterCalls, 0);
    QTRY_COMPARE(first.endings, 1);
    QCOMPARE(first.address, peerAddress);
    QCOMPARE(first.reason, QString());

    NfcPendingCall *second = info.deviceAsync();
    QVERIFY(second->isFinished());
    const Ending known(second);
    QTRY_COMPARE(known.endings, 1);
    QCOMPARE(known.address, peerAddress);
    QCOMPARE(info.device().address(), peerAddress);
    QCOMPARE(bluetooth.started.size(), 1);
}

void TestNfcBluetoothHandoverInfoPrivate::callsShareOneCreation()
{
    FakeBluetooth bluetooth;
    NfcBluetoothHandoverInfo info(sentInfo);
    const Ending first(info.deviceAsync());
    const Ending second(info.deviceAsync());
    QTRY_COMPARE(bluetooth.started.size(), 1);
    const Ending third(info.deviceAsync());
    create(bluetooth.adapters.constFirst());
    QTRY_COMPARE(first.endings + second.endings + third.endings, 3);
    QCOMPARE(first.address, peerAddress);
    QCOMPARE(third.address, peerAddress);
    QCOMPARE(bluetooth.started.size(), 1);
    QCOMPARE(bluetooth.defaultAdapterCalls, 1);
}

void TestNfcBluetoothHandoverInfoPrivate::callSharesTheCreationOfAWaitingCaller()
{
    FakeBluetooth bluetooth;
    NfcBluetoothHandoverInfo info(sentInfo);
    std::unique_ptr<Ending> ending;
    bluetooth.onStart = [&](BluetoothAdapter *adapter) {
        later([&info, &ending, adapter] {
            ending = std::make_unique<Ending>(info.deviceAsync());
            create(adapter);
        });
    };
    QCOMPARE(info.device().address(), peerAddress);
    QTRY_COMPARE(ending->endings, 1);
    QCOMPARE(ending->address, peerAddress);
    QCOMPARE(bluetooth.started.size(), 1);
}

void TestNfcBluetoothHandoverInfoPrivate::failedCallTellsTheReason()
{
    FakeBluetooth bluetooth;
    bluetooth.onStart = failLater;
    NfcBluetoothHandoverInfo info(sentInfo);
    QTest::ignoreMessage(QtWarningMsg, hostDown);
    const Ending failed(info.deviceAsync());
    QTRY_COMPARE(failed.endings, 1);
    QCOMPARE(failed.address, QString());
    QCOMPARE(failed.reason, QStringLiteral("Host is down"));

    // Inside the start, with an adapter that is there already: heard from the event loop all the same.
    bluetooth.onStart = create;
    const Ending created(info.deviceAsync());
    QTRY_COMPARE(created.endings, 1);
    QCOMPARE(created.address, peerAddress);
    QCOMPARE(created.reason, QString());
}

void TestNfcBluetoothHandoverInfoPrivate::callWithoutAdapterFailsAndTheNextLooksAgain()
{
    FakeBluetooth bluetooth;
    bluetooth.hasAdapter = false;
    bluetooth.onStart = createLater;
    NfcBluetoothHandoverInfo info(sentInfo);
    QTest::ignoreMessage(QtWarningMsg, noAdapter);
    const Ending failed(info.deviceAsync());
    QTRY_COMPARE(failed.endings, 1);
    QCOMPARE(failed.reason, QStringLiteral("There is no Bluetooth adapter"));

    bluetooth.hasAdapter = true;
    const Ending created(info.deviceAsync());
    QTRY_COMPARE(created.endings, 1);
    QCOMPARE(created.address, peerAddress);
}

void TestNfcBluetoothHandoverInfoPrivate::callThatWaitsMayOvertake()
{
    FakeBluetooth bluetooth;
    bluetooth.onStart = create;
    NfcBluetoothHandoverInfo info(sentInfo);
    const Ending ending(info.deviceAsync());
    QCOMPARE(info.device().address(), peerAddress);
    QTRY_COMPARE(bluetooth.defaultAdapterCalls, 2);
    QTRY_COMPARE(ending.endings, 1);
    QCOMPARE(ending.address, peerAddress);
    QCOMPARE(bluetooth.started.size(), 1);
    // That of the look-up has gone with its answer.
    QTRY_COMPARE(bluetooth.adapters.size(), 1);
}

void TestNfcBluetoothHandoverInfoPrivate::callsEndUnheardWithTheInfo()
{
    FakeBluetooth bluetooth;
    auto info = std::make_unique<NfcBluetoothHandoverInfo>(sentInfo);
    const Ending looking(info->deviceAsync());
    info.reset();
    info = std::make_unique<NfcBluetoothHandoverInfo>(sentInfo);
    const Ending creating(info->deviceAsync());
    QTRY_COMPARE(bluetooth.started.size(), 1);
    info.reset();
    QCOMPARE(bluetooth.adapters.size(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(looking.endings + creating.endings, 0);
}

QTEST_GUILESS_MAIN(TestNfcBluetoothHandoverInfoPrivate)
#include "tst_nfcbluetoothhandoverinfoprivate.moc"
