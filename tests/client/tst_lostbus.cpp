// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>
#include <map>
#include <memory>

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int longEnough = 20000; // milliseconds: less than the 25 seconds that a D-Bus call waits

struct Kill
{
    void operator()(QProcess *process) const
    {
        process->kill();
        process->waitForFinished(longEnough);
        delete process;
    }
};
using Process = std::unique_ptr<QProcess, Kill>;

/** Programs on two buses of their own, which can be killed. */
class Session
{
public:
    Session()
    {
        for (const QString &bus : {QStringLiteral("system"), QStringLiteral("session")}) {
            Process process(new QProcess);
            // A session's configuration for both: it lets everybody do everything.
            process->start(QStringLiteral("dbus-daemon"),
                           {QStringLiteral("--session"), QStringLiteral("--nofork"),
                            QStringLiteral("--print-address"),
                            QStringLiteral("--address=unix:path=%1").arg(folder.filePath(bus))});
            // The address is printed when the bus listens.
            while (!process->canReadLine())
                if (!process->waitForReadyRead())
                    qFatal("no %s bus", qPrintable(bus));
            environment.insert(QStringLiteral("DBUS_%1_BUS_ADDRESS").arg(bus.toUpper()),
                               QString::fromLocal8Bit(process->readLine().trimmed()));
            buses[bus] = std::move(process);
        }
    }

    Process start(const char *program, const QStringList &arguments)
    {
        Process process(new QProcess);
        process->setProcessEnvironment(environment);
        process->start(QString::fromLatin1(program), arguments);
        return process;
    }

    void kill(const QString &bus) { buses.erase(bus); }

private:
    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::map<QString, Process> buses;
};

bool says(QProcess *process, const QByteArray &text)
{
    QByteArray said;
    while (!said.contains(text)) {
        if (!process->waitForReadyRead())
            return false;
        said += process->readAll();
    }
    return true;
}

} // namespace

class TestLostBus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }
    void clientReportsTheLostBusAndFails_data();
    void clientReportsTheLostBusAndFails();
    void settingsReportTheLostBusAndFail_data();
    void settingsReportTheLostBusAndFail();
    void waitingProgramReportsTheLostBusAndFails_data();
    void waitingProgramReportsTheLostBusAndFails();
    void touchReportsTheLostBusAndFails();
};

void TestLostBus::clientReportsTheLostBusAndFails_data()
{
    QTest::addColumn<QStringList>("face");
    QTest::addColumn<QString>("bus");
    QTest::addColumn<QByteArray>("words");

    for (const QString &bus : {QStringLiteral("system"), QStringLiteral("session")}) {
        const QByteArray words = ": the " + bus.toUtf8() + " bus disconnected\n";
        QTest::addRow("on the screen, %s bus", qPrintable(bus))
            << QStringList{QStringLiteral("--remote-control")} << bus << "nfc-ui" + words;
        QTest::addRow("on a terminal, %s bus", qPrintable(bus))
            << QStringList{QStringLiteral("--console")} << bus << "nfc-agent" + words;
    }
}

void TestLostBus::clientReportsTheLostBusAndFails()
{
    QFETCH(QStringList, face);
    QFETCH(QString, bus);
    QFETCH(QByteArray, words);

    Session session;
    const auto daemon = session.start(NFCD_SIM, {});
    QVERIFY(daemon->waitForStarted());
    const auto client = session.start(NFC_UI, face);
    QVERIFY(says(client.get(), "the NFC daemon is here"));
    const auto tap = session.start(NFCTAP, {QStringLiteral("pair"), QStringLiteral("00:11:22:33:44:55"),
                                            QStringLiteral("Headset"), QStringLiteral("0x240404")});
    QVERIFY(says(client.get(), "Headset"));

    // In the middle of a question.
    session.kill(bus);
    QVERIFY(client->waitForFinished(longEnough));
    QCOMPARE(client->exitStatus(), QProcess::NormalExit);
    QCOMPARE(client->exitCode(), 1);
    // Last: the platform plugin has its say before.
    const QByteArray said = client->readAllStandardError();
    QVERIFY2(said.endsWith(words), said.constData());
}

