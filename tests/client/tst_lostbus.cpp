// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>
#include <map>
#include <memory>

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Kill
{
    void operator()(QProcess *process) const
    {
        process->kill();
        process->waitForFinished();
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
        for (const QString &bus : {u"system"_s, u"session"_s}) {
            Process process(new QProcess);
            // A session's configuration for both: it lets everybody do everything.
            process->start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s,
                                              u"--address=unix:path=%1"_s.arg(folder.filePath(bus))});
            // The address is printed when the bus listens.
            while (!process->canReadLine())
                if (!process->waitForReadyRead())
                    qFatal("no %s bus", qPrintable(bus));
            environment.insert(u"DBUS_%1_BUS_ADDRESS"_s.arg(bus.toUpper()),
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
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }
    void clientSaysSoAndFails_data();
    void clientSaysSoAndFails();
    void settingsSaySoAndFail_data();
    void settingsSaySoAndFail();
    void waitingProgramSaysSoAndFails_data();
    void waitingProgramSaysSoAndFails();
    void touchSaysSoAndFails();
};

void TestLostBus::clientSaysSoAndFails_data()
{
    QTest::addColumn<QStringList>("face");
    QTest::addColumn<QString>("bus");
    QTest::addColumn<QByteArray>("words");

    const QStringList faces[] = {{u"--remote-control"_s}, {u"--console"_s}};
    for (const QStringList &face : faces) {
        for (const QString &bus : {u"system"_s, u"session"_s}) {
            QTest::addRow("%s, %s bus", qPrintable(face.constFirst()), qPrintable(bus))
                << face << bus << "nfc-ui: the " + bus.toUtf8() + " bus has gone\n";
        }
    }
}

void TestLostBus::clientSaysSoAndFails()
{
    QFETCH(QStringList, face);
    QFETCH(QString, bus);
    QFETCH(QByteArray, words);

    Session session;
    const auto daemon = session.start(NFCD_SIM, {});
    QVERIFY(daemon->waitForStarted());
    const auto client = session.start(NFC_UI, face);
    QVERIFY(says(client.get(), "the NFC daemon is here"));
    const auto tap = session.start(NFCTAP, {u"pair"_s, u"00:11:22:33:44:55"_s, u"Headset"_s, u"0x240404"_s});
    QVERIFY(says(client.get(), "Headset"));

    // In the middle of a question.
    session.kill(bus);
    QVERIFY(client->waitForFinished());
    QCOMPARE(client->exitStatus(), QProcess::NormalExit);
    QCOMPARE(client->exitCode(), 1);
    // Last: the platform plugin has its say before.
    const QByteArray said = client->readAllStandardError();
    QVERIFY2(said.endsWith(words), said.constData());
}

void TestLostBus::settingsSaySoAndFail_data()
{
    QTest::addColumn<QString>("bus");
    QTest::newRow("system bus") << u"system"_s;
    QTest::newRow("session bus") << u"session"_s;
}

void TestLostBus::settingsSaySoAndFail()
{
    QFETCH(QString, bus);
    Session session;
    const auto settings = session.start(NFC_SETTINGS, {u"--remote-control"_s});
    QVERIFY(says(settings.get(), "(NFC): off]"));

    session.kill(bus);
    QVERIFY(settings->waitForFinished());
    QCOMPARE(settings->exitStatus(), QProcess::NormalExit);
    QCOMPARE(settings->exitCode(), 1);
    const QByteArray said = settings->readAllStandardError();
    QVERIFY2(said.endsWith("nfc-settings: the " + bus.toUtf8() + " bus has gone\n"), said.constData());
}

void TestLostBus::waitingProgramSaysSoAndFails_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QString>("face");
    QTest::newRow("screen") << "nfc-ui"_ba << QByteArray(NFC_UI) << u"--remote-control"_s;
    QTest::newRow("terminal") << "nfc-ui"_ba << QByteArray(NFC_UI) << u"--console"_s;
    QTest::newRow("settings") << "nfc-settings"_ba << QByteArray(NFC_SETTINGS) << u"--remote-control"_s;
}

void TestLostBus::waitingProgramSaysSoAndFails()
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
        session.start("stdbuf", {u"-oL"_s, u"dbus-monitor"_s, u"--system"_s, u"member='DefaultAdapter'"_s});
    // It says so when the bus has made it a monitor: the name of its own connection is taken from it.
    QVERIFY(says(monitor.get(), "NameLost"));
    const auto waiting = session.start(program, {face});
    QVERIFY(says(monitor.get(), "member=DefaultAdapter"));

    session.kill(u"system"_s);
    QVERIFY(waiting->waitForFinished());
    QCOMPARE(waiting->exitStatus(), QProcess::NormalExit);
    QCOMPARE(waiting->exitCode(), 1);
    const QByteArray said = waiting->readAllStandardError();
    QVERIFY2(said.contains(name + ": the system bus has gone\n"), said.constData());
}

void TestLostBus::touchSaysSoAndFails()
{
    Session session;
    const auto daemon = session.start(NFCD_SIM, {});
    daemon->setReadChannel(QProcess::StandardError);
    QVERIFY(says(daemon.get(), "ready"));
    const auto client = session.start(NFC_UI, {u"--console"_s});
    QVERIFY(says(client.get(), "the NFC daemon is here"));
    const auto tap = session.start(NFCTAP, {u"pair"_s, u"00:11:22:33:44:55"_s, u"Headset"_s, u"0x240404"_s});
    QVERIFY(says(client.get(), "Headset"));

    session.kill(u"system"_s);
    QVERIFY(tap->waitForFinished());
    QCOMPARE(tap->exitCode(), 3);
    QCOMPARE(tap->readAllStandardError(), "nfctap: pairing with Headset (00:11:22:33:44:55): no simulated "
                                          "daemon: Not connected to D-Bus server\n");
}

QTEST_GUILESS_MAIN(TestLostBus)

#include "tst_lostbus.moc"
