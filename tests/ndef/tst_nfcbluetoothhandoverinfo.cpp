// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <memory>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QTimer>
#include <QtTest>

#include <NfcBluetoothHandoverInfo>

#include "bluezmock.h"
#include "busmonitor.h"
#include "ndef/nfcbluetoothhandoverinfo_p.h"

using ConnUi::BluetoothDevice;
using ConnUi::BluetoothHandoverData;
using ConnUi::NfcBluetoothHandoverInfo;
using ConnUi::NfcBluetoothHandoverInfoPrivate;

namespace {

const auto peerAddress = QStringLiteral("00:11:22:AA:BB:CC");

QVariant structure(const QVariantList &members)
{
    QDBusArgument argument;
    argument.beginStructure();
    for (const QVariant &member : members)
        argument.appendVariant(member);
    argument.endStructure();
    return QVariant::fromValue(argument);
}

QVariant path()
{
    return QVariant::fromValue(QDBusObjectPath(QStringLiteral("/carrier")));
}

QVariant handover(const QString &address = peerAddress)
{
    return structure({path(), address});
}

QByteArray failure(const QString &reason, const QString &address = peerAddress)
{
    return QStringLiteral("NfcBluetoothHandoverInfo: Unable to create device %1: %2")
        .arg(address, reason)
        .toUtf8();
}

// Does something in an event loop that runs elsewhere, as soon as it may.
class When : public QTimer
{
public:
    When(const std::function<bool()> &condition, const std::function<void()> &action)
    {
        callOnTimeout([=, this] {
            if (condition()) {
                stop();
                action();
            }
        });
        start(10);
    }
};

} // namespace

class TestNfcBluetoothHandoverInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void addressIsReadFromTheBus();
    void variantCanBeReadMoreThanOnce();
    void furtherMembersDoNotMatter_data();
    void furtherMembersDoNotMatter();
    void otherDataHasNoAddress_data();
    void otherDataHasNoAddress();
    void unsentArgumentHasNoAddress_data();
    void unsentArgumentHasNoAddress();
    void typeIsKnownToTheBus();
    void withoutBlueZThereIsNoDevice();
    void withoutAdapterThereIsNoDevice();
    void knownDeviceIsReturned();
    void addressInSmallLettersIsFound();
    void laterCallsDoNotContactBlueZ();
    void unknownDeviceIsDiscovered();
    void failureIsLoggedAndTheNextCallTriesAgain();
    void withoutAddressThereIsNoDevice();
    void adapterThatVanishesInTheWaitEndsIt();
    void blueZThatEndsInTheWaitEndsIt();
    void deletionInTheWaitEndsItAndTheDiscovery();
    void callInTheWaitReturnsTheSameDevice();

private:
    QVariant overTheBus(const QVariant &info);

    const QString peer = QStringLiteral("peer");
    QVariant sent;

public Q_SLOTS:
    void received(const QDBusVariant &info) { sent = info.variant(); }
};

void TestNfcBluetoothHandoverInfo::initTestCase()
{
    qRegisterMetaType<QDBusVariant>();
    qRegisterMetaType<QDBusObjectPath>();
    QVERIFY(QDBusConnection::systemBus().connect(QString(), QStringLiteral("/info"),
                                                 QStringLiteral("org.example.Info"), QStringLiteral("Info"),
                                                 this, SLOT(received(QDBusVariant))));
    QVERIFY(QDBusConnection::connectToBus(QDBusConnection::SystemBus, peer).isConnected());
}

void TestNfcBluetoothHandoverInfo::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(peer);
}

void TestNfcBluetoothHandoverInfo::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

// Returns what arrives on this connection of what another one sends as a variant.
QVariant TestNfcBluetoothHandoverInfo::overTheBus(const QVariant &info)
{
    sent.clear();
    auto signal = QDBusMessage::createSignal(QStringLiteral("/info"), QStringLiteral("org.example.Info"),
                                             QStringLiteral("Info"));
    signal << QVariant::fromValue(QDBusVariant(info));
    QDBusConnection(peer).send(signal);
    (void)QTest::qWaitFor([this] { return sent.isValid(); });
    return sent;
}

