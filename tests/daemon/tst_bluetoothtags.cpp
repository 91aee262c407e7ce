// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QTest>

#include "agentprocess.h"
#include "bluezmock.h"
#include "daemon/bluetoothpeer.h"
#include "heldtag.h"
#include "pcscdaemon.h"
#include "readers.h"
#include "virtualtype2.h"

namespace {

const QString address = QStringLiteral("00:1A:7D:DA:71:13");
const QString devicePath = QStringLiteral("/org/bluez/hci0/dev_00_1A_7D_DA_71_13");
const QString pairing = QStringLiteral("RequestBTPairing");

// A headset's sticker: its address, its name and its class.
QByteArray headset()
{
    const QByteArray type = "application/vnd.bluetooth.ep.oob";
    const QByteArray data = QByteArray::fromHex("19001371da7d1a00") + QByteArray::fromHex("0c09") +
                            "Ada headset" + QByteArray::fromHex("040d040424");
    return QByteArray::fromHex("d2") + char(type.size()) + char(data.size()) + type + data;
}

} // namespace

class TestBluetoothTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void grantedPairingIsDone();
    void refusedPairingIsNot();
    void deviceThatBluezHasNotHeardOfIsLookedFor();
    void pairedDeviceIsConnected();
    void connectedDeviceIsDisconnected();
    void failureIsSaid();
    void withoutBluetoothTheTagIsOneLikeAnyOther_data();
    void withoutBluetoothTheTagIsOneLikeAnyOther();
    void otherTouchMeanwhileIsTheSame();

    void handoverIsServedByTheNextTag();
    void handoverEndsWithItsRequestor();

private:
    void startWithAgent();
    int calls(const QString &member) { return int(agent->calls(member).size()); }

    PcscDaemon daemon;
    VirtualType2 tag = VirtualType2::sticker(headset());
    std::unique_ptr<AgentProcess> agent;
};

void TestBluetoothTags::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
    qDBusRegisterMetaType<BluetoothPeer>();
}

void TestBluetoothTags::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    Readers::waitUntilEmpty();
}

void TestBluetoothTags::cleanup()
{
    agent.reset();
    daemon.kill();
}

void TestBluetoothTags::startWithAgent()
{
    daemon.startWithReaders();
    agent = std::make_unique<AgentProcess>();
    QCOMPARE(agent->registerAgent().error, QString());
}

void TestBluetoothTags::grantedPairingIsDone()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(pairing), 1, Readers::patience);
    const FakeCall told = agent->calls(QStringLiteral("NotifyTouch")).constFirst();
    const QVariantList asked = agent->calls(pairing).constFirst().arguments;
    QCOMPARE(told.arguments.at(1).toString(), QStringLiteral("ok"));
    QCOMPARE(asked.at(0).value<QDBusObjectPath>().path(),
             QStringLiteral("/com/tavix/nfc/device/dev_00_1A_7D_DA_71_13"));
    // That of the tag, unless the stand-in knows another one.
    const uint known = bluez.classOf(devicePath);
    const uint deviceClass = known != 0 ? known : 0x240404U;
    QCOMPARE(asked.mid(1), (QVariantList{address, QStringLiteral("Ada headset"), deviceClass, QString()}));
    QTRY_COMPARE_WITH_TIMEOUT(bluez.callCount(devicePath, QStringLiteral("Connect")), 1, Readers::patience);
    QCOMPARE(bluez.callCount(devicePath, QStringLiteral("Pair")), 1);
    const QDBusReply<QVariant> trusted =
        bluez.call(devicePath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                   {QStringLiteral("org.bluez.Device1"), QStringLiteral("Trusted")});
    QCOMPARE(trusted.value(), QVariant(true));
    QCOMPARE(calls(QStringLiteral("RequestNDEFDataDelivery")), 0);
}

void TestBluetoothTags::refusedPairingIsNot()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    startWithAgent();
    agent->fail(pairing, QStringLiteral("com.tavix.nfc.UIAgent.Rejected"), QString());
    {
        const HeldTag held(tag);
        QTRY_COMPARE_WITH_TIMEOUT(calls(pairing), 1, Readers::patience);
    }
    VirtualType2 other = VirtualType2::sticker(QByteArray::fromHex("d1010455036f7267"));
    const HeldTag next(other);
    QTRY_COMPARE_WITH_TIMEOUT(calls(QStringLiteral("RequestNDEFDataDelivery")), 1, Readers::patience);
    QCOMPARE(bluez.callCount(devicePath, QStringLiteral("Pair")), 0);
}

void TestBluetoothTags::deviceThatBluezHasNotHeardOfIsLookedFor()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready);
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(pairing), 1, Readers::patience);
    QTRY_VERIFY_WITH_TIMEOUT(bluez.isDiscovering(), Readers::patience);
    QVERIFY(bluez.addDevice(address));
    QTRY_COMPARE_WITH_TIMEOUT(bluez.callCount(devicePath, QStringLiteral("Connect")), 1, Readers::patience);
    QCOMPARE(bluez.callCount(devicePath, QStringLiteral("Pair")), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!bluez.isDiscovering(), Readers::patience);
}

