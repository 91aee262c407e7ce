// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "dbusmock.h"
#include "devicecreation_p.h"

#include <BluetoothAdapter>
#include <memory>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using namespace std::chrono_literals;
using ConnUi::BluetoothAdapter;
using ConnUi::BluetoothDevice;
using ConnUi::DeviceCreation;

namespace {

const auto Service = QStringLiteral("org.bluez");
const auto AdapterPath = QStringLiteral("/org/bluez/hci0");
const auto AdapterInterface = QStringLiteral("org.bluez.Adapter1");
const auto Mock = QStringLiteral("org.bluez.Mock");
const auto ObjectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const auto Address = QStringLiteral("00:11:22:AA:BB:CC");

BluetoothDevice device(const QString &address)
{
    return BluetoothDevice({{QStringLiteral("Address"), address}});
}

// BlueZ with the adapter hci0, as it is without its experimental interfaces.
struct BlueZ : DBusMock
{
    BlueZ() : DBusMock(Service, {QStringLiteral("-t"), QStringLiteral("bluez5")})
    {
        ready = waitForRegistered() &&
                mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci0"), QStringLiteral("phone")});
    }

    bool mock(const QString &method, const QVariantList &arguments) const
    {
        return call(QStringLiteral("/"), Mock, method, arguments).type() == QDBusMessage::ReplyMessage;
    }

    bool addDevice(const QString &address) const
    {
        return mock(QStringLiteral("AddDevice"), {QStringLiteral("hci0"), address, QStringLiteral("Peer")});
    }

    bool addAdapterMethod(const QString &name, const QString &in, const QString &out,
                          const QString &body) const
    {
        return addMethod(AdapterPath, AdapterInterface, name, in, out, body).type() ==
               QDBusMessage::ReplyMessage;
    }

    bool offerConnectDevice(const QString &body) const
    {
        return addAdapterMethod(QStringLiteral("ConnectDevice"), QStringLiteral("a{sv}"), QStringLiteral("o"),
                                body);
    }

    bool isDiscovering() const
    {
        const QDBusReply<QVariant> reply =
            call(AdapterPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                 {AdapterInterface, QStringLiteral("Discovering")});
        return reply.value().toBool();
    }

    bool ready;
};

// BlueZ whose list of objects is what the test says.
struct OddBlueZ : DBusMock
{
    explicit OddBlueZ(const QString &out, const QString &body)
        : DBusMock(Service, {Service, QStringLiteral("/"), ObjectManager})
    {
        ready = waitForRegistered() && addMethod(QStringLiteral("/"), ObjectManager,
                                                 QStringLiteral("GetManagedObjects"), QString(), out, body)
                                               .type() == QDBusMessage::ReplyMessage;
    }

