// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

#include <QDBusReply>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include <BluetoothAdapter>
#include <PendingAnswer>

#include "bluezmock.h"
#include "devicecreation_p.h"

using namespace std::chrono_literals;
using ConnUi::BluetoothAdapter;
using ConnUi::BluetoothDevice;
using ConnUi::DeviceCreation;
using ConnUi::PendingAnswer;

namespace {

const auto objectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const auto peerAddress = QStringLiteral("00:11:22:AA:BB:CC");

BluetoothDevice device(const QString &address)
{
    return BluetoothDevice({{QStringLiteral("Address"), address}});
}

bool refuseDiscovery(BlueZMock *bluez)
{
    return bluez->addAdapterMethod(QStringLiteral("StartDiscovery"), QString(), QString(),
                                   QStringLiteral("raise dbus.exceptions.DBusException('Resource Not Ready', "
                                                  "name='org.bluez.Error.NotReady')"));
}

// BlueZ whose list of objects is what the test says.
struct OddBlueZ : DBusMock
{
    explicit OddBlueZ(const QString &out, const QString &body)
        : DBusMock(BlueZMock::busName, {BlueZMock::busName, QStringLiteral("/"), objectManager})
    {
        ready = waitForRegistered() && addMethod(QStringLiteral("/"), objectManager,
                                                 QStringLiteral("GetManagedObjects"), QString(), out, body)
                                               .type() == QDBusMessage::ReplyMessage;
    }

    bool ready;
};

// The announcements of an adapter.
struct Outcome
{
    explicit Outcome(BluetoothAdapter *adapter)
    {
        QObject::connect(
            adapter, &BluetoothAdapter::deviceCreated, &context,
            [this](const BluetoothDevice &device) {
                created.append(device.address() + QLatin1Char(' ') + device.name());
            });
        QObject::connect(adapter, &BluetoothAdapter::deviceCreationFailed, &context,
                         [this](const QString &reason) { failed.append(reason); });
    }

    bool isOpen() const { return created.isEmpty() && failed.isEmpty(); }

    QStringList created;
    QStringList failed;
    QObject context;
};

} // namespace

class TestBluetoothAdapter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void noBlueZIsNoAdapter();
    void blueZIsNotStarted();
    void blueZWithoutAdapterIsNoAdapter();
    void slowBlueZIsNoAdapterInTime();
    void nonsenseIsNoAdapter();
    void firstAdapterIsTheDefault();
    void poweredAdapterIsTheDefault();
    void everyDefaultAdapterIsNewAndWithoutParent();
    void answerBringsTheDefaultAdapter();
    void answerWithoutBlueZIsNoAdapter();
    void nonsenseIsTheAnswersError();
    void knownDeviceIsCreatedFromTheEventLoop();
    void deviceThatAnotherAdapterKnowsIsFound();
    void adaptersOwnDeviceComesBeforeAnothers();
    void deviceThatExistsAlreadyIsCreated();
    void addressIsSpelledAsItWasAsked();
    void unknownDeviceIsConnected();
    void failureCarriesBlueZWords();
    void deviceThatAppearsButDoesNotConnectFails();
    void deviceThatBlueZDoesNotListFails();
    void deviceIsDiscoveredWhereBlueZCannotConnect();
    void discoveryLooksForDevicesOfBothTransports();
    void otherDevicesAreIgnored();
    void refusedDiscoveryFails();
    void refusedListOfDevicesFails();
    void deviceThatComesAfterAFailureIsNotReported();
    void runningDiscoveryIsUsed();
    void timeLimitEndsDiscovery();
    void timeLimitEndsASlowConnection();
    void deletionEndsDiscoveryWithoutSignal();
    void deletionByTheReceiverIsFine();
    void vanishingAdapterFails();
    void endOfBlueZFails();
    void vanishedAdapterStaysInvalid();
    void whatIsNoAddressFailsFromTheEventLoop();
    void signalsCarryTheirSignatures();
};

void TestBluetoothAdapter::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestBluetoothAdapter::noBlueZIsNoAdapter()
{
    QCOMPARE(BluetoothAdapter::defaultAdapter(), nullptr);
}

void TestBluetoothAdapter::blueZIsNotStarted()
{
    const ActivatableService bluez(BlueZMock::busName);
    QVERIFY(bluez.ready);
    QCOMPARE(BluetoothAdapter::defaultAdapter(), nullptr);
    QVERIFY(!bluez.isStarted());
}

void TestBluetoothAdapter::blueZWithoutAdapterIsNoAdapter()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    QCOMPARE(BluetoothAdapter::defaultAdapter(), nullptr);
}

