// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QTest>

#include "fakeservice.h"
#include "simulateddaemon.h"
#include "tap.h"

class TestConformance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void simulatedDaemonConforms();
    void checkedDaemonIsAsItWas();
    void agreeableDaemonFails();
    void daemonThatDiesIsNotStartedAgain();
    void stateThatIsOnlyAnnouncedFails();
    void agentThatCannotLeaveFails();
    void uselessDaemonFailsEveryCheck();
    void missingInterfacesAreSkipped();
    void missingDaemonIsReported();

private:
    SimulatedDaemon daemon;
};

namespace {

QStringList failures(Tap *tap)
{
    static const QRegularExpression failure(QStringLiteral("^FAILED   ([^:]*)(:|$)"));
    QStringList names;
    const QStringList lines = tap->output().split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = failure.match(line);
        if (match.hasMatch())
            names.append(match.captured(1));
    }
    return names;
}

} // namespace

void TestConformance::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestConformance::cleanup()
{
    daemon.kill();
}

void TestConformance::simulatedDaemonConforms()
{
    daemon.start();
    Tap tap({QStringLiteral("conformance")});
    QCOMPARE(tap.exitCode(), 0);
    const QString output = tap.output();
    QVERIFY2(output.endsWith(QStringLiteral("14 passed, 0 failed, 0 skipped\n")), qUtf8Printable(output));
    QCOMPARE(output.count(
                 QRegularExpression(QStringLiteral("^passed   [a-z]"), QRegularExpression::MultilineOption)),
             14);
}

void TestConformance::checkedDaemonIsAsItWas()
{
    daemon.start();
    QCOMPARE(Tap({QStringLiteral("power"), QStringLiteral("off")}).exitCode(), 0);
    QCOMPARE(Tap({QStringLiteral("conformance")}).exitCode(), 0);
    Tap tag({QStringLiteral("empty")});
    QCOMPARE(tag.exitCode(), 3);
    QCOMPARE(tag.errors(), QStringLiteral("nfctap: empty tag: the adapter is switched off\n"));
    QCOMPARE(Tap({QStringLiteral("power"), QStringLiteral("on")}).exitCode(), 0);
    Tap again({QStringLiteral("empty")});
    QCOMPARE(again.exitCode(), 3);
    QCOMPARE(again.errors(), QStringLiteral("nfctap: empty tag: no agent is registered with the daemon\n"));
}

// It says yes to everything and does nothing.
void TestConformance::agreeableDaemonFails()
{
    FakeService agreeable(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    agreeable.start();
    Tap tap({QStringLiteral("conformance")});
    QCOMPARE(tap.exitCode(), 1);
    QCOMPARE(failures(&tap),
             (QStringList{QStringLiteral("switches, and announces it"),
                          QStringLiteral("refuses other states and properties"),
                          QStringLiteral("refuses a second agent"),
                          QStringLiteral("lets no stranger unregister the agent"),
                          QStringLiteral("refuses a handover to a carrier that does not exist"),
                          QStringLiteral("refuses to cancel a handover that is not under way"),
                          QStringLiteral("refuses to write bytes that are not a message"),
                          QStringLiteral("keeps one message to write, until it is canceled")}));
}

void TestConformance::daemonThatDiesIsNotStartedAgain()
{
    FakeService dying(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    dying.makeActivatable();
    dying.start();
    dying.dieOn(QStringLiteral("GetProperties"));
    Tap tap({QStringLiteral("conformance")});
    QTRY_VERIFY_WITH_TIMEOUT(!tap.isRunning(), 60000);
    QCOMPARE(tap.exitCode(), 1);
    QVERIFY(!dying.isOnBus());
}

void TestConformance::stateThatIsOnlyAnnouncedFails()
{
    FakeService announcing(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    announcing.reply(QStringLiteral("GetProperties"),
                     {QVariantMap{{QStringLiteral("State"), QStringLiteral("on")}}});
    announcing.start();
    connect(&announcing, &FakeService::called, this, [&announcing](const QString &member) {
        if (member == QLatin1String("SetProperty"))
            announcing.emitSignal(
                QStringLiteral("/com/tavix/nfc/adapter0"), QStringLiteral("com.tavix.nfc.Adapter"),
                QStringLiteral("PropertyChanged"),
                {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(QStringLiteral("off")))});
    });
    Tap tap({QStringLiteral("conformance")});
    QTRY_VERIFY_WITH_TIMEOUT(!tap.isRunning(), 60000);
    QCOMPARE(tap.exitCode(), 1);
    const QString output = tap.output();
    QVERIFY2(output.contains(
                 QStringLiteral("FAILED   switches, and announces it: State is 'on' after it was set\n")),
             qUtf8Printable(output));
}

void TestConformance::agentThatCannotLeaveFails()
{
    FakeService keeping(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    keeping.fail(QStringLiteral("UnregisterUIAgent"), QStringLiteral("org.connui.test.Error"),
                 QStringLiteral("no"));
    keeping.start();
    Tap tap({QStringLiteral("conformance")});
    QCOMPARE(tap.exitCode(), 1);
    QVERIFY(failures(&tap).contains(QStringLiteral("has room for another agent once one is unregistered")));
}

void TestConformance::uselessDaemonFailsEveryCheck()
{
    FakeService useless(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    useless.start();
    for (const char *method :
         {"DefaultAdapter", "GetProperties", "SetProperty", "RegisterUIAgent", "CancelTransfer"})
        useless.fail(QLatin1String(method), QStringLiteral("org.connui.test.Error"), QStringLiteral("no"));
    Tap tap({QStringLiteral("conformance")});
    QCOMPARE(tap.exitCode(), 1);
    const QStringList failed = failures(&tap);
    for (const QString &name : {QStringLiteral("names its adapter"), QStringLiteral("reports its state"),
                                QStringLiteral("registers an agent, also twice"),
                                QStringLiteral("has room for another agent once one is unregistered"),
                                QStringLiteral("drops the agent of a process that leaves"),
                                QStringLiteral("ignores the end of a transfer that is not under way")})
        QVERIFY2(failed.contains(name), qUtf8Printable(name));
}

void TestConformance::missingInterfacesAreSkipped()
{
    FakeService plain(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    plain.start();
    for (const char *method : {"CancelTransfer", "WriteNdef", "Cancel"})
        plain.fail(QLatin1String(method), QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface"),
                   QStringLiteral("no"));
    Tap tap({QStringLiteral("conformance")});
    QCOMPARE(tap.exitCode(), 1);
    const QString output = tap.output();
    QCOMPARE(output.count(QStringLiteral(": there is no com.tavix.nfc.Transfers\n")), 1);
    QCOMPARE(output.count(QStringLiteral(": there is no com.tavix.nfc.TagWriter\n")), 2);
    QVERIFY2(output.endsWith(QStringLiteral(", 3 skipped\n")), qUtf8Printable(output));
}

void TestConformance::missingDaemonIsReported()
{
    Tap tap({QStringLiteral("conformance")});
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), QStringLiteral("nfctap: conformance: no daemon\n"));
}

QTEST_GUILESS_MAIN(TestConformance)
#include "tst_conformance.moc"
