// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QSignalSpy>
#include <QTest>

#include <NfcAdapter>
#include <RadioState>

#include "fakedaemon.h"
#include "unmatchedcalls.h"

using ConnUi::NfcAdapter;
using ConnUi::RadioState;

class TestNfcHandoverRequestor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void callsAreAcceptedAndDoNothing_data();
    void callsAreAcceptedAndDoNothing();
    void callsOfWrongTypesAreRefused();
    void pathGoesWithTheLastAdapter();

private:
    static FakeReply callRequestor(FakeDaemon &daemon, const QString &member,
                                   const QVariantList &arguments = {});
};

void TestNfcHandoverRequestor::init()
{
    failOnWarningsExceptOfUnmatchedCalls();
    RadioState(RadioState::NFC).setEnabled(false);
}

FakeReply TestNfcHandoverRequestor::callRequestor(FakeDaemon &daemon, const QString &member,
                                                  const QVariantList &arguments)
{
    QSignalSpy replied(&daemon, &FakeService::replied);
    daemon.call(QDBusConnection::systemBus().baseService(), QStringLiteral("/com/tavix/nfcHandoverRequestor"),
                QStringLiteral("com.tavix.nfc.HandoverRequestor"), member, arguments);
    if (replied.isEmpty() && !replied.wait())
        return {};
    return daemon.replies().constLast();
}

void TestNfcHandoverRequestor::callsAreAcceptedAndDoNothing_data()
{
    QTest::addColumn<QVariantList>("arguments");
    const QVariant data = QVariant::fromValue(QDBusVariant(QStringLiteral("data")));
    QTest::newRow("HandoverStarted") << QVariantList();
    QTest::newRow("HandoverCarrierSelected") << QVariantList{QStringLiteral("bluetooth")};
    QTest::newRow("HandoverCompleted") << QVariantList{QStringLiteral("bluetooth"), data};
    QTest::newRow("HandoverFailed") << QVariantList{QStringLiteral("reason")};
}

void TestNfcHandoverRequestor::callsAreAcceptedAndDoNothing()
{
    QFETCH(QVariantList, arguments);
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy started(&adapter, &NfcAdapter::handoverStarted);
    QSignalSpy selected(&adapter, &NfcAdapter::handoverCarrierSelected);
    QSignalSpy completed(&adapter, &NfcAdapter::handoverCompleted);
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    QSignalSpy valid(&adapter, &NfcAdapter::adapterValid);
    QSignalSpy invalid(&adapter, &NfcAdapter::adapterInvalid);
    const FakeReply reply = callRequestor(daemon, QString::fromLatin1(QTest::currentDataTag()), arguments);
    QCOMPARE(reply.id, 1);
    QCOMPARE(reply.error, QString());
    QCOMPARE(reply.arguments, QVariantList());
    QCOMPARE(started.count() + selected.count() + completed.count() + failed.count(), 0);
    QCOMPARE(changed.count() + valid.count() + invalid.count(), 0);
    QCOMPARE(daemon.members(), QStringList(QStringLiteral("DefaultAdapter")));
}

void TestNfcHandoverRequestor::callsOfWrongTypesAreRefused()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QSignalSpy failed(&adapter, &NfcAdapter::handoverFailed);
    const FakeReply reply = callRequestor(daemon, QStringLiteral("HandoverFailed"), {7});
    QCOMPARE(reply.error, QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
    QCOMPARE(failed.count(), 0);
    QVERIFY(adapter.isValid());
}

void TestNfcHandoverRequestor::pathGoesWithTheLastAdapter()
{
    FakeDaemon daemon;
    daemon.start();
    {
        const NfcAdapter adapter;
        QCOMPARE(callRequestor(daemon, QStringLiteral("HandoverStarted")).error, QString());
    }
    QCOMPARE(callRequestor(daemon, QStringLiteral("HandoverStarted")).error,
             QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"));
    const NfcAdapter adapter;
    QCOMPARE(callRequestor(daemon, QStringLiteral("HandoverStarted")).error, QString());
}

QTEST_GUILESS_MAIN(TestNfcHandoverRequestor)
#include "tst_nfchandoverrequestor.moc"
