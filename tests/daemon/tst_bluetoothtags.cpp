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

using namespace Qt::Literals::StringLiterals;

namespace {

const QString address = u"00:1A:7D:DA:71:13"_s;
const QString devicePath = u"/org/bluez/hci0/dev_00_1A_7D_DA_71_13"_s;
const QString pairing = u"RequestBTPairing"_s;

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
    QTest::failOnWarning(QRegularExpression(u".*"_s));
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
    QTRY_COMPARE(calls(pairing), 1);
    const FakeCall told = agent->calls(u"NotifyTouch"_s).constFirst();
    const QVariantList asked = agent->calls(pairing).constFirst().arguments;
    QCOMPARE(told.arguments.at(1).toString(), u"ok"_s);
    QCOMPARE(asked.at(0).value<QDBusObjectPath>().path(), u"/com/tavix/nfc/device/dev_00_1A_7D_DA_71_13"_s);
    QCOMPARE(asked.mid(1), (QVariantList{address, u"Ada headset"_s, 0x240404U, QString()}));
    QTRY_COMPARE(bluez.callCount(devicePath, u"Connect"_s), 1);
    QCOMPARE(bluez.callCount(devicePath, u"Pair"_s), 1);
    const QDBusReply<QVariant> trusted = bluez.call(devicePath, u"org.freedesktop.DBus.Properties"_s,
                                                    u"Get"_s, {u"org.bluez.Device1"_s, u"Trusted"_s});
    QCOMPARE(trusted.value(), QVariant(true));
    QCOMPARE(calls(u"RequestNDEFDataDelivery"_s), 0);
}

void TestBluetoothTags::refusedPairingIsNot()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    startWithAgent();
    agent->fail(pairing, u"com.tavix.nfc.UIAgent.Rejected"_s, QString());
    {
        const HeldTag held(tag);
        QTRY_COMPARE(calls(pairing), 1);
    }
    VirtualType2 other = VirtualType2::sticker(QByteArray::fromHex("d1010455036f7267"));
    const HeldTag next(other);
    QTRY_COMPARE(calls(u"RequestNDEFDataDelivery"_s), 1);
    QCOMPARE(bluez.callCount(devicePath, u"Pair"_s), 0);
}

void TestBluetoothTags::deviceThatBluezHasNotHeardOfIsLookedFor()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready);
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE(calls(pairing), 1);
    QTRY_VERIFY(bluez.isDiscovering());
    QVERIFY(bluez.addDevice(address));
    QTRY_COMPARE(bluez.callCount(devicePath, u"Connect"_s), 1);
    QCOMPARE(bluez.callCount(devicePath, u"Pair"_s), 1);
    QTRY_VERIFY(!bluez.isDiscovering());
}

void TestBluetoothTags::pairedDeviceIsConnected()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QVERIFY(bluez.mock(u"PairDevice"_s, {u"hci0"_s, address, 0x200404}));
    // The stand-in announces the class, but keeps none.
    QCOMPARE(bluez
                 .call(devicePath, u"org.freedesktop.DBus.Mock"_s, u"UpdateProperties"_s,
                       {u"org.bluez.Device1"_s, QVariantMap{{u"Class"_s, 0x200404U}}})
                 .type(),
             QDBusMessage::ReplyMessage);
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE(calls(u"RequestBTConnection"_s), 1);
    // Under the name that the user knows it by.
    QCOMPARE(agent->calls(u"RequestBTConnection"_s).constFirst().arguments.mid(1),
             (QVariantList{address, u"Peer"_s, 0x200404U}));
    QTRY_COMPARE(bluez.callCount(devicePath, u"Connect"_s), 1);
    QCOMPARE(bluez.callCount(devicePath, u"Pair"_s), 0);
}

void TestBluetoothTags::connectedDeviceIsDisconnected()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QVERIFY(bluez.mock(u"PairDevice"_s, {u"hci0"_s, address, 0x200404}));
    QVERIFY(bluez.mock(u"ConnectDevice"_s, {u"hci0"_s, address}));
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE(calls(u"RequestBTDisconnection"_s), 1);
    QTRY_COMPARE(bluez.callCount(devicePath, u"Disconnect"_s), 1);
}

void TestBluetoothTags::failureIsSaid()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QVERIFY(bluez.mock(u"PairDevice"_s, {u"hci0"_s, address, 0x200404}));
    startWithAgent();
    // BlueZ knows better by the time of the grant.
    agent->hold(u"RequestBTConnection"_s);
    const HeldTag held(tag);
    QTRY_COMPARE(calls(u"RequestBTConnection"_s), 1);
    QCOMPARE(bluez.call(devicePath, u"org.bluez.Device1"_s, u"Connect"_s, {}).type(),
             QDBusMessage::ReplyMessage);
    agent->release(u"RequestBTConnection"_s);
    QTRY_VERIFY(daemon.log().contains(u"Bluetooth device 00:1A:7D:DA:71:13: Already Connected\n"_s));
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
        QVERIFY(bluez->mock(u"RemoveAdapter"_s, {u"hci0"_s}));
    }
    startWithAgent();
    const HeldTag held(tag);
    QTRY_COMPARE(calls(u"RequestNDEFDataDelivery"_s), 1);
    QCOMPARE(agent->calls(u"RequestNDEFDataDelivery"_s).constFirst().arguments.at(2).toByteArray(),
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
        QTRY_COMPARE(calls(pairing), 1);
    }
    QTest::qWait(2500);
    {
        HeldTag again(tag);
        QTRY_VERIFY(again.commands() > 3);
    }
    agent->release(pairing);
    QTRY_COMPARE(bluez.callCount(devicePath, u"Connect"_s), 1);
    QCOMPARE(calls(pairing), 1);
}

void TestBluetoothTags::handoverIsServedByTheNextTag()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    startWithAgent();
    const QVariant requestor = QVariant::fromValue(QDBusObjectPath(u"/test/requestor"_s));
    QCOMPARE(agent->callAdapter(u"RequestHandover"_s, {requestor, u"bluetooth"_s, u"send"_s}).error,
             QString());
    const HeldTag held(tag);
    QTRY_COMPARE(calls(u"HandoverCompleted"_s), 1);
    QCOMPARE(agent->members().filter(u"Handover"_s),
             (QStringList{u"HandoverStarted"_s, u"HandoverCarrierSelected"_s, u"HandoverCompleted"_s}));
    const QVariantList completed = agent->calls(u"HandoverCompleted"_s).constFirst().arguments;
    const auto peer = qdbus_cast<BluetoothPeer>(completed.at(1).value<QDBusVariant>().variant());
    QCOMPARE(peer.address, address);
    QCOMPARE(calls(pairing), 0);
}

void TestBluetoothTags::handoverEndsWithItsRequestor()
{
    startWithAgent();
    const QVariant path = QVariant::fromValue(QDBusObjectPath(u"/test/requestor"_s));
    const QVariantList request = {path, u"bluetooth"_s, u"send"_s};
    {
        AgentProcess requestor(u"org.connui.test.Requestor"_s);
        QCOMPARE(requestor.callAdapter(u"RequestHandover"_s, request).error, QString());
        QVERIFY(!agent->callAdapter(u"RequestHandover"_s, request).error.isEmpty());
    }
    // Once it is accepted, another one is refused again.
    QVERIFY(
        QTest::qWaitFor([&] { return agent->callAdapter(u"RequestHandover"_s, request).error.isEmpty(); }));
}

QTEST_GUILESS_MAIN(TestBluetoothTags)

#include "tst_bluetoothtags.moc"
