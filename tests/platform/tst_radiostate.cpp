// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <ConnectivitySettings>
#include <QtTest>
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

QTEST_GUILESS_MAIN(TestRadioState)
#include "tst_radiostate.moc"
