// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int patience = 60000; // milliseconds

} // namespace

/** The programs as a shell or a service manager meets them. */
class TestPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void helpNeedsNoDisplay_data() { addAll(); }
    void helpNeedsNoDisplay();
    void missingDisplayIsReported_data() { addWindows(); }
    void missingDisplayIsReported();
    void badArgumentsAreRefused_data() { addAll(); }
    void badArgumentsAreRefused();
    void idlePhoneSaysWhatToDo();
    void signalsEndIt_data();
    void signalsEndIt();
    void startsNothingWithBlockedSignals_data() { addRemoteControlled(); }
    void startsNothingWithBlockedSignals();
    void remoteControlAnswersEveryLine_data();
    void remoteControlAnswersEveryLine();
    void terminalTakesNoOtherFace();
    void missingAgentIsReported();
    void manualHasEveryExitCode_data() { addAll(); }
    void manualHasEveryExitCode();
    void serviceDoesNotComeBackInVain();

private:
    static void addRemoteControlled();
    static void addWindows();
    static void addAll();
    static QProcessEnvironment withoutDisplay();
};

void TestPrograms::addRemoteControlled()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("nfc-ui") << QStringLiteral(NFC_UI);
    QTest::newRow("nfc-settings") << QStringLiteral(NFC_SETTINGS);
}

void TestPrograms::addWindows()
{
    addRemoteControlled();
    QTest::newRow("nfc-panel") << QStringLiteral(NFC_PANEL);
    QTest::newRow("nfc-viewer") << QStringLiteral(NFC_VIEWER);
}

void TestPrograms::addAll()
{
    addWindows();
    QTest::newRow("nfc-agent") << QStringLiteral(NFC_AGENT);
    QTest::newRow("nfctap") << QStringLiteral(NFCTAP);
    QTest::newRow("nfcd-sim") << QStringLiteral(NFCD_SIM);
    QTest::newRow("nfcd-pcsc") << QStringLiteral(NFCD_PCSC);
}

QProcessEnvironment TestPrograms::withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
}

void TestPrograms::helpNeedsNoDisplay()
{
    QFETCH(QString, program);
    for (const QString &option : {QStringLiteral("--help"), QStringLiteral("-h"), QStringLiteral("--version"),
                                  QStringLiteral("-v")}) {
        QProcess process;
        process.setProcessEnvironment(withoutDisplay());
        process.start(program, {option});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().contains(option.contains(u'h') ? "Exit codes: 0" : "1."));
    }
}

void TestPrograms::missingDisplayIsReported()
{
    QFETCH(QString, program);
    QProcess process;
    process.setProcessEnvironment(withoutDisplay());
    process.start(program, {});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 3);
    const QByteArray said = process.readAllStandardError();
    QVERIFY2(said.contains(QTest::currentDataTag() + QByteArrayLiteral(": no display: ")), said.constData());
}

void TestPrograms::badArgumentsAreRefused()
{
    QFETCH(QString, program);
    for (const QString &argument : {QStringLiteral("--nonsense"), QStringLiteral("nonsense")}) {
        QProcess process;
        process.start(program, {argument});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 64);
        QVERIFY(process.readAllStandardError().startsWith(QTest::currentDataTag()));
    }
}

void TestPrograms::idlePhoneSaysWhatToDo()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("phone.png"));
    QProcess process;
    process.start(QStringLiteral(NFC_UI), {QStringLiteral("--phone"), QStringLiteral("--remote-control")});
    process.write("picture " + file.toUtf8() + '\n');
    QImage phone;
    // A picture may be read while it is being written.
    QTRY_VERIFY_WITH_TIMEOUT(phone.load(file) && phone.height() > phone.width(), 30000);
    process.kill();
    process.waitForFinished();
    const QRect third(phone.width() / 6, phone.height() / 9, phone.width() * 2 / 3, phone.height() * 2 / 9);
    const QImage above = phone.copy(third);
    const QImage middle = phone.copy(third.translated(0, phone.height() / 3));
    QImage empty(above.size(), above.format());
    empty.fill(above.pixelColor(4, 4));
    QCOMPARE(above, empty);
    QVERIFY(middle != empty);
}

void TestPrograms::terminalTakesNoOtherFace()
{
    for (const QString &face : {QStringLiteral("--phone"), QStringLiteral("--remote-control")}) {
        QProcess process;
        process.start(QStringLiteral(NFC_UI), {QStringLiteral("--console"), face});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 64);
        QVERIFY(process.readAllStandardError().startsWith("nfc-ui: usage: nfc-ui [--console | "));
    }
}