void TestNfcBluetoothHandoverInfo::addressIsReadFromTheBus()
{
    const QVariant info = overTheBus(handover());
    QCOMPARE(info.metaType(), QMetaType::fromType<QDBusArgument>());
    QCOMPARE(NfcBluetoothHandoverInfo(info).deviceAddress(), peerAddress);
    QCOMPARE(NfcBluetoothHandoverInfoPrivate(info).data.path.path(), QStringLiteral("/carrier"));

    // A text that is not an address is handed out unchanged, an empty one included.
    for (const QString &address : {QString(), QStringLiteral("peer"), QString(10000, QLatin1Char('0'))})
        QCOMPARE(NfcBluetoothHandoverInfo(overTheBus(handover(address))).deviceAddress(), address);
}

void TestNfcBluetoothHandoverInfo::variantCanBeReadMoreThanOnce()
{
    const QVariant info = overTheBus(handover());
    QCOMPARE(NfcBluetoothHandoverInfo(info).deviceAddress(), peerAddress);
    QCOMPARE(qdbus_cast<BluetoothHandoverData>(info).address, peerAddress);
    QCOMPARE(NfcBluetoothHandoverInfo(info).deviceAddress(), peerAddress);
    QCOMPARE(qdbus_cast<BluetoothHandoverData>(info).path.path(), QStringLiteral("/carrier"));
}

void TestNfcBluetoothHandoverInfo::furtherMembersDoNotMatter_data()
{
    QTest::addColumn<QVariant>("info");
    QTest::newRow("(oss)") << structure({path(), peerAddress, QStringLiteral("name")});
    QTest::newRow("(osi)") << structure({path(), peerAddress, 1});
    QTest::newRow("(osas)") << structure({path(), peerAddress, QStringList{peerAddress}});
    QTest::newRow("(osv)") << structure({path(), peerAddress, QVariant::fromValue(QDBusVariant(1))});
    QTest::newRow("(os(os))") << structure({path(), peerAddress, handover(QStringLiteral("inner"))});
}

void TestNfcBluetoothHandoverInfo::furtherMembersDoNotMatter()
{
    QFETCH(QVariant, info);
    QCOMPARE(NfcBluetoothHandoverInfo(overTheBus(info)).deviceAddress(), peerAddress);
}

void TestNfcBluetoothHandoverInfo::otherDataHasNoAddress_data()
{
    QTest::addColumn<QVariant>("info");
    QTest::newRow("string") << QVariant(peerAddress);
    QTest::newRow("number") << QVariant(1);
    QTest::newRow("boolean") << QVariant(true);
    QTest::newRow("object path") << path();
    QTest::newRow("bytes") << QVariant(QByteArray("\0\1\2", 3));
    QTest::newRow("strings") << QVariant(QStringList{peerAddress});
    QTest::newRow("dictionary") << QVariant(QVariantMap{{QStringLiteral("Address"), peerAddress}});
    QTest::newRow("variant") << QVariant::fromValue(QDBusVariant(handover()));
    QTest::newRow("(ss)") << structure({QStringLiteral("/carrier"), peerAddress});
    QTest::newRow("(so)") << structure({peerAddress, path()});
    QTest::newRow("(o)") << structure({path()});
    QTest::newRow("(s)") << structure({peerAddress});
    QTest::newRow("(oo)") << structure({path(), path()});
    QTest::newRow("(oi)") << structure({path(), 1});
    QTest::newRow("(oas)") << structure({path(), QStringList{peerAddress}});
    QTest::newRow("(ov)") << structure({path(), QVariant::fromValue(QDBusVariant(peerAddress))});
    QTest::newRow("((os))") << structure({handover()});
    QDBusArgument array;
    array << QList<BluetoothHandoverData>{{QDBusObjectPath(QStringLiteral("/carrier")), peerAddress}};
    QTest::newRow("a(os)") << QVariant::fromValue(array);
    QTest::newRow("ao") << QVariant::fromValue(
        QList<QDBusObjectPath>{QDBusObjectPath(QStringLiteral("/carrier"))});
}