void TestBluetoothAdapter::slowBlueZIsNoAdapterInTime()
{
    OddBlueZ bluez(QStringLiteral("a{oa{sa{sv}}}"), QStringLiteral("import time; time.sleep(20); ret = {}"));
    QVERIFY(bluez.ready);
    QTest::ignoreMessage(QtWarningMsg, "BluetoothAdapter: unable to find an adapter: Did not receive a "
                                       "reply. Possible causes include: the remote "
                                       "application did not send a reply, the message bus security policy "
                                       "blocked the reply, the reply timeout "
                                       "expired, or the network connection was broken.");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(BluetoothAdapter::defaultAdapter(), nullptr);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

void TestBluetoothAdapter::nonsenseIsNoAdapter()
{
    OddBlueZ bluez(QStringLiteral("as"), QStringLiteral("ret = ['org.bluez.Adapter1']"));
    QVERIFY(bluez.ready);
    QTest::ignoreMessage(QtWarningMsg, "BluetoothAdapter: unable to find an adapter: Unexpected reply "
                                       "signature: got \"as\", expected \"a{oa{sa{sv}}}\"");
    QCOMPARE(BluetoothAdapter::defaultAdapter(), nullptr);
}

void TestBluetoothAdapter::firstAdapterIsTheDefault()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addSecondAdapter());
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(adapter);
    QVERIFY(bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci1")}));
    QVERIFY(bluez.addDevice(peerAddress));
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.created.size(), 1);
    QVERIFY(adapter->isValid());
}

void TestBluetoothAdapter::poweredAdapterIsTheDefault()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addSecondAdapter() && bluez.switchOff());
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(adapter);
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(bluez.callCount(BlueZMock::secondAdapterPath, QStringLiteral("StartDiscovery")), 1);
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::everyDefaultAdapterIsNewAndWithoutParent()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> first(BluetoothAdapter::defaultAdapter());
    const std::unique_ptr<BluetoothAdapter> second(BluetoothAdapter::defaultAdapter());
    QVERIFY(first && second && first != second);
    QVERIFY(first->isValid() && second->isValid());
    QCOMPARE(first->parent(), nullptr);
}

void TestBluetoothAdapter::answerBringsTheDefaultAdapter()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    QObject owner;
    QPointer<BluetoothAdapter> kept;
    QPointer<BluetoothAdapter> left;
    PendingAnswer *first = BluetoothAdapter::defaultAdapterAsync(&owner);
    QCOMPARE(first->parent(), &owner);
    QVERIFY(!first->isFinished());
    connect(first, &PendingAnswer::finished, &owner, [&](const PendingAnswer *answer) {
        QVERIFY(!answer->isError());
        kept = answer->value().value<BluetoothAdapter *>();
        kept->setParent(&owner);
    });
    PendingAnswer *second = BluetoothAdapter::defaultAdapterAsync();
    QCOMPARE(second->parent(), QCoreApplication::instance());
    const QPointer<PendingAnswer> answered = second;
    connect(second, &PendingAnswer::finished, &owner,
            [&](const PendingAnswer *answer) { left = answer->value().value<BluetoothAdapter *>(); });
    QTRY_VERIFY(!answered);
    QVERIFY(!left);
    QVERIFY(kept && kept->isValid());

    // It is one that works.
    const Outcome outcome(kept);
    kept->startCreatingDevice(device(QStringLiteral("nonsense")));
    QTRY_VERIFY(!outcome.isOpen());
    bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")});
    QTRY_VERIFY(!kept->isValid());
}

void TestBluetoothAdapter::answerWithoutBlueZIsNoAdapter()
{
    const ActivatableService bluez(BlueZMock::busName);
    QVERIFY(bluez.ready);
    QObject owner;
    bool answered = false;
    connect(BluetoothAdapter::defaultAdapterAsync(&owner), &PendingAnswer::finished, &owner,
            [&](const PendingAnswer *answer) {
                answered = true;
                QVERIFY(!answer->isError());
                QCOMPARE(answer->value().value<BluetoothAdapter *>(), nullptr);
            });
    QTRY_VERIFY(answered);
    QVERIFY(!bluez.isStarted());
}

void TestBluetoothAdapter::nonsenseIsTheAnswersError()
{
    OddBlueZ bluez(QStringLiteral("as"), QStringLiteral("ret = ['org.bluez.Adapter1']"));
    QVERIFY(bluez.ready);
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(
                          QStringLiteral("^BluetoothAdapter: unable to find an adapter: Unexpected reply ")));
    QObject owner;
    QString error;
    connect(BluetoothAdapter::defaultAdapterAsync(&owner), &PendingAnswer::finished, &owner,
            [&](const PendingAnswer *answer) {
                error = answer->errorName();
                QCOMPARE(answer->value().value<BluetoothAdapter *>(), nullptr);
            });
    QTRY_COMPARE(error, QStringLiteral("org.freedesktop.DBus.Error.InvalidSignature"));
}