void TestPrograms::missingAgentIsReported()
{
    const QTemporaryDir folder;
    const QString alone = folder.filePath(QStringLiteral("nfc-ui"));
    QVERIFY(QFile::copy(QStringLiteral(NFC_UI), alone));
    QProcess process;
    process.start(alone, {QStringLiteral("--console")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 69);
    const QByteArray said = process.readAllStandardError();
    QVERIFY2(said.startsWith("nfc-ui: unable to start " + QFile::encodeName(folder.path())),
             said.constData());
}

void TestPrograms::signalsEndIt_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<int>("number");
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        QTest::addRow("nfc-ui, %d", number)
            << QStringList{QStringLiteral(NFC_UI), QStringLiteral("--remote-control")} << number;
        QTest::addRow("nfc-ui --console, %d", number)
            << QStringList{QStringLiteral(NFC_UI), QStringLiteral("--console")} << number;
        QTest::addRow("nfc-settings, %d", number)
            << QStringList{QStringLiteral(NFC_SETTINGS), QStringLiteral("--remote-control")} << number;
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

// Its children would inherit its mask, and could not be ended.
void TestPrograms::startsNothingWithBlockedSignals()
{
    QFETCH(QString, program);
    QProcess process;
    process.start(program, {QStringLiteral("--remote-control")});
    process.write("nonsense\n");
    QVERIFY(process.waitForReadyRead());
    QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
    QVERIFY(status.open(QIODevice::ReadOnly));
    QVERIFY(status.readAll().contains("\nSigBlk:\t0000000000000000\n"));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
}

void TestPrograms::remoteControlAnswersEveryLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("a button") << QStringLiteral("press Ask before opening what is on a tag")
                              << QByteArrayLiteral("done: ");
    QTest::newRow("no such button") << QStringLiteral("press nothing") << QByteArrayLiteral("failed: ");
    QTest::newRow("no such row") << QStringLiteral("select nothing") << QByteArrayLiteral("failed: ");
    QTest::newRow("an angle") << QStringLiteral("turn 90") << QByteArrayLiteral("done: ");
    QTest::newRow("no angle") << QStringLiteral("turn round") << QByteArrayLiteral("failed: ");
    QTest::newRow("an angle in between") << QStringLiteral("turn 45") << QByteArrayLiteral("failed: ");
    QTest::newRow("a picture") << QStringLiteral("picture /dev/null/x.png") << QByteArrayLiteral("failed: ");
    QTest::newRow("another word") << QStringLiteral("dance") << QByteArrayLiteral("not understood: ");
    QTest::newRow("nothing") << QString() << QByteArrayLiteral("not understood: ");
}

void TestPrograms::remoteControlAnswersEveryLine()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, answer);
    QProcess process;
    process.start(QStringLiteral(NFC_SETTINGS), {QStringLiteral("--remote-control")});
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
    process.start(program, {QStringLiteral("--help")});
    QVERIFY(process.waitForFinished());
    const QString help = QString::fromLocal8Bit(process.readAllStandardOutput()).simplified();
    const QString codes = help.section(QStringLiteral("Exit codes: "), 1).section(QStringLiteral(". "), 0, 0);

    const QDir manuals(QStringLiteral(MANUALS),
                       QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(".*"));
    QFile manual(manuals.filePath(manuals.entryList().value(0)));
    QVERIFY(manual.open(QIODevice::ReadOnly));
    const QString status = QString::fromUtf8(manual.readAll())
                               .section(QStringLiteral(".SH EXIT STATUS\n"), 1)
                               .section(QStringLiteral(".SH"), 0, 0);
    static const QRegularExpression inManual(QStringLiteral("\\.B (\\d+)\\n"));
    static const QRegularExpression inHelp(QStringLiteral("(?:^|, )(\\d+) "));
    QStringList listed;
    for (const QRegularExpressionMatch &match : inManual.globalMatch(status))
        listed.append(match.captured(1));
    QStringList told;
    for (const QRegularExpressionMatch &match : inHelp.globalMatch(codes))
        told.append(match.captured(1));
    QCOMPARE(listed, told);
    QVERIFY(listed.contains(QStringLiteral("64")));
}

void TestPrograms::serviceDoesNotComeBackInVain()
{
    QFile unit(QStringLiteral(UNIT));
    QVERIFY(unit.open(QIODevice::ReadOnly));
    QVERIFY(unit.readAll().contains("\nRestartPreventExitStatus=2 3 64\n"));
}

QTEST_GUILESS_MAIN(TestPrograms)
#include "tst_programs.moc"
