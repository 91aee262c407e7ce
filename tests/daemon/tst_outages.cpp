// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>
#include <winscard.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

#include "agentprocess.h"
#include "failingpcscd.h"
#include "heldtag.h"
#include "otherprogram.h"
#include "pcscdaemon.h"
#include "pcscdprocess.h"
#include "privatebus.h"
#include "readers.h"
#include "virtualtype2.h"

using namespace std::chrono_literals;

namespace {

/** One that lets nobody in, as it does when polkit says so. */
std::unique_ptr<FailingPcscd> refusingPcscd()
{
    return std::make_unique<FailingPcscd>(FailingPcscd::EstablishContext, LONG(SCARD_W_SECURITY_VIOLATION));
}

} // namespace

/**
 * Faults of the programs around the daemon.
 *
 * It is to answer within a tenth of a second throughout, and to ask about a tag again within one and a half
 * after the end of the cause.
 */
class TestOutages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<QDBusObjectPath>(); }
    void init();
    void cleanup();

    void pcscdIsKilled();
    void pcscdIsAbsent();
    void pcscdRefuses();
    void pcscdRefusesUntilPolkitChanges_data();
    void pcscdRefusesUntilPolkitChanges();
    void readerIsPulledWhileIdle();
    void readerIsPulledInMidRead();
    void cardHangsForTenSeconds();
    void otherProgramHasTheCardForTenSeconds_data();
    void otherProgramHasTheCardForTenSeconds();
    void agentLeaves();
    void daemonIsSwitchedOffInMidRead();
    void busGoes();
    void twoReadersAreUsedAtOnce();

private:
    // Twice and ten times what is promised, for a machine that has something else to do; measure_reader takes
    // the time.
    static constexpr int atOnce = 3000; // ms
    static constexpr int longestAnswer = 1000;

    void startWithAgent();
    void answersFor(std::chrono::milliseconds time);
    bool isAsked(int question, int milliseconds = atOnce);

    PcscDaemon daemon;
    VirtualType2 tag = VirtualType2::sticker(QByteArray::fromHex("d1010455036f7267"));
    VirtualType2 otherTag = VirtualType2::sticker(QByteArray::fromHex("d10105540265654869"));
    std::unique_ptr<AgentProcess> agent;
};

void TestOutages::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    Readers::waitUntilEmpty();
}

void TestOutages::cleanup()
{
    agent.reset();
    daemon.kill();
}

void TestOutages::startWithAgent()
{
    daemon.startWithReaders();
    agent = std::make_unique<AgentProcess>();
    QCOMPARE(agent->registerAgent().error, QString());
    daemon.longestAnswer = 0;
}

// The outage lasts, and the daemon is asked for its properties all the time.
void TestOutages::answersFor(std::chrono::milliseconds time)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < time.count()) {
        daemon.properties();
        QTest::qWait(50);
    }
}

bool TestOutages::isAsked(int question, int milliseconds)
{
    return QTest::qWaitFor(
        [&] { return agent->calls(QStringLiteral("RequestNDEFDataDelivery")).size() >= question; },
        milliseconds);
}

void TestOutages::pcscdIsKilled()
{
    startWithAgent();
    PcscdProcess::die();
    QTRY_COMPARE(daemon.backend(), QStringLiteral("absent"));
    QCOMPARE(daemon.readers(), QStringList());
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, atOnce);
    const HeldTag held(tag);
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::pcscdIsAbsent()
{
    startWithAgent();
    PcscdProcess::die();
    answersFor(10s);
    QCOMPARE(daemon.backend(), QStringLiteral("absent"));
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, atOnce);
    const HeldTag held(tag);
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
    QCOMPARE(daemon.log().count(QStringLiteral("pcscd cannot be used")), 1);
}

void TestOutages::pcscdRefuses()
{
    startWithAgent();
    PcscdProcess::die();
    auto refusing = refusingPcscd();
    QTRY_COMPARE(daemon.backend(), QStringLiteral("refused"));
    answersFor(5s);
    QCOMPARE(daemon.backend(), QStringLiteral("refused"));
    refusing.reset();
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, atOnce);
    QVERIFY(daemon.longestAnswer < longestAnswer);
    QCOMPARE(daemon.log().count(QStringLiteral("pcscd cannot be used")), 1);
}

void TestOutages::pcscdRefusesUntilPolkitChanges_data()
{
    QTest::addColumn<bool>("isThereBefore");
    QTest::newRow("polkit comes") << false;
    QTest::newRow("its rules change") << true;
}

// With news of polkit ten tries take a second, without more than ten.
void TestOutages::pcscdRefusesUntilPolkitChanges()
{
    QFETCH(bool, isThereBefore);
    const QString name = QStringLiteral("org.freedesktop.PolicyKit1");
    QDBusConnection bus = QDBusConnection::systemBus();
    const auto leave = qScopeGuard([&] { bus.unregisterService(name); });
    if (isThereBefore)
        QVERIFY(bus.registerService(name));
    startWithAgent();
    PcscdProcess::die();
    auto refusing = refusingPcscd();
    answersFor(11s);
    const int before = refusing->failures();
    if (isThereBefore)
        bus.send(QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
                                            QStringLiteral("org.freedesktop.PolicyKit1.Authority"),
                                            QStringLiteral("Changed")));
    else
        QVERIFY(bus.registerService(name));
    QTRY_VERIFY(refusing->failures() >= before + 10);
    refusing.reset();
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, atOnce);
}

