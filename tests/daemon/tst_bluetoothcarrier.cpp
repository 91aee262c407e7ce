// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/bluetoothcarrier.h"

class TestBluetoothCarrier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void classicDeviceIsFound();
    void lowEnergyDeviceIsFound();
    void handoverSelectLeadsToItsCarrier();
    void letterCaseOfTheTypeDoesNotCount();
    void nameMayBeMissingOrShort();
    void brokenStructuresTellNothing_data();
    void brokenStructuresTellNothing();
    void otherMessagesHaveNoDevice_data();
    void otherMessagesHaveNoDevice();
};

namespace {

const char classic[] = "application/vnd.bluetooth.ep.oob";
const char lowEnergy[] = "application/vnd.bluetooth.le.oob";
const QByteArray address = QByteArray::fromHex("1371da7d1a00"); // 00:1A:7D:DA:71:13

QByteArray record(const QByteArray &header, const QByteArray &type, const QByteArray &payload)
{
    return QByteArray::fromHex(header) + char(type.size()) + char(payload.size()) + type + payload;
}

QByteArray classicData(const QByteArray &structures)
{
    const QByteArray data = address + structures;
    return QByteArray(1, char(data.size() + 2)) + '\0' + data;
}

QByteArray structure(int type, const QByteArray &value)
{
    return QByteArray(1, char(value.size() + 1)) + char(type) + value;
}

} // namespace

void TestBluetoothCarrier::classicDeviceIsFound()
{
    const auto carrier = bluetoothCarrier(record(
        "d2", classic,
        classicData(structure(0x09, "Ada's headset") + structure(0x0d, QByteArray::fromHex("040424")))));
    QVERIFY(carrier);
    QCOMPARE(carrier->address, QStringLiteral("00:1A:7D:DA:71:13"));
    QCOMPARE(carrier->name, QStringLiteral("Ada's headset"));
    QCOMPARE(carrier->classOfDevice, 0x240404U);
}

void TestBluetoothCarrier::lowEnergyDeviceIsFound()
{
    const auto carrier =
        bluetoothCarrier(record("d2", lowEnergy, structure(0x1b, address + '\0') + structure(0x09, "Watch")));
    QVERIFY(carrier);
    QCOMPARE(carrier->address, QStringLiteral("00:1A:7D:DA:71:13"));
    QCOMPARE(carrier->name, QStringLiteral("Watch"));
    QCOMPARE(carrier->classOfDevice, 0U);
}

void TestBluetoothCarrier::handoverSelectLeadsToItsCarrier()
{
    const QByteArray message = record("91", "Hs", QByteArray::fromHex("12d1020461630101300000")) +
                               record("12", "application/vnd.wfa.wsc", "wlan") +
                               record("52", classic, classicData({}));
    const auto carrier = bluetoothCarrier(message);
    QVERIFY(carrier);
    QCOMPARE(carrier->address, QStringLiteral("00:1A:7D:DA:71:13"));
}

void TestBluetoothCarrier::letterCaseOfTheTypeDoesNotCount()
{
    QVERIFY(bluetoothCarrier(record("d2", QByteArray(classic).toUpper(), classicData({}))));
}

void TestBluetoothCarrier::nameMayBeMissingOrShort()
{
    QCOMPARE(bluetoothCarrier(record("d2", classic, classicData({})))->name, QString());
    QCOMPARE(bluetoothCarrier(record("d2", classic, classicData(structure(0x08, "Ada"))))->name,
             QStringLiteral("Ada"));
    QCOMPARE(bluetoothCarrier(
                 record("d2", classic, classicData(structure(0x08, "Ada") + structure(0x09, "Ada's phone"))))
                 ->name,
             QStringLiteral("Ada's phone"));
}

void TestBluetoothCarrier::brokenStructuresTellNothing_data()
{
    QTest::addColumn<QByteArray>("structures");
    QTest::newRow("no length") << QByteArray::fromHex("00") + structure(0x09, "Ada");
    QTest::newRow("cut") << QByteArray::fromHex("2009414461");
    QTest::newRow("without a type") << QByteArray::fromHex("01");
    QTest::newRow("class of two bytes") << structure(0x0d, QByteArray::fromHex("0404"));
    QTest::newRow("class of four bytes") << structure(0x0d, QByteArray::fromHex("04042400"));
}

void TestBluetoothCarrier::brokenStructuresTellNothing()
{
    QFETCH(QByteArray, structures);
    const auto carrier = bluetoothCarrier(record("d2", classic, classicData(structures)));
    QVERIFY(carrier);
    QCOMPARE(carrier->address, QStringLiteral("00:1A:7D:DA:71:13"));
    QCOMPARE(carrier->name, QString());
    QCOMPARE(carrier->classOfDevice, 0U);
}

void TestBluetoothCarrier::otherMessagesHaveNoDevice_data()
{
    const QByteArray carrier = record("52", classic, classicData({}));
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no message") << QByteArray();
    QTest::newRow("no conforming message") << carrier;
    QTest::newRow("link before the device") << record("91", "U", "0") + carrier;
    QTest::newRow("type of another format") << record("d4", classic, classicData({}));
    QTest::newRow("cut within the address") << record("d2", classic, classicData({}).chopped(1));
    QTest::newRow("no payload") << record("d2", classic, {});
    QTest::newRow("address of zeros") << record("d2", classic, QByteArray(8, '\0'));
    QTest::newRow("address of ones") << record("d2", classic, QByteArray(8, '\xff'));
    QTest::newRow("low energy without an address") << record("d2", lowEnergy, structure(0x09, "Watch"));
    QTest::newRow("low energy with half an address") << record("d2", lowEnergy, structure(0x1b, "123"));
    QTest::newRow("handover select alone") << record("d1", "Hs", QByteArray::fromHex("12"));
}

void TestBluetoothCarrier::otherMessagesHaveNoDevice()
{
    QFETCH(QByteArray, message);
    QVERIFY(!bluetoothCarrier(message));
}

QTEST_GUILESS_MAIN(TestBluetoothCarrier)

#include "tst_bluetoothcarrier.moc"