    bool ready;
};

// What an adapter has announced.
struct Outcome
{
    explicit Outcome(BluetoothAdapter *adapter)
    {
        QObject::connect(adapter, &BluetoothAdapter::deviceCreated, &context,
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
    void blueZWithoutAdapterIsNoAdapter();
    void slowBlueZIsNoAdapterInTime();
    void nonsenseIsNoAdapter();
    void firstAdapterIsTheDefault();
    void everyDefaultAdapterIsNewAndWithoutParent();
    void knownDeviceIsCreatedFromTheEventLoop();
    void addressIsSpelledAsItWasAsked();
    void unknownDeviceIsConnected();
    void failureCarriesBlueZWords();
    void deviceThatAppearsButDoesNotConnectFails();
    void deviceThatBlueZDoesNotListFails();
    void deviceIsDiscoveredWhereBlueZCannotConnect();
    void otherDevicesAreIgnored();
    void refusedDiscoveryFails();
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

void TestBluetoothAdapter::blueZWithoutAdapterIsNoAdapter()
{
    BlueZ bluez;
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
    QTest::ignoreMessage(QtWarningMsg,
                         "BluetoothAdapter: unable to find an adapter: unexpected answer of type \"as\"");
    QCOMPARE(BluetoothAdapter::defaultAdapter(), nullptr);
}

void TestBluetoothAdapter::firstAdapterIsTheDefault()
{
    BlueZ bluez;
    QVERIFY(bluez.ready &&
            bluez.mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci1"), QStringLiteral("stick")}));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(adapter);
    QVERIFY(bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci1")}));
    QVERIFY(bluez.addDevice(Address));
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_COMPARE(outcome.created.size(), 1);
    QVERIFY(adapter->isValid());
}

void TestBluetoothAdapter::everyDefaultAdapterIsNewAndWithoutParent()
{
    BlueZ bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> first(BluetoothAdapter::defaultAdapter());
    const std::unique_ptr<BluetoothAdapter> second(BluetoothAdapter::defaultAdapter());
    QVERIFY(first && second && first != second);
    QVERIFY(first->isValid() && second->isValid());
    QCOMPARE(first->parent(), nullptr);
}

void TestBluetoothAdapter::knownDeviceIsCreatedFromTheEventLoop()
{
    BlueZ bluez;
    QVERIFY(bluez.ready && bluez.addDevice(QStringLiteral("00:00:00:00:00:01")) && bluez.addDevice(Address));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(adapter);
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
    QCOMPARE(outcome.failed, QStringList());
    QCOMPARE(bluez.callCount(AdapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::addressIsSpelledAsItWasAsked()
{
    BlueZ bluez;
    QVERIFY(bluez.ready && bluez.addDevice(Address));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address.toLower()));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:aa:bb:cc Peer")));
}

void TestBluetoothAdapter::unknownDeviceIsConnected()
{
    BlueZ bluez;
    QVERIFY(bluez.ready && bluez.offerConnectDevice(
                               QStringLiteral("ret = self.AddDevice('hci0', args[0]['Address'], 'New')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC New")));
    QCOMPARE(bluez.callCount(AdapterPath, QStringLiteral("ConnectDevice")), 1);
    QCOMPARE(bluez.callCount(AdapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::failureCarriesBlueZWords()
{
    BlueZ bluez;
    QVERIFY(bluez.ready &&
            bluez.offerConnectDevice(QStringLiteral(
                "raise dbus.exceptions.DBusException('Host is down', name='org.bluez.Error.Failed')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Host is down")));
    QCOMPARE(outcome.created, QStringList());
    QCOMPARE(bluez.callCount(AdapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestBluetoothAdapter::deviceThatAppearsButDoesNotConnectFails()
{
    BlueZ bluez;
    QVERIFY(bluez.ready &&
            bluez.offerConnectDevice(QStringLiteral(
                "self.AddDevice('hci0', args[0]['Address'], 'New')\n"
                "raise dbus.exceptions.DBusException('Host is down', name='org.bluez.Error.Failed')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Host is down")));
    QCOMPARE(outcome.created, QStringList());
}

void TestBluetoothAdapter::deviceThatBlueZDoesNotListFails()
{
    BlueZ bluez;
    QVERIFY(bluez.ready && bluez.offerConnectDevice(QStringLiteral("ret = '/org/bluez/hci0/nowhere'")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The device is gone")));
}

void TestBluetoothAdapter::deviceIsDiscoveredWhereBlueZCannotConnect()
{
    BlueZ bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(outcome.isOpen());
    QVERIFY(bluez.addDevice(Address));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
    QTRY_VERIFY(!bluez.isDiscovering());
    QCOMPARE(outcome.failed, QStringList());
}

void TestBluetoothAdapter::otherDevicesAreIgnored()
{
    BlueZ bluez;
    QVERIFY(bluez.ready &&
            bluez.mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci1"), QStringLiteral("stick")}));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(bluez.addDevice(QStringLiteral("00:00:00:00:00:01")));
    QVERIFY(bluez.mock(QStringLiteral("AddDevice"),
                       {QStringLiteral("hci1"), Address, QStringLiteral("Elsewhere")}));
    // An answer of nonsense, and a thing that is no device.
    QVERIFY(bluez
                .call(QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Mock"),
                      QStringLiteral("EmitSignal"),
                      {ObjectManager, QStringLiteral("InterfacesAdded"), QStringLiteral("s"),
                       QVariantList{Address}})
                .type() == QDBusMessage::ReplyMessage);
    QVERIFY(bluez.addDevice(Address));
    QTRY_COMPARE(outcome.created, QStringList(QStringLiteral("00:11:22:AA:BB:CC Peer")));
}

void TestBluetoothAdapter::refusedDiscoveryFails()
{
    BlueZ bluez;
    QVERIFY(bluez.ready &&
            bluez.addAdapterMethod(QStringLiteral("StartDiscovery"), QString(), QString(),
                                   QStringLiteral("raise dbus.exceptions.DBusException('Resource Not Ready', "
                                                  "name='org.bluez.Error.NotReady')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("Resource Not Ready")));
}

void TestBluetoothAdapter::runningDiscoveryIsUsed()
{
    BlueZ bluez;
    QVERIFY(
        bluez.ready &&
        bluez.addAdapterMethod(
            QStringLiteral("StartDiscovery"), QString(), QString(),
            QStringLiteral(
                "raise dbus.exceptions.DBusException('In progress', name='org.bluez.Error.InProgress')")));
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_COMPARE(bluez.callCount(AdapterPath, QStringLiteral("StartDiscovery")), 1);
    QVERIFY(bluez.addDevice(Address));
    QTRY_COMPARE(outcome.created.size(), 1);
    QCOMPARE(bluez.callCount(AdapterPath, QStringLiteral("StopDiscovery")), 0);
}

void TestBluetoothAdapter::timeLimitEndsDiscovery()
{
    BlueZ bluez;
    QVERIFY(bluez.ready);
    auto *creation = new DeviceCreation(AdapterPath, Address, 3s, this);
    QSignalSpy failed(creation, &DeviceCreation::failed);
    QSignalSpy deleted(creation, &QObject::destroyed);
    creation->start();
    QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, 30000);
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("The device was not found in time"));
    QCOMPARE(bluez.callCount(AdapterPath, QStringLiteral("StartDiscovery")), 1);
    QVERIFY(!bluez.isDiscovering());
    QTRY_COMPARE(deleted.size(), 1);
}

void TestBluetoothAdapter::timeLimitEndsASlowConnection()
{
    BlueZ bluez;
    QVERIFY(bluez.ready && bluez.offerConnectDevice(QStringLiteral("import time; time.sleep(20)")));
    auto *creation = new DeviceCreation(AdapterPath, Address, 1s, this);
    QSignalSpy failed(creation, &DeviceCreation::failed);
    QElapsedTimer timer;
    timer.start();
    creation->start();
    QTRY_COMPARE(failed.size(), 1);
    QVERIFY(timer.elapsed() < 10000);
}

void TestBluetoothAdapter::deletionEndsDiscoveryWithoutSignal()
{
    BlueZ bluez;
    QVERIFY(bluez.ready);
    std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_VERIFY(bluez.isDiscovering());
    adapter.reset();
    QTRY_VERIFY(!bluez.isDiscovering());
    QVERIFY(outcome.isOpen());
}

void TestBluetoothAdapter::deletionByTheReceiverIsFine()
{
    BlueZ bluez;
    QVERIFY(bluez.ready && bluez.addDevice(Address));
    BluetoothAdapter *adapter = BluetoothAdapter::defaultAdapter();
    bool created = false;
    connect(adapter, &BluetoothAdapter::deviceCreated, this, [&] {
        created = true;
        delete adapter;
    });
    adapter->startCreatingDevice(device(Address));
    QTRY_VERIFY(created);
}

void TestBluetoothAdapter::vanishingAdapterFails()
{
    BlueZ bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The Bluetooth adapter is gone")));
    QVERIFY(!adapter->isValid());
}

void TestBluetoothAdapter::endOfBlueZFails()
{
    auto bluez = std::make_unique<BlueZ>();
    QVERIFY(bluez->ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QTRY_VERIFY(bluez->isDiscovering());
    bluez.reset();
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The Bluetooth adapter is gone")));
    QVERIFY(!adapter->isValid());
}

void TestBluetoothAdapter::vanishedAdapterStaysInvalid()
{
    BlueZ bluez;
    QVERIFY(bluez.ready);
    const std::unique_ptr<BluetoothAdapter> adapter(BluetoothAdapter::defaultAdapter());
    QVERIFY(bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    QTRY_VERIFY(!adapter->isValid());
    QVERIFY(bluez.mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci0"), QStringLiteral("phone")}));
    Outcome outcome(adapter.get());
    adapter->startCreatingDevice(device(Address));
    QVERIFY(outcome.isOpen());
    QTRY_COMPARE(outcome.failed, QStringList(QStringLiteral("The Bluetooth adapter is gone")));
}

void TestBluetoothAdapter::whatIsNoAddressFailsFromTheEventLoop()
{
    BlueZ bluez;
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
