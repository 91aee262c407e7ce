// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QtTest>

#include <BluetoothDevice>

using ConnUi::BluetoothDevice;

class TestBluetoothDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaultDeviceIsInvalid();
    void validityIsThatOfTheAddress_data();
    void validityIsThatOfTheAddress();
    void copyIsIndependentOfParentAndOriginal();
    void nameIsTheAliasFirst();
};

void TestBluetoothDevice::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestBluetoothDevice::defaultDeviceIsInvalid()
{
    const BluetoothDevice device;
    QVERIFY(!device.isValid());
    QCOMPARE(device.address(), QString());
    QCOMPARE(device.name(), QString());
}

void TestBluetoothDevice::validityIsThatOfTheAddress_data()
{
    QTest::addColumn<QVariant>("address");
    QTest::addColumn<bool>("valid");
    QTest::newRow("capitals") << QVariant(QStringLiteral("00:11:22:AA:BB:CC")) << true;
    QTest::newRow("small letters") << QVariant(QStringLiteral("00:11:22:aa:bb:cc")) << true;
    QTest::newRow("missing") << QVariant() << false;
    QTest::newRow("empty") << QVariant(QString()) << false;
    QTest::newRow("short") << QVariant(QStringLiteral("00:11:22:AA:BB")) << false;
    QTest::newRow("long") << QVariant(QStringLiteral("00:11:22:AA:BB:CC:DD")) << false;
    QTest::newRow("other digits") << QVariant(QStringLiteral("00:11:22:AA:BB:CG")) << false;
    QTest::newRow("line feed") << QVariant(QStringLiteral("00:11:22:AA:BB:CC\n")) << false;
    QTest::newRow("number") << QVariant(42) << false;
}

void TestBluetoothDevice::validityIsThatOfTheAddress()
{
    QFETCH(QVariant, address);
    QFETCH(bool, valid);
    const BluetoothDevice device({{QStringLiteral("Address"), address}});
    QCOMPARE(device.isValid(), valid);
    QCOMPARE(device.address(), address.toString());
}

void TestBluetoothDevice::copyIsIndependentOfParentAndOriginal()
{
    QObject parent;
    auto *device =
        new BluetoothDevice({{QStringLiteral("Address"), QStringLiteral("00:11:22:AA:BB:CC")}}, &parent);
    const BluetoothDevice copy(*device);
    QCOMPARE(copy.parent(), nullptr);
    BluetoothDevice assigned;
    assigned = *device;
    *device = BluetoothDevice();
    QCOMPARE(device->parent(), &parent);
    QVERIFY(!device->isValid());
    QCOMPARE(copy.address(), QStringLiteral("00:11:22:AA:BB:CC"));
    QCOMPARE(assigned.address(), QStringLiteral("00:11:22:AA:BB:CC"));
}

void TestBluetoothDevice::nameIsTheAliasFirst()
{
    const auto alias = QStringLiteral("Alias");
    const auto name = QStringLiteral("Name");
    QCOMPARE(BluetoothDevice({{alias, QStringLiteral("Mine")}, {name, QStringLiteral("Maker's")}}).name(),
             QStringLiteral("Mine"));
    QCOMPARE(BluetoothDevice({{alias, QString()}, {name, QStringLiteral("Maker's")}}).name(),
             QStringLiteral("Maker's"));
}

QTEST_GUILESS_MAIN(TestBluetoothDevice)
#include "tst_bluetoothdevice.moc"