void TestBluetoothAdapter::knownDeviceIsCreatedFromTheEventLoop()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(QStringLiteral("00:00:00:00:00:01")) &&
            bluez.addDevice(peerAddress));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(adapter);
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
    QCOMPARE(outcome.failed, QStringList());
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::deviceThatAnotherAdapterKnowsIsFound()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addSecondAdapter() && bluez.addDeviceElsewhere(peerAddress));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Elsewhere")));
}

void TestBluetoothAdapter::adaptersOwnDeviceComesBeforeAnothers()
{
    // The adapter in use is the second, so that the other's device would be found first.
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addSecondAdapter() && bluez.switchOff() && bluez.addDevice(peerAddress) &&
            bluez.addDeviceElsewhere(peerAddress));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Elsewhere")));
}

void TestBluetoothAdapter::deviceThatExistsAlreadyIsCreated()
{
    BlueZMock bluez;
    QVERIFY(
        bluez.ready &&
        bluez.offerConnectDevice(QStringLiteral(
            "self.AddDevice('hci0', args[0]['Address'], 'Known')\n"
            "raise dbus.exceptions.DBusException('Already Exists', name='org.bluez.Error.AlreadyExists')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Known")));
    QCOMPARE(outcome.failed, QStringList());
}

void TestBluetoothAdapter::addressIsSpelledAsItWasAsked()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(peerAddress));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress.toLower()));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:aa:bb:cc Peer")));
}

void TestBluetoothAdapter::unknownDeviceIsConnected()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.offerConnectDevice(
                               QStringLiteral("ret = self.AddDevice('hci0', args[0]['Address'], 'New')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC New")));
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("ConnectDevice")), 1);
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::failureCarriesBlueZWords()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready &&
            bluez.offerConnectDevice(QStringLiteral(
                "raise dbus.exceptions.DBusException('Host is down', name='org.bluez.Error.Failed')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Host is down")));
    QCOMPARE(outcome.created, QStringList());
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::deviceThatAppearsButDoesNotConnectFails()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready &&
            bluez.offerConnectDevice(QStringLiteral(
                "self.AddDevice('hci0', args[0]['Address'], 'New')\n"
                "raise dbus.exceptions.DBusException('Host is down', name='org.bluez.Error.Failed')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Host is down")));
    QCOMPARE(outcome.created, QStringList());
}

void TestBluetoothAdapter::deviceThatBlueZDoesNotListFails()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.offerConnectDevice(QStringLiteral("ret = '/org/bluez/hci0/nowhere'")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The device is gone")));
}

void TestBluetoothAdapter::deviceIsDiscoveredWhereBlueZCannotConnect()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(outcome.isOpen());
    QVERIFY(bluez.addDevice(peerAddress));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
    QTRY_VERIFY(!bluez.isDiscovering());
    QCOMPARE(outcome.failed, QStringList());
}

void TestBluetoothAdapter::discoveryLooksForDevicesOfBothTransports()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(bluez.isDiscovering());
    const QList<QVariantList> filters =
        bluez.callsOf(BlueZMock::adapterPath, QStringLiteral("SetDiscoveryFilter"));
    QCOMPARE(filters.size(), 1);
    QCOMPARE(qdbus_cast<QVariantMap>(filters[0].value(0)),
             (QVariantMap{{QStringLiteral("Transport"), QStringLiteral("auto")}}));
}

void TestBluetoothAdapter::otherDevicesAreIgnored()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addSecondAdapter());
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(bluez.addDevice(QStringLiteral("00:00:00:00:00:01")));
    QVERIFY(bluez.addDeviceElsewhere(peerAddress));
    // A nonsensical answer, and an object that is not a device.
    QVERIFY(bluez
                .call(QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Mock"),
                      QStringLiteral("EmitSignal"),
                      {objectManager, QStringLiteral("InterfacesAdded"), QStringLiteral("s"),
                       QVariantList{peerAddress}})
                .type() == QDBusMessage::ReplyMessage);
    QVERIFY(bluez.addDevice(peerAddress));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
}

void TestBluetoothAdapter::refusedDiscoveryFails()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && refuseDiscovery(&bluez));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Resource Not Ready")));
}

