// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QSignalSpy>
#include <QTest>

#include <NfcAdapter>
#include <NfcAgent>
#include <RadioState>

#include "fakedaemon.h"
#include "fakeohm.h"
#include "introspection.h"

using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::RadioState;

class TestInterfaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void exportedInterfaceIsAsPublished_data();
    void exportedInterfaceIsAsPublished();

private:
    std::unique_ptr<FakeOhm> ohm; // for the agent's records
    std::unique_ptr<NfcAdapter> adapter;
    std::unique_ptr<NfcAgent> agent;
};

void TestInterfaces::initTestCase()
{
    RadioState(RadioState::NFC).setEnabled(false);
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
    adapter = std::make_unique<NfcAdapter>();
    agent = std::make_unique<NfcAgent>();
}

void TestInterfaces::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestInterfaces::exportedInterfaceIsAsPublished_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("com.tavix.nfc.HandoverRequestor") << QStringLiteral("/com/tavix/nfcHandoverRequestor");
    QTest::newRow("com.tavix.nfc.UIAgent") << agent->path();
}

void TestInterfaces::exportedInterfaceIsAsPublished()
{
    QFETCH(QString, path);
    const QString interface = QString::fromLatin1(QTest::currentDataTag());
    FakeDaemon daemon;
    QSignalSpy replied(&daemon, &FakeService::replied);
    daemon.call(QDBusConnection::systemBus().baseService(), path,
                QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    QVERIFY(!replied.isEmpty() || replied.wait());
    const FakeReply reply = daemon.replies().constFirst();
    QCOMPARE(reply.error, QString());

    const QStringList published = Introspection::publishedMembers(interface);
    QVERIFY(!published.isEmpty());
    QCOMPARE(Introspection::members(reply.arguments.constFirst().toString().toUtf8(), interface), published);
}

QTEST_GUILESS_MAIN(TestInterfaces)
#include "tst_interfaces.moc"
