// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QtTest>

#include <BluetoothDeviceInfoUtils>

class TestBluetoothDeviceInfoUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classHasItsIcon_data();
    void classHasItsIcon();
};

void TestBluetoothDeviceInfoUtils::classHasItsIcon_data()
{
    QTest::addColumn<uint>("classOfDevice");
    QTest::addColumn<QString>("kind");
    // Classes that devices on the market send, service bits included.
    QTest::newRow("smart phone") << 0x5a020cu << QStringLiteral("phone");
    QTest::newRow("laptop") << 0x1c010cu << QStringLiteral("computer");
    QTest::newRow("access point") << 0x020300u << QStringLiteral("network");
    QTest::newRow("headset") << 0x240404u << QStringLiteral("headset");
    QTest::newRow("hands-free") << 0x200408u << QStringLiteral("headset");
    QTest::newRow("headphones") << 0x240418u << QStringLiteral("headset");
    QTest::newRow("microphone") << 0x200410u << QStringLiteral("microphone");
    QTest::newRow("loudspeaker") << 0x240414u << QStringLiteral("speaker");
    QTest::newRow("car audio") << 0x200420u << QStringLiteral("speaker");
    QTest::newRow("set-top box") << 0x000424u << QStringLiteral("video");
    QTest::newRow("television") << 0x08043cu << QStringLiteral("video");
    QTest::newRow("camcorder") << 0x000434u << QStringLiteral("camera");
    QTest::newRow("console") << 0x000448u << QStringLiteral("toy");
    QTest::newRow("keyboard") << 0x002540u << QStringLiteral("keyboard");
    QTest::newRow("mouse") << 0x002580u << QStringLiteral("mouse");
    QTest::newRow("keyboard with pointer") << 0x0025c0u << QStringLiteral("keyboard");
    QTest::newRow("joystick") << 0x002504u << QStringLiteral("gamepad");
    QTest::newRow("gamepad") << 0x002508u << QStringLiteral("gamepad");
    QTest::newRow("printer") << 0x040680u << QStringLiteral("printer");
    QTest::newRow("printer and scanner") << 0x0406c0u << QStringLiteral("printer");
    QTest::newRow("camera") << 0x000620u << QStringLiteral("camera");
    QTest::newRow("display") << 0x000610u << QStringLiteral("video");
    QTest::newRow("watch") << 0x000704u << QStringLiteral("wearable");
    QTest::newRow("robot") << 0x000804u << QStringLiteral("toy");
    QTest::newRow("thermometer") << 0x000908u << QStringLiteral("health");
    QTest::newRow("miscellaneous") << 0x000000u << QStringLiteral("generic");
    QTest::newRow("uncategorized") << 0x001f00u << QStringLiteral("generic");
    QTest::newRow("reserved major class") << 0x000a04u << QStringLiteral("generic");
    QTest::newRow("more than 24 bits") << 0xff5a020cu << QStringLiteral("phone");
}

void TestBluetoothDeviceInfoUtils::classHasItsIcon()
{
    QFETCH(uint, classOfDevice);
    QFETCH(QString, kind);
    QCOMPARE(ConnUi::BluetoothDeviceInfoUtils::codIconId(classOfDevice),
             QStringLiteral("icon-m-bluetooth-%1").arg(kind));
}

QTEST_GUILESS_MAIN(TestBluetoothDeviceInfoUtils)
#include "tst_bluetoothdeviceinfoutils.moc"
