// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>
#include <optional>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTest>

#include "bluezmock.h"
#include "core/peername.h"

namespace {

constexpr int patience = 30000; // ms
const auto address = QStringLiteral("00:11:22:AA:BB:CC");

QVariant handover(const QString &peer)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << QDBusObjectPath(QStringLiteral("/carrier")) << peer;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

} // namespace

class TestPeerName : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void knownPeerHasItsName();
    void unknownPeerIsNamedByItsAddress();
    void peerIsNamedByItsAddressWithoutBluetooth();
    void peerWithoutAddressIsUnnamed();
    void nobodyIsToldWhenTheCallerIsGone();

private:
    QVariant overTheBus(const QVariant &info);
    QString nameOf(const QString &peer);

    QVariant sent;

public Q_SLOTS:
    void receive(const QDBusVariant &info) { sent = info.variant(); }
};

void TestPeerName::initTestCase()
{
    qRegisterMetaType<QDBusVariant>();
    qRegisterMetaType<QDBusObjectPath>();
    QVERIFY(QDBusConnection::systemBus().connect(QString(), QStringLiteral("/info"),
                                                 QStringLiteral("org.example.Info"), QStringLiteral("Info"),
                                                 this, SLOT(receive(QDBusVariant))));
}

// Returns info as it arrives in a call of the daemon.
QVariant TestPeerName::overTheBus(const QVariant &info)
{
    sent.clear();
    QDBusConnection sender =
        QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("peer"));
    auto signal = QDBusMessage::createSignal(QStringLiteral("/info"), QStringLiteral("org.example.Info"),
                                             QStringLiteral("Info"));
    signal << QVariant::fromValue(QDBusVariant(info));
    sender.send(signal);
    (void)QTest::qWaitFor([this] { return sent.isValid(); }, patience);
    QDBusConnection::disconnectFromBus(QStringLiteral("peer"));
    return sent;
}

QString TestPeerName::nameOf(const QString &peer)
{
    std::optional<QString> name;
    findPeerName(
        overTheBus(handover(peer)), this, [&name](const QString &found) { name = found; });
    (void)QTest::qWaitFor([&name] { return name.has_value(); }, patience);
    return name.value_or(QString());
}

void TestPeerName::knownPeerHasItsName()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready && bluez.addDevice(address));
    QCOMPARE(nameOf(address), QStringLiteral("Peer"));
}

// To ask the peer for its name would put something on the air before the user has agreed.
void TestPeerName::unknownPeerIsNamedByItsAddress()
{
    const BlueZMock bluez;
    QVERIFY(bluez.ready);
    QCOMPARE(nameOf(address), address);
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("StartDiscovery")), 0);
    QCOMPARE(bluez.callCount(BlueZMock::adapterPath, QStringLiteral("ConnectDevice")), 0);
}

void TestPeerName::peerIsNamedByItsAddressWithoutBluetooth()
{
    QCOMPARE(nameOf(address), address);
}

void TestPeerName::peerWithoutAddressIsUnnamed()
{
    QCOMPARE(nameOf(QString()), QStringLiteral("qtn_nfc_unnamed_device"));
}

void TestPeerName::nobodyIsToldWhenTheCallerIsGone()
{
    const QVariant info = overTheBus(handover(address));
    auto caller = std::make_unique<QObject>();
    bool isTold = false;
    findPeerName(info, caller.get(), [&isTold](const QString &) { isTold = true; });
    caller.reset();
    // The reply to the call has arrived by then.
    QVERIFY(!nameOf(address).isEmpty());
    QVERIFY(!isTold);
}

QTEST_GUILESS_MAIN(TestPeerName)
#include "tst_peername.moc"