void TestBluetoothAdapter::refusedListOfDevicesFails()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    const QDBusMessage added = bluez.addMethod(
        QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.ObjectManager"),
        QStringLiteral("GetManagedObjects"), QString(), QStringLiteral("a{oa{sa{sv}}}"),
        QStringLiteral("raise dbus.exceptions.DBusException('No list', name='org.bluez.Error.Failed')"));
    QCOMPARE(added.type(), QDBusMessage::ReplyMessage);
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("No list")));
}

void TestBluetoothAdapter::deviceThatComesAfterAFailureIsNotReported()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && refuseDiscovery(&bluez));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    // The failure's slot keeps the one that failed from being deleted while a second attempt finds the
    // device.
    bool found = false;
    connect(adapter.get(), &BluetoothAdapter::deviceCreationFailed, this, [&] {
        QVERIFY(bluez.addDevice(peerAddress));
        adapter->startCreatingDevice(device(peerAddress));
        found = QTest::qWaitFor([&] { return !outcome.created.isEmpty(); });
    });
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(found);
    QCOMPARE(outcome.failed, QStringList(QStringLiteral("Resource Not Ready")));
    QCOMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
}

void TestBluetoothAdapter::runningDiscoveryIsUsed()
{
    BlueZMock bluez;
    QVERIFY(
        bluez.ready &&
        bluez.addAdapterMethod(
            QStringLiteral("StartDiscovery"), QString(), QString(),
            QStringLiteral(
                "raise dbus.exceptions.DBusException('In progress', name='org.bluez.Error.InProgress')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_COMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 1);
    QVERIFY(bluez.addDevice(peerAddress));
    QTRY_COMPARE(outcome.created.size(), 1);
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StopDiscovery")), 0);
}

void TestBluetoothAdapter::timeLimitEndsDiscovery()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    auto *creation = new DeviceCreation(BlueZMock::busName, BlueZMock::adapterPath, peerAddress, 3s, this);
    QSignalSpy failed(creation, &DeviceCreation::failed);
    QSignalSpy deleted(creation, &QObject::destroyed);
    creation->start();
    QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, 30000);
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("The device was not found in time"));
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 1);
    QVERIFY(!bluez.isDiscovering());
    QTRY_COMPARE(deleted.size(), 1);
}

void TestBluetoothAdapter::timeLimitEndsASlowConnection()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.offerConnectDevice(QStringLiteral("import time; time.sleep(20)")));
    auto *creation = new DeviceCreation(BlueZMock::busName, BlueZMock::adapterPath, peerAddress, 1s, this);
    QSignalSpy failed(creation, &DeviceCreation::failed);
    QElapsedTimer timer;
    timer.start();
    creation->start();
    QTRY_COMPARE(failed.size(), 1);
    QVERIFY(timer.elapsed() < 10000);
}

void TestBluetoothAdapter::deletionEndsDiscoveryWithoutSignal()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(bluez.isDiscovering());
    adapter.reset();
    QTRY_VERIFY(!bluez.isDiscovering());
    QVERIFY(outcome.isOpen());
}

void TestBluetoothAdapter::deletionByTheReceiverIsFine()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(peerAddress));
    BluetoothAdapter *adapter = BluetoothAdapter::defaultAdapter();
    bool created = false;
    connect(adapter, &BluetoothAdapter::deviceCreated, this, [&] {
        created = true;
        delete adapter;
    });
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(created);
}

void TestBluetoothAdapter::vanishingAdapterFails()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The Bluetooth adapter is gone")));
    QVERIFY(!adapter->isValid());
}

void TestBluetoothAdapter::endOfBlueZFails()
{
    auto bluez = std::make_unique<BlueZMock>();
    QVERIFY(bluez->ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QTRY_VERIFY(bluez->isDiscovering());
    bluez.reset();
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The Bluetooth adapter is gone")));
    QVERIFY(!adapter->isValid());
}

void TestBluetoothAdapter::vanishedAdapterStaysInvalid()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    QTRY_VERIFY(!adapter->isValid());
    QVERIFY(bluez.mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci0"), QStringLiteral("phone")}));
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(peerAddress));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The Bluetooth adapter is gone")));
}

void TestBluetoothAdapter::whatIsNoAddressFailsFromTheEventLoop()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(QString()));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Not a Bluetooth address")));
}

// Others connect to the signals by these strings.
void TestBluetoothAdapter::signalsCarryTheirSignatures()
{
    const QMetaObject &meta = BluetoothAdapter::staticMetaObject;
    QVERIFY(meta.indexOfSignal("deviceCreated(BluetoothDevice)") >= 0);
    QVERIFY(meta.indexOfSignal("deviceCreationFailed(QString)") >= 0);
}

QTEST_GUILESS_MAIN(TestBluetoothAdapter)
#include "tst_bluetoothadapter.moc"