void TestLostBus::settingsReportTheLostBusAndFail_data()
{
    QTest::addColumn<QString>("bus");
    QTest::newRow("system bus") << QStringLiteral("system");
    QTest::newRow("session bus") << QStringLiteral("session");
}

void TestLostBus::settingsReportTheLostBusAndFail()
{
    QFETCH(QString, bus);
    Session session;
    const auto settings = session.start(NFC_SETTINGS, {QStringLiteral("--remote-control")});
    QVERIFY(says(settings.get(), "(NFC): off]"));

    session.kill(bus);
    QVERIFY(settings->waitForFinished(longEnough));
    QCOMPARE(settings->exitStatus(), QProcess::NormalExit);
    QCOMPARE(settings->exitCode(), 1);
    const QByteArray said = settings->readAllStandardError();
    QVERIFY2(said.endsWith("nfc-settings: the " + bus.toUtf8() + " bus disconnected\n"), said.constData());
}

void TestLostBus::waitingProgramReportsTheLostBusAndFails_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QString>("face");
    QTest::newRow("screen") << QByteArrayLiteral("nfc-ui") << QByteArray(NFC_UI)
                            << QStringLiteral("--remote-control");
    QTest::newRow("terminal") << QByteArrayLiteral("nfc-agent") << QByteArray(NFC_UI)
                              << QStringLiteral("--console");
    QTest::newRow("settings") << QByteArrayLiteral("nfc-settings") << QByteArray(NFC_SETTINGS)
                              << QStringLiteral("--remote-control");
}

void TestLostBus::waitingProgramReportsTheLostBusAndFails()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, program);
    QFETCH(QString, face);

    Session session;
    const auto daemon = session.start(NFCD_SIM, {});
    daemon->setReadChannel(QProcess::StandardError);
    QVERIFY(says(daemon.get(), "ready"));
    QCOMPARE(::kill(pid_t(daemon->processId()), SIGSTOP), 0);
    const auto monitor =
        session.start("stdbuf", {QStringLiteral("-oL"), QStringLiteral("dbus-monitor"),
                                 QStringLiteral("--system"), QStringLiteral("member='DefaultAdapter'")});
    // It says so when the bus has made it a monitor: the name of its own connection is taken from it.
    QVERIFY(says(monitor.get(), "NameLost"));
    const auto waiting = session.start(program, {face});
    QVERIFY(says(monitor.get(), "member=DefaultAdapter"));

    session.kill(QStringLiteral("system"));
    QVERIFY(waiting->waitForFinished(longEnough));
    QCOMPARE(waiting->exitStatus(), QProcess::NormalExit);
    QCOMPARE(waiting->exitCode(), 1);
    const QByteArray said = waiting->readAllStandardError();
    QVERIFY2(said.contains(name + ": the system bus disconnected\n"), said.constData());
}

void TestLostBus::touchReportsTheLostBusAndFails()
{
    Session session;
    const auto daemon = session.start(NFCD_SIM, {});
    daemon->setReadChannel(QProcess::StandardError);
    QVERIFY(says(daemon.get(), "ready"));
    const auto client = session.start(NFC_UI, {QStringLiteral("--console")});
    QVERIFY(says(client.get(), "the NFC daemon is here"));
    const auto tap = session.start(NFCTAP, {QStringLiteral("pair"), QStringLiteral("00:11:22:33:44:55"),
                                            QStringLiteral("Headset"), QStringLiteral("0x240404")});
    QVERIFY(says(client.get(), "Headset"));

    session.kill(QStringLiteral("system"));
    QVERIFY(tap->waitForFinished(longEnough));
    QCOMPARE(tap->exitCode(), 3);
    QCOMPARE(tap->readAllStandardError(), "nfctap: pairing with Headset (00:11:22:33:44:55): no simulated "
                                          "daemon: Not connected to D-Bus server\n");
}

QTEST_GUILESS_MAIN(TestLostBus)

#include "tst_lostbus.moc"
