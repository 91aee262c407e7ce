// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QSignalSpy>
#include <QTest>

#include <NfcAdapter>
#include <NfcAgent>
#include <RadioState>

using namespace Qt::Literals::StringLiterals;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::RadioState;

class TestNfcAdapterWithoutBus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void missingBusIsLogged();
    void operationsAreHarmless();
};

void TestNfcAdapterWithoutBus::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    RadioState(RadioState::NFC).setEnabled(true);
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: Unable to register handler for handover");
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
}

void TestNfcAdapterWithoutBus::missingBusIsLogged()
{
    const NfcAdapter adapter;
    QVERIFY(!adapter.isValid());
}

void TestNfcAdapterWithoutBus::operationsAreHarmless()
{
    NfcAdapter adapter;
    NfcAgent agent;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    QVERIFY(!adapter.isPowered());
    adapter.registerAgent(&agent);
    adapter.unregisterAgent(&agent);
    adapter.requestHandover(u"carrier"_s, u"type"_s);
    adapter.cancelHandoverRequest(u"carrier"_s);
    QCoreApplication::processEvents();
    QCOMPARE(failed.count(), 0);

    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    adapter.setPowered(true);
    adapter.setPowered(false);
    QVERIFY(!RadioState(RadioState::NFC).enabled());
    adapter.setConfirmationEnabled(true);
    QVERIFY(adapter.isConfirmationEnabled());
}

QTEST_GUILESS_MAIN(TestNfcAdapterWithoutBus)
#include "tst_nfcadapterwithoutbus.moc"
