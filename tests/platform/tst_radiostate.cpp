// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QCborMap>
#include <QStandardPaths>
#include <QtTest>

#include <ConnectivitySettings>
#include <RadioState>

using ConnUi::RadioState;

class TestRadioState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nfcIsFlag16();
    void radioIsOnByDefault();
    void switchedOffRadioStaysOff();
    void everyObjectSeesTheSameState();
    void radiosAreSwitchedSeparately();
    void severalRadiosAreOnWhenAllAre();
    void settingsKeepTheirValues();
    void anythingButWholeNumbersMeansOn_data();
    void anythingButWholeNumbersMeansOn();
};

void TestRadioState::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    RadioState(~0).setEnabled(true);
}

void TestRadioState::nfcIsFlag16()
{
    RadioState(16).setEnabled(false);
    QVERIFY(!RadioState(RadioState::NFC).enabled());
}

void TestRadioState::radioIsOnByDefault()
{
    QVERIFY(RadioState(RadioState::NFC).enabled());
}

void TestRadioState::switchedOffRadioStaysOff()
{
    RadioState(RadioState::NFC).setEnabled(false);
    RadioState(RadioState::NFC).setEnabled(false);
    QVERIFY(!RadioState(RadioState::NFC).enabled());
    RadioState(RadioState::NFC).setEnabled(true);
    QVERIFY(RadioState(RadioState::NFC).enabled());
}

void TestRadioState::everyObjectSeesTheSameState()
{
    QObject parent;
    auto *first = new RadioState(RadioState::NFC, &parent);
    auto *second = new RadioState(RadioState::NFC, &parent);
    QCOMPARE(first->parent(), &parent);
    first->setEnabled(false);
    QVERIFY(!second->enabled());
}

void TestRadioState::radiosAreSwitchedSeparately()
{
    RadioState(1).setEnabled(false);
    QVERIFY(RadioState(RadioState::NFC).enabled());
    RadioState(RadioState::NFC).setEnabled(false);
    RadioState(1).setEnabled(true);
    QVERIFY(!RadioState(RadioState::NFC).enabled());
}

void TestRadioState::severalRadiosAreOnWhenAllAre()
{
    RadioState(RadioState::NFC).setEnabled(false);
    QVERIFY(!RadioState(RadioState::NFC | 1).enabled());
    RadioState(RadioState::NFC | 1).setEnabled(true);
    QVERIFY(RadioState(RadioState::NFC).enabled());
}

void TestRadioState::settingsKeepTheirValues()
{
    ConnUi::ConnectivitySettings settings(1);
    settings.set(QStringLiteral("key"), QStringLiteral("value"));
    RadioState(RadioState::NFC).setEnabled(false);
    QCOMPARE(settings.get(QStringLiteral("key")), QVariant(QStringLiteral("value")));
}

void TestRadioState::anythingButWholeNumbersMeansOn_data()
{
    QTest::addColumn<QCborValue>("stored");
    QTest::newRow("number beyond all whole ones") << QCborValue(1e300);
    QTest::newRow("broken number") << QCborValue(-1.0);
    QTest::newRow("text") << QCborValue(QStringLiteral("16"));
}

void TestRadioState::anythingButWholeNumbersMeansOn()
{
    QFETCH(QCborValue, stored);
    QFile store(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                QStringLiteral("/connui/settings.cbor"));
    QVERIFY(store.open(QIODevice::WriteOnly));
    const QCborMap off{{QStringLiteral("off"), stored}};
    QVERIFY(store.write(QCborMap{{QStringLiteral("radios"), off}}.toCborValue().toCbor()) > 0);
    store.close();
    QVERIFY(RadioState(RadioState::NFC).enabled());
    RadioState(RadioState::NFC).setEnabled(false);
    QVERIFY(!RadioState(RadioState::NFC).enabled());
}

QTEST_GUILESS_MAIN(TestRadioState)
#include "tst_radiostate.moc"
