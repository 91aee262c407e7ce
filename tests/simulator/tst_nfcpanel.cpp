// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include "privatebus.h"

class TestNfcPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void panelEndsWithItsBus();
    void unknownOptionIsRefused();
    void helpIsPrinted();
    void monitorEndsWithThePanel_data();
    void monitorEndsWithThePanel();

private:
    static QByteArray contents(const QString &name);
    static bool isRunning(const QByteArray &process);
    QByteArray monitor() const;

    std::unique_ptr<PrivateBus> bus;
    std::unique_ptr<QProcess> panel;
};

void TestNfcPanel::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    bus = std::make_unique<PrivateBus>();
    panel = std::make_unique<QProcess>();
    panel->setProcessEnvironment(bus->environment(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS")));
    panel->start(QStringLiteral(NFC_PANEL), {});
    QTRY_VERIFY(!monitor().isEmpty());
}

void TestNfcPanel::cleanup()
{
    panel->kill();
    panel->waitForFinished();
    panel.reset();
    bus.reset();
}

QByteArray TestNfcPanel::contents(const QString &name)
{
    QFile file(name);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

// The number of the process that listens for the panel; nothing before there is one.
QByteArray TestNfcPanel::monitor() const
{
    const auto children =
        contents(QStringLiteral("/proc/%1/task/%1/children").arg(panel->processId())).split(' ');
    for (const QByteArray &child : children)
        if (contents(QStringLiteral("/proc/%1/comm").arg(QLatin1String(child))) == "busctl\n")
            return child;
    return QByteArray();
}

// One that nobody has waited for yet has ended as well.
bool TestNfcPanel::isRunning(const QByteArray &process)
{
    const QByteArray status = contents(QStringLiteral("/proc/%1/stat").arg(QLatin1String(process)));
    return !status.isEmpty() && !status.contains(") Z ");
}

void TestNfcPanel::panelEndsWithItsBus()
{
    bus->end();
    QVERIFY(panel->waitForFinished());
    QCOMPARE(panel->exitStatus(), QProcess::NormalExit);
    QCOMPARE(panel->exitCode(), 0);
}

void TestNfcPanel::unknownOptionIsRefused()
{
    QProcess other;
    other.setProcessEnvironment(panel->processEnvironment());
    other.start(QStringLiteral(NFC_PANEL), {QStringLiteral("--unknown")});
    QVERIFY(other.waitForFinished());
    QCOMPARE(other.exitStatus(), QProcess::NormalExit);
    QCOMPARE(other.exitCode(), 64);
    QVERIFY(other.readAllStandardError().startsWith("nfc-panel: "));
}

void TestNfcPanel::helpIsPrinted()
{
    QProcess other;
    other.start(QStringLiteral(NFC_PANEL), {QStringLiteral("--help")});
    QVERIFY(other.waitForFinished());
    QCOMPARE(other.exitCode(), 0);
    const QByteArray help = other.readAllStandardOutput().simplified();
    QVERIFY(help.contains("Holds tags, devices and phones against the simulated NFC daemon. Exit codes: 0 "
                          "closed, or the bus disconnected, 1 no system bus, 3 no display, 64 invalid "
                          "arguments. Options:"));
}

void TestNfcPanel::monitorEndsWithThePanel_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("termination") << SIGTERM;
    QTest::newRow("hang-up") << SIGHUP;
    QTest::newRow("kill") << SIGKILL;
}

void TestNfcPanel::monitorEndsWithThePanel()
{
    QFETCH(int, signal);
    const QByteArray listener = monitor();
    QCOMPARE(kill(panel->processId(), signal), 0);
    QVERIFY(panel->waitForFinished());
    QTRY_VERIFY(!isRunning(listener));
}

QTEST_GUILESS_MAIN(TestNfcPanel)
#include "tst_nfcpanel.moc"
