// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>

#include <QFile>
#include <QProcess>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 60000; // milliseconds

} // namespace

/** The programs as a shell or a service manager meets them. */
class TestPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void helpNeedsNoDisplay_data() { addPrograms(); }
    void helpNeedsNoDisplay();
    void withoutDisplayItSaysSo_data() { addPrograms(); }
    void withoutDisplayItSaysSo();
    void badArgumentsAreRefused_data() { addPrograms(); }
    void badArgumentsAreRefused();
    void signalsEndIt_data();
    void signalsEndIt();
    void startsNothingWithBlockedSignals_data() { addPrograms(); }
    void startsNothingWithBlockedSignals();
    void remoteControlAnswersEveryLine_data();
    void remoteControlAnswersEveryLine();
    void manualHasEveryExitCode_data() { addPrograms(); }
    void manualHasEveryExitCode();
    void serviceDoesNotComeBackInVain();

private:
    static void addPrograms();
    static QProcessEnvironment withoutDisplay();
};

void TestPrograms::addPrograms()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("nfc-ui") << QStringLiteral(NFC_UI);
    QTest::newRow("nfc-settings") << QStringLiteral(NFC_SETTINGS);
}

QProcessEnvironment TestPrograms::withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    return environment;
}

void TestPrograms::helpNeedsNoDisplay()
{
    QFETCH(QString, program);
    for (const QString &option : {u"--help"_s, u"-h"_s, u"--version"_s, u"-v"_s}) {
        QProcess process;
        process.setProcessEnvironment(withoutDisplay());
        process.start(program, {option});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().contains(option.contains(u'h') ? "Exit codes: 0" : "1."));
    }
}

void TestPrograms::withoutDisplayItSaysSo()
{
    QFETCH(QString, program);
    QProcess process;
    process.setProcessEnvironment(withoutDisplay());
    process.start(program, {});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 3);
    const QByteArray said = process.readAllStandardError();
    QVERIFY2(said.contains(QTest::currentDataTag() + ": no display: "_ba), said.constData());
}

void TestPrograms::badArgumentsAreRefused()
{
    QFETCH(QString, program);
    for (const QString &argument : {u"--nonsense"_s, u"nonsense"_s}) {
        QProcess process;
        process.start(program, {argument});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 64);
        QVERIFY(process.readAllStandardError().startsWith(QTest::currentDataTag()));
    }
}

void TestPrograms::signalsEndIt_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<int>("number");
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        QTest::addRow("nfc-ui, %d", number)
            << QStringList{QStringLiteral(NFC_UI), u"--remote-control"_s} << number;
        QTest::addRow("nfc-ui --console, %d", number)
            << QStringList{QStringLiteral(NFC_UI), u"--console"_s} << number;
        QTest::addRow("nfc-settings, %d", number)
            << QStringList{QStringLiteral(NFC_SETTINGS), u"--remote-control"_s} << number;
    }
}

void TestPrograms::signalsEndIt()
{
    QFETCH(QStringList, command);
    QFETCH(int, number);
    QProcess process;
    process.start(command[0], command.mid(1));
    // It reads when it is ready to be ended.
    process.write("nonsense\n");
    QVERIFY(process.waitForReadyRead());
    QCOMPARE(::kill(pid_t(process.processId()), number), 0);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

// What it starts would have the mask that it has itself, and could not be ended.
void TestPrograms::startsNothingWithBlockedSignals()
{
    QFETCH(QString, program);
    QProcess process;
    process.start(program, {u"--remote-control"_s});
    process.write("nonsense\n");
    QVERIFY(process.waitForReadyRead());
    QFile status(u"/proc/%1/status"_s.arg(process.processId()));
    QVERIFY(status.open(QIODevice::ReadOnly));
    QVERIFY(status.readAll().contains("\nSigBlk:\t0000000000000000\n"));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
}

void TestPrograms::remoteControlAnswersEveryLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("a button") << u"press Ask before opening what is on a tag"_s << "done: "_ba;
    QTest::newRow("no such button") << u"press nothing"_s << "failed: "_ba;
    QTest::newRow("no such row") << u"select nothing"_s << "failed: "_ba;
    QTest::newRow("an angle") << u"turn 90"_s << "done: "_ba;
    QTest::newRow("no angle") << u"turn round"_s << "failed: "_ba;
    QTest::newRow("an angle in between") << u"turn 45"_s << "failed: "_ba;
    QTest::newRow("a picture") << u"picture /dev/null/x.png"_s << "failed: "_ba;
    QTest::newRow("another word") << u"dance"_s << "not understood: "_ba;
    QTest::newRow("nothing") << QString() << "not understood: "_ba;
}

void TestPrograms::remoteControlAnswersEveryLine()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, answer);
    QProcess process;
    process.start(QStringLiteral(NFC_SETTINGS), {u"--remote-control"_s});
    const auto says = [&process](const QByteArray &text) {
        QByteArray said;
        return QTest::qWaitFor(
            [&] {
                said += process.readAllStandardOutput();
                return said.contains(text);
            },
            patience);
    };
    QVERIFY(says("[Ask before opening"));
    process.write(line.toUtf8() + '\n');
    QVERIFY(says(answer + line.toUtf8() + '\n'));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
}

void TestPrograms::manualHasEveryExitCode()
{
    QFETCH(QString, program);
    QProcess process;
    process.start(program, {u"--help"_s});
    QVERIFY(process.waitForFinished());
    const QString help = QString::fromLocal8Bit(process.readAllStandardOutput()).simplified();
    const QString codes = help.section(u"Exit codes: "_s, 1).section(u". "_s, 0, 0);

    QFile manual(QStringLiteral(MANUALS) + u'/' + QString::fromLatin1(QTest::currentDataTag()) + u".1"_s);
    QVERIFY(manual.open(QIODevice::ReadOnly));
    const QString status =
        QString::fromUtf8(manual.readAll()).section(u".SH EXIT STATUS\n"_s, 1).section(u".SH"_s, 0, 0);
    static const QRegularExpression inManual(u"\\.B (\\d+)\\n"_s);
    static const QRegularExpression inHelp(u"(?:^|, )(\\d+) "_s);
    QStringList listed;
    for (const QRegularExpressionMatch &match : inManual.globalMatch(status))
        listed.append(match.captured(1));
    QStringList told;
    for (const QRegularExpressionMatch &match : inHelp.globalMatch(codes))
        told.append(match.captured(1));
    QCOMPARE(listed, told);
    QVERIFY(listed.contains(u"3"_s));
}

void TestPrograms::serviceDoesNotComeBackInVain()
{
    QFile unit(QStringLiteral(UNIT));
    QVERIFY(unit.open(QIODevice::ReadOnly));
    QVERIFY(unit.readAll().contains("\nRestartPreventExitStatus=2 3 64\n"));
}

QTEST_GUILESS_MAIN(TestPrograms)
#include "tst_programs.moc"
