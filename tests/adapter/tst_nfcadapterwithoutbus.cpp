// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QSignalSpy>
#include <QTest>

#include <NdefMessageHandler>
#include <NfcAdapter>
#include <NfcAgent>
#include <RadioState>

using ConnUi::NdefMessageHandler;
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
    void handlerIsNotInFront();

private:
    static void expectMissingBus();
};

void TestNfcAdapterWithoutBus::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    RadioState(RadioState::NFC).setEnabled(true);
}

void TestNfcAdapterWithoutBus::expectMissingBus()
{
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: Unable to register handler for handover");
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
}

void TestNfcAdapterWithoutBus::missingBusIsLogged()
{
    expectMissingBus();
    const NfcAdapter adapter;
    QVERIFY(!adapter.isValid());
}

void TestNfcAdapterWithoutBus::operationsAreHarmless()
{
    expectMissingBus();
    NfcAdapter adapter;
    NfcAgent agent;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    QVERIFY(!adapter.isPowered());
    adapter.registerAgent(&agent);
    adapter.unregisterAgent(&agent);
    adapter.requestHandover(QStringLiteral("carrier"), QStringLiteral("type"));
    adapter.cancelHandoverRequest(QStringLiteral("carrier"));
    QCoreApplication::processEvents();
    QCOMPARE(failed.count(), 0);

    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    adapter.setPowered(true);
    adapter.setPowered(false);
    QVERIFY(!RadioState(RadioState::NFC).enabled());
    adapter.setConfirmationEnabled(true);
    QVERIFY(adapter.isConfirmationEnabled());
}

void TestNfcAdapterWithoutBus::handlerIsNotInFront()
{
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    const NdefMessageHandler handler(QStringLiteral("app"), QStringLiteral("system"),
                                     QStringLiteral("org.example.Handler"),
                                     QDBusObjectPath(QStringLiteral("/")));
    QVERIFY(!handler.isRunningOnForeground());
}

QTEST_GUILESS_MAIN(TestNfcAdapterWithoutBus)
#include "tst_nfcadapterwithoutbus.moc"