void TestOutages::readerIsPulledWhileIdle()
{
    startWithAgent();
    auto pulled = std::make_unique<PulledReader>();
    QTRY_COMPARE(daemon.readers().size(), 1);
    answersFor(2s);
    pulled.reset();
    QTRY_COMPARE(daemon.readers().size(), 2);
    const HeldTag held(tag);
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::readerIsPulledInMidRead()
{
    startWithAgent();
    auto held = std::make_unique<HeldTag>(tag, HeldTag::Fate{-1, 1, 1s});
    QTRY_COMPARE(held->commands(), 2);
    auto pulled = std::make_unique<PulledReader>();
    held.reset();
    QTRY_COMPARE(daemon.readers().size(), 1);
    answersFor(2s);
    pulled.reset();
    QTRY_COMPARE(daemon.readers().size(), 2);
    held = std::make_unique<HeldTag>(tag);
    QVERIFY(isAsked(1));
    QCOMPARE(agent->calls(QStringLiteral("RequestNDEFDataDelivery")).size(), 1);
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::cardHangsForTenSeconds()
{
    startWithAgent();
    auto held = std::make_unique<HeldTag>(tag, HeldTag::Fate{-1, 1, 10s});
    QTRY_COMPARE(held->commands(), 2);
    answersFor(10s);
    QVERIFY(daemon.log().contains(QStringLiteral("the card on Virtual reader 0 00 00 does not answer\n")));
    QVERIFY(!isAsked(1, 500));
    held.reset();
    held = std::make_unique<HeldTag>(otherTag);
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::otherProgramHasTheCardForTenSeconds_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("exclusive") << int(OtherProgram::Exclusive);
    QTest::newRow("in a transaction") << int(OtherProgram::InTransaction);
}

void TestOutages::otherProgramHasTheCardForTenSeconds()
{
    QFETCH(int, how);
    startWithAgent();
    // Off, so that the other program is first.
    daemon.setPowered(false);
    const HeldTag held(tag);
    Readers::waitForCard(0);
    auto other = std::make_unique<OtherProgram>(OtherProgram::How(how));
    daemon.setPowered(true);
    answersFor(10s);
    QCOMPARE(held.commands(), 0);
    other.reset();
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::agentLeaves()
{
    startWithAgent();
    agent->hold(QStringLiteral("RequestNDEFDataDelivery"));
    {
        const HeldTag held(tag);
        QVERIFY(isAsked(1, 5000));
    }
    agent->kill();
    answersFor(1s);
    agent = std::make_unique<AgentProcess>();
    QTRY_COMPARE(agent->registerAgent().error, QString());
    const HeldTag held(tag);
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::daemonIsSwitchedOffInMidRead()
{
    startWithAgent();
    auto held = std::make_unique<HeldTag>(tag, HeldTag::Fate{-1, 1, 1s});
    QTRY_COMPARE(held->commands(), 2);
    daemon.setPowered(false);
    QCOMPARE(daemon.readers(), QStringList());
    answersFor(2s);
    QCOMPARE(held->commands(), 2);
    held.reset();
    daemon.setPowered(true);
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, atOnce);
    held = std::make_unique<HeldTag>(tag);
    QVERIFY(isAsked(1));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

void TestOutages::busGoes()
{
    PrivateBus bus;
    QProcess program;
    QProcessEnvironment environment = bus.environment(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"));
    environment.insert(QStringLiteral("LSAN_OPTIONS"), QStringLiteral("suppressions='" PCSC_LEAKS "'"));
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(NFCD_PCSC), QStringList());
    QByteArray log;
    const auto isReady = [&] { return (log += program.readAllStandardError()).contains(": ready\n"); };
    QTRY_VERIFY_WITH_TIMEOUT(isReady(), Readers::patience);
    QTRY_COMPARE_WITH_TIMEOUT(Readers::connectionsToPcscd(), 1, Readers::patience);
    bus.end();
    QVERIFY(program.waitForFinished(atOnce));
    QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0,
             (log + program.readAllStandardError()).constData());
}

void TestOutages::twoReadersAreUsedAtOnce()
{
    startWithAgent();
    const HeldTag slow(tag, {-1, 1, 4s}, 0);
    QTRY_COMPARE(slow.commands(), 2);
    const HeldTag quick(otherTag, 1);
    QVERIFY(isAsked(1));
    answersFor(2s);
    QVERIFY(isAsked(2, 5000));
    QVERIFY(daemon.longestAnswer < longestAnswer);
}

QTEST_GUILESS_MAIN(TestOutages)

#include "tst_outages.moc"