void TestBluetoothTags::pairedDeviceIsConnected()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QVERIFY(bluez.pairDevice(address));
    // The stand-in announces the class, but keeps none.
    QCOMPARE(
        bluez
            .call(devicePath, QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("UpdateProperties"),
                  {QStringLiteral("org.bluez.Device1"), QVariantMap{{QStringLiteral("Class"), 0x200404U}}})
            .type(),
        QDBusMessage::ReplyMessage);
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(QStringLiteral("RequestBTConnection")), 1, Readers::patience);
    // Under the name that the user knows it by.
    QCOMPARE(agent->calls(QStringLiteral("RequestBTConnection")).constFirst().arguments.mid(1),
             (QVariantList{address, QStringLiteral("Peer"), 0x200404U}));
    QTRY_COMPARE_WITH_TIMEOUT(bluez.callCount(devicePath, QStringLiteral("Connect")), 1, Readers::patience);
    QCOMPARE(bluez.callCount(devicePath, QStringLiteral("Pair")), 0);
}

void TestBluetoothTags::connectedDeviceIsDisconnected()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QVERIFY(bluez.pairDevice(address));
    QVERIFY(bluez.mock(QStringLiteral("ConnectDevice"), {QStringLiteral("hci0"), address}));
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(QStringLiteral("RequestBTDisconnection")), 1, Readers::patience);
    QTRY_COMPARE_WITH_TIMEOUT(bluez.callCount(devicePath, QStringLiteral("Disconnect")), 1,
                              Readers::patience);
}

void TestBluetoothTags::failureIsSaid()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QVERIFY(bluez.pairDevice(address));
    startWithAgent();
    // BlueZ knows better by the time of the grant.
    agent->hold(QStringLiteral("RequestBTConnection"));
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(QStringLiteral("RequestBTConnection")), 1, Readers::patience);
    QCOMPARE(
        bluez.call(devicePath, QStringLiteral("org.bluez.Device1"), QStringLiteral("Connect"), {}).type(),
        QDBusMessage::ReplyMessage);
    agent->release(QStringLiteral("RequestBTConnection"));
    QTRY_VERIFY_WITH_TIMEOUT(
        daemon.log().contains(QStringLiteral("Bluetooth device 00:1A:7D:DA:71:13: Already Connected\n")),
        Readers::patience);
}

void TestBluetoothTags::withoutBluetoothTheTagIsOneLikeAnyOther_data()
{
    QTest::addColumn<bool>("hasBluez");
    QTest::newRow("no BlueZ") << false;
    QTest::newRow("no adapter") << true;
}

void TestBluetoothTags::withoutBluetoothTheTagIsOneLikeAnyOther()
{
    QFETCH(bool, hasBluez);
    std::unique_ptr<BlueZMock> bluez;
    if (hasBluez) {
        bluez = std::make_unique<BlueZMock>();
        QVERIFY(bluez->mock(QStringLiteral("RemoveAdapter"), {QStringLiteral("hci0")}));
    }
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(QStringLiteral("RequestNDEFDataDelivery")), 1, Readers::patience);
    QCOMPARE(
        agent->calls(QStringLiteral("RequestNDEFDataDelivery")).constFirst().arguments.at(2).toByteArray(),
        headset());
    QCOMPARE(calls(pairing), 0);
}

void TestBluetoothTags::otherTouchMeanwhileIsTheSame()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    startWithAgent();
    agent->hold(pairing);
    {
        const HeldTag held(tag);
        QTRY_COMPARE_WITH_TIMEOUT(calls(pairing), 1, Readers::patience);
    }
    QTest::qWait(2500);
    {
        HeldTag again(tag);
        QTRY_VERIFY_WITH_TIMEOUT(again.commands() > 3, Readers::patience);
    }
    agent->release(pairing);
    QTRY_COMPARE_WITH_TIMEOUT(bluez.callCount(devicePath, QStringLiteral("Connect")), 1, Readers::patience);
    QCOMPARE(calls(pairing), 1);
}

void TestBluetoothTags::handoverIsServedByTheNextTag()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    startWithAgent();
    const QVariant requestor = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/test/requestor")));
    QCOMPARE(agent
                 ->callAdapter(QStringLiteral("RequestHandover"),
                               {requestor, QStringLiteral("bluetooth"), QStringLiteral("send")})
                 .error,
             QString());
    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(calls(QStringLiteral("HandoverCompleted")), 1, Readers::patience);
    QCOMPARE(agent->members().filter(QStringLiteral("Handover")),
             (QStringList{QStringLiteral("HandoverStarted"), QStringLiteral("HandoverCarrierSelected"),
                          QStringLiteral("HandoverCompleted")}));
    const QVariantList completed = agent->calls(QStringLiteral("HandoverCompleted")).constFirst().arguments;
    const auto peer = qdbus_cast<BluetoothPeer>(completed.at(1).value<QDBusVariant>().variant());
    QCOMPARE(peer.address, address);
    QCOMPARE(calls(pairing), 0);
}

void TestBluetoothTags::handoverEndsWithItsRequestor()
{
    startWithAgent();
    const QVariant path = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/test/requestor")));
    const QVariantList request = {path, QStringLiteral("bluetooth"), QStringLiteral("send")};
    {
        AgentProcess requestor(QStringLiteral("org.connui.test.Requestor"));
        QCOMPARE(requestor.callAdapter(QStringLiteral("RequestHandover"), request).error, QString());
        QVERIFY(!agent->callAdapter(QStringLiteral("RequestHandover"), request).error.isEmpty());
    }
    // Once it is accepted, another one is refused again.
    QVERIFY(QTest::qWaitFor(
        [&] { return agent->callAdapter(QStringLiteral("RequestHandover"), request).error.isEmpty(); }));
}

QTEST_GUILESS_MAIN(TestBluetoothTags)

#include "tst_bluetoothtags.moc"