void TestNfcBluetoothHandoverInfo::otherDataHasNoAddress()
{
    QFETCH(QVariant, info);
    const QVariant received = overTheBus(info);
    QVERIFY(received.isValid());
    const NfcBluetoothHandoverInfoPrivate data(received);
    QCOMPARE(data.data.address, QString());
    QCOMPARE(data.data.path.path(), QString());
    QCOMPARE(NfcBluetoothHandoverInfo(received).deviceAddress(), QString());
}

void TestNfcBluetoothHandoverInfo::unsentArgumentHasNoAddress_data()
{
    QTest::addColumn<QVariant>("info");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("string") << QVariant(peerAddress);
    QTest::newRow("data") << QVariant::fromValue(
        BluetoothHandoverData{QDBusObjectPath(QStringLiteral("/carrier")), peerAddress});
    QTest::newRow("empty argument") << QVariant::fromValue(QDBusArgument());
    QTest::newRow("written structure") << handover();
    QTest::newRow("empty structure") << structure({});
}

void TestNfcBluetoothHandoverInfo::unsentArgumentHasNoAddress()
{
    QFETCH(QVariant, info);
    QCOMPARE(NfcBluetoothHandoverInfo(info).deviceAddress(), QString());
}

void TestNfcBluetoothHandoverInfo::typeIsKnownToTheBus()
{
    const NfcBluetoothHandoverInfo info{QVariant()};
    const auto type = QMetaType::fromName("ConnUi::BluetoothHandoverData");
    QCOMPARE(type, QMetaType::fromType<BluetoothHandoverData>());
    QCOMPARE(QByteArray(QDBusMetaType::typeToSignature(type)), QByteArray("(os)"));
}

void TestNfcBluetoothHandoverInfo::withoutBlueZThereIsNoDevice()
{
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    QTest::ignoreMessage(QtWarningMsg, "NfcBluetoothHandoverInfo: No Bluetooth adapter for creating device");
    const BluetoothDevice device = info.device();
    QVERIFY(!device.isValid());
    QCOMPARE(device.address(), QString());
}

void TestNfcBluetoothHandoverInfo::withoutAdapterThereIsNoDevice()
{
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    QTest::ignoreMessage(QtWarningMsg, "NfcBluetoothHandoverInfo: No Bluetooth adapter for creating device");
    QVERIFY(!info.device().isValid());

    QVERIFY(bluez.mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci0"), QStringLiteral("phone")}));
    QVERIFY(bluez.addDevice(peerAddress));
    QVERIFY(info.device().isValid());
}

void TestNfcBluetoothHandoverInfo::knownDeviceIsReturned()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(QStringLiteral("00:00:00:00:00:01")) &&
            bluez.addDevice(peerAddress));
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    const BluetoothDevice device = info.device();
    QVERIFY(device.isValid());
    QCOMPARE(device.address(), peerAddress);
    QCOMPARE(device.name(), QStringLiteral("Peer"));
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 0);
}

void TestNfcBluetoothHandoverInfo::addressInSmallLettersIsFound()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(peerAddress));
    const NfcBluetoothHandoverInfo info(overTheBus(handover(peerAddress.toLower())));
    QCOMPARE(info.device().name(), QStringLiteral("Peer"));
}

void TestNfcBluetoothHandoverInfo::laterCallsDoNotContactBlueZ()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(peerAddress));
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    QVERIFY(info.device().isValid());
    BusMonitor monitor;
    for (int i = 0; i < 3; ++i)
        QCOMPARE(info.device().name(), QStringLiteral("Peer"));
    QCOMPARE(monitor.takeCalls(), QStringList());
}

void TestNfcBluetoothHandoverInfo::unknownDeviceIsDiscovered()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    const When discovering([&] { return bluez.isDiscovering(); },
                           [&] { QVERIFY(bluez.addDevice(peerAddress)); });
    QCOMPARE(info.device().name(), QStringLiteral("Peer"));
    QTRY_VERIFY(!bluez.isDiscovering());
}

void TestNfcBluetoothHandoverInfo::failureIsLoggedAndTheNextCallTriesAgain()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready &&
            bluez.offerConnectDevice(QStringLiteral(
                "raise dbus.exceptions.DBusException('Host is down', name='org.bluez.Error.Failed')")));
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    QTest::ignoreMessage(QtWarningMsg, failure(QStringLiteral("Host is down")).constData());
    QVERIFY(!info.device().isValid());
    QVERIFY(bluez.addDevice(peerAddress));
    QVERIFY(info.device().isValid());
}

void TestNfcBluetoothHandoverInfo::withoutAddressThereIsNoDevice()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const NfcBluetoothHandoverInfo info{QVariant()};
    QTest::ignoreMessage(QtWarningMsg,
                         failure(QStringLiteral("Not a Bluetooth address"), QString()).constData());
    QVERIFY(!info.device().isValid());
}

void TestNfcBluetoothHandoverInfo::adapterThatVanishesInTheWaitEndsIt()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    const QByteArray gone = failure(QStringLiteral("The Bluetooth adapter is gone"));
    {
        const When discovering(
            [&] { return bluez.isDiscovering(); },
            [&] { bluez.mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}); });
        QTest::ignoreMessage(QtWarningMsg, gone.constData());
        QVERIFY(!info.device().isValid());
    }
    // The adapter that was found stays the one that is asked.
    QVERIFY(bluez.mock(QStringLiteral("AddAdapter"), {QStringLiteral("hci0"), QStringLiteral("phone")}));
    QVERIFY(bluez.addDevice(peerAddress));
    QTest::ignoreMessage(QtWarningMsg, gone.constData());
    QVERIFY(!info.device().isValid());
}

void TestNfcBluetoothHandoverInfo::blueZThatEndsInTheWaitEndsIt()
{
    auto bluez = std::make_unique<BlueZMock>();
    QVERIFY(bluez->ready);
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    const When discovering([&] { return bluez && bluez->isDiscovering(); }, [&] { bluez.reset(); });
    QTest::ignoreMessage(QtWarningMsg, failure(QStringLiteral("The Bluetooth adapter is gone")).constData());
    QVERIFY(!info.device().isValid());
}

void TestNfcBluetoothHandoverInfo::deletionInTheWaitEndsItAndTheDiscovery()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    auto *info = new NfcBluetoothHandoverInfo(overTheBus(handover()));
    const When discovering([&] { return bluez.isDiscovering(); }, [&] { delete info; });
    QVERIFY(!info->device().isValid());
    QTRY_VERIFY(!bluez.isDiscovering());
}

void TestNfcBluetoothHandoverInfo::callInTheWaitReturnsTheSameDevice()
{
    BlueZMock bluez;
    QVERIFY(bluez.ready);
    const NfcBluetoothHandoverInfo info(overTheBus(handover()));
    BluetoothDevice inner;
    const When discovering([&] { return bluez.isDiscovering(); },
                           [&] {
                               QTimer::singleShot(0, [&] { bluez.addDevice(peerAddress); });
                               inner = info.device();
                           });
    QCOMPARE(info.device().name(), QStringLiteral("Peer"));
    QCOMPARE(inner.name(), QStringLiteral("Peer"));
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 1);
}

QTEST_GUILESS_MAIN(TestNfcBluetoothHandoverInfo)
#include "tst_nfcbluetoothhandoverinfo.moc"
