// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>
#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QtTest>

#include <ConnectivitySettings>
#include <NfcAdapter>
#include <RadioState>

#include "fakedaemon.h"
#include "fakeservice.h"

using ConnUi::ConnectivitySettings;
using ConnUi::NfcAdapter;
using ConnUi::RadioState;
namespace {

constexpr int patience = 60000; // milliseconds

const auto off = QStringLiteral("[Near Field Communication (NFC): off]");
const auto busy = QStringLiteral("[Near Field Communication (NFC): on, busy]");
const auto on = QStringLiteral("[Near Field Communication (NFC): on]");
const auto asksNever = QStringLiteral("[Ask before opening what is on a tag: off]");
const auto moreTime = QStringLiteral("More time before a question can be answered");
const auto questionDelay = QStringLiteral("nfc_question_delay");
const auto pressNfc = QStringLiteral("press Near Field Communication (NFC)");

QString lockFile()
{
    return qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/connui/settings.lock");
}

void write(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QSaveFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    QVERIFY(file.commit());
}

// Applications of the user's own; those of the machine count as not installed.
class Applications
{
public:
    Applications() { qputenv("XDG_DATA_DIRS", folder.path().toLocal8Bit()); }

    ~Applications()
    {
        if (before.isNull())
            qunsetenv("XDG_DATA_DIRS");
        else
            qputenv("XDG_DATA_DIRS", before);
        QDir(desktopFolder()).removeRecursively();
        QFile::remove(defaultsFile());
    }

    static void install(const QString &id, const QByteArray &name, const QByteArray &more = {})
    {
        write(QStringLiteral("%1/%2.desktop").arg(desktopFolder(), id),
              "[Desktop Entry]\nType=Application\nExec=true %u\nName=" + name + '\n' + more);
    }

    static void remove(const QString &id)
    {
        QVERIFY(QFile::remove(QStringLiteral("%1/%2.desktop").arg(desktopFolder(), id)));
    }

    static void setDefaults(const QByteArray &lines)
    {
        write(defaultsFile(), "[Default Applications]\n" + lines);
    }

private:
    static QString desktopFolder()
    {
        return qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/applications");
    }

    static QString defaultsFile()
    {
        return qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/mimeapps.list");
    }

    const QTemporaryDir folder;
    const QByteArray before = qgetenv("XDG_DATA_DIRS");
};

// The program, under remote control.
class Settings
{
public:
    explicit Settings(const QStringList &arguments = {QStringLiteral("--remote-control")})
    {
        process.start(QStringLiteral(NFC_SETTINGS), arguments);
    }

    ~Settings()
    {
        process.kill();
        process.waitForFinished();
    }

    void say(const QString &line)
    {
        screen.clear();
        process.write(line.toUtf8() + '\n');
    }

    bool shows(const QString &text)
    {
        const auto seen = [this, text] {
            while (process.canReadLine())
                screen = QString::fromUtf8(process.readLine());
            return screen.contains(text);
        };
        const bool shown = QTest::qWaitFor(seen, patience);
        if (!shown)
            qInfo("the screen: %s", qPrintable(screen));
        return shown;
    }

    // Waits for a line that may have others behind it.
    bool says(const QString &text)
    {
        const auto said = [this, text] {
            while (process.canReadLine())
                if (QString::fromUtf8(process.readLine()).contains(text))
                    return true;
            return false;
        };
        return QTest::qWaitFor(said, patience);
    }

    bool showsNot(const QString &text)
    {
        const auto seen = [this, text] {
            while (process.canReadLine())
                screen = QString::fromUtf8(process.readLine());
            return !screen.contains(text);
        };
        return QTest::qWaitFor(seen, patience);
    }

    // Returns what a program that has ended by itself ended with.
    int exitCode()
    {
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(patience))
            return -1;
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    // All that it has written there so far.
    QString errors()
    {
        written += QString::fromUtf8(process.readAllStandardError());
        return written;
    }

    QProcess process;

private:
    QString screen;
    QString written;
};

} // namespace

class TestNfcSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void helpIsPrinted();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void missingBusIsReported();

    void daemonThatIsThereIsShown();
    void absentDaemonIsOff();
    void startedDaemonIsFollowed();
    void daemonThatComesAndGoesIsFollowed();
    void daemonThatDiesIsOff();
    void daemonThatHangsWhileComingIsWaitedFor();
    void daemonThatHangsWhileSwitchingIsWaitedFor();
    void startThatFailsIsToldAfter20Seconds();
    void everyPressInTheFlightModeQuestionSwitchesOn_data();
    void everyPressInTheFlightModeQuestionSwitchesOn();

    void settingThatCannotBeStoredGoesBack_data();
    void settingThatCannotBeStoredGoesBack();
    void settingStoredElsewhereAppears();
    void settingStoredElsewhereAppearsWhereNothingWasStored();
    void questionsMayTakeLonger();
    void settingsSayWhatNfcDoes();
    void applicationsThatOpenContentAreListed();
    void listWithoutApplicationsIsHidden();
    void applicationsThatChangeAreFollowed();
    void nameOfAnApplicationIsMadeSafe_data();
    void nameOfAnApplicationIsMadeSafe();
    void badIconDelaysNothing();
    void clientThatIsNotAskedIsTold();
    void filesThatArriveCanBeShown();

    void doneEndsIt();
    void closedWindowEndsIt();
    void endOfInputEndsIt();
    void terminationEndsIt();
    void pictureIsTaken();
};

void TestNfcSettings::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    RadioState(RadioState::NFC).setEnabled(false);
    NfcAdapter().setConfirmationEnabled(false);
    ConnectivitySettings(1).set(questionDelay, {});
}

// Also after a test that has failed half way.
void TestNfcSettings::cleanup()
{
    QDir().rmdir(lockFile());
}

void TestNfcSettings::helpIsPrinted()
{
    for (const QString &option : {QStringLiteral("--help"), QStringLiteral("-h")}) {
        Settings settings({option});
        QCOMPARE(settings.exitCode(), 0);
        QVERIFY(settings.process.readAllStandardOutput().contains("--remote-control"));
        QCOMPARE(settings.errors(), QString());
    }
}

void TestNfcSettings::badArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--dance")}
                                    << QStringLiteral("nfc-settings: Unknown option 'dance'.\n");
    QTest::newRow("argument") << QStringList{QStringLiteral("now")}
                              << QStringLiteral("nfc-settings: usage: nfc-settings [--remote-control]\n");
}

void TestNfcSettings::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    Settings settings(arguments);
    QCOMPARE(settings.exitCode(), 64);
    QCOMPARE(settings.errors(), error);
}

void TestNfcSettings::missingBusIsReported()
{
    const QByteArray address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    Settings settings;
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    QCOMPARE(settings.exitCode(), 1);
    QVERIFY(settings.errors().startsWith(QStringLiteral("nfc-settings: Failed to connect to socket")));
}

void TestNfcSettings::daemonThatIsThereIsShown()
{
    FakeDaemon daemon;
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(on));
    QVERIFY(settings.shows(QStringLiteral("screen: NFC settings | ")));
    QVERIFY(settings.shows(QStringLiteral("[Ask before opening what is on a tag: off]")));
    settings.say(pressNfc);
    QVERIFY(settings.shows(off));
    QCOMPARE(daemon.calls(QStringLiteral("SetProperty")).size(), 1);
    settings.say(QStringLiteral("press Ask before opening what is on a tag"));
    QVERIFY(settings.shows(QStringLiteral("[Ask before opening what is on a tag: on]")));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::absentDaemonIsOff()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    QCOMPARE(settings.errors(), QString());
    settings.say(pressNfc);
    QVERIFY(settings.shows(busy));
    // It comes on another pipe than the screen's report.
    QTRY_COMPARE(settings.errors(), QStringLiteral("NfcAdapter: unable to start service com.tavix.nfc\n"));
}

void TestNfcSettings::startedDaemonIsFollowed()
{
    FakeDaemon daemon;
    daemon.makeActivatable();
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(pressNfc);
    QTRY_VERIFY(daemon.isOnBus());
    QVERIFY(settings.shows(on)); // as this daemon comes up with power
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::daemonThatComesAndGoesIsFollowed()
{
    FakeDaemon daemon;
    Settings settings;
    QVERIFY(settings.shows(off));
    daemon.start();
    QVERIFY(settings.shows(on));
    daemon.stop();
    QVERIFY(settings.shows(off));
    daemon.start();
    QVERIFY(settings.shows(on));
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QVERIFY(settings.shows(off));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::daemonThatDiesIsOff()
{
    FakeDaemon daemon;
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(on));
    daemon.kill();
    QVERIFY(settings.shows(off));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::daemonThatHangsWhileComingIsWaitedFor()
{
    FakeDaemon daemon;
    daemon.hold(QStringLiteral("DefaultAdapter"));
    daemon.start();
    Settings settings;
    QTRY_VERIFY_WITH_TIMEOUT(!daemon.calls(QStringLiteral("DefaultAdapter")).isEmpty(), patience);
    daemon.release(QStringLiteral("DefaultAdapter"));
    QVERIFY(settings.shows(on));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::daemonThatHangsWhileSwitchingIsWaitedFor()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(off));
    daemon.hold(QStringLiteral("SetProperty"));
    settings.say(pressNfc);
    QTRY_VERIFY_WITH_TIMEOUT(!daemon.calls(QStringLiteral("SetProperty")).isEmpty(), patience);
    daemon.release(QStringLiteral("SetProperty"));
    QVERIFY(settings.shows(busy));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::startThatFailsIsToldAfter20Seconds()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(off));
    QElapsedTimer clock;
    clock.start();
    settings.say(pressNfc);
    QVERIFY(settings.shows(busy));
    QVERIFY(settings.shows(QStringLiteral(
        "screen: NFC is not available | NFC did not start. Try again, or restart the phone. | [OK]")));
    QVERIFY2(clock.elapsed() >= 20000, qPrintable(QString::number(clock.elapsed())));
    settings.say(QStringLiteral("press OK"));
    QVERIFY(settings.shows(off));
}

void TestNfcSettings::everyPressInTheFlightModeQuestionSwitchesOn_data()
{
    QTest::addColumn<QString>("press");
    QTest::newRow("yes") << QStringLiteral("press Yes");
    QTest::newRow("no") << QStringLiteral("press No");
}

void TestNfcSettings::everyPressInTheFlightModeQuestionSwitchesOn()
{
    QFETCH(QString, press);
    FakeService connectionManager(QDBusConnection::SystemBus, QStringLiteral("net.connman"));
    connectionManager.reply(QStringLiteral("GetProperties"),
                            {QVariantMap{{QStringLiteral("OfflineMode"), true}}});
    connectionManager.start();
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(pressNfc);
    QVERIFY(settings.shows(QStringLiteral(
        "screen: Flight mode is on | Switch on NFC while flight mode stays on? | [Yes] | [No]")));
    QCOMPARE(daemon.calls(QStringLiteral("SetProperty")).size(), 0);
    settings.say(press);
    QVERIFY(settings.shows(busy));
    QTRY_COMPARE(daemon.calls(QStringLiteral("SetProperty")).size(), 1);
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::settingThatCannotBeStoredGoesBack_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("confirmations") << QStringLiteral("Ask before opening what is on a tag");
    QTest::newRow("time") << moreTime;
}

void TestNfcSettings::settingThatCannotBeStoredGoesBack()
{
    QFETCH(QString, row);
    // A folder in the lock's place, as permissions do not stop root.
    QVERIFY(QFile::remove(lockFile()));
    QVERIFY(QDir().mkdir(lockFile()));
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral("[%1: off]").arg(row)));
    settings.say(QStringLiteral("press ") + row);
    QVERIFY(settings.shows(QStringLiteral("The change could not be stored | The setting stays as it was.")));
    settings.say(QStringLiteral("press OK"));
    QVERIFY(settings.shows(QStringLiteral("[%1: off]").arg(row)));
}

void TestNfcSettings::settingStoredElsewhereAppears()
{
    Settings settings;
    QVERIFY(settings.shows(asksNever));
    NfcAdapter adapter;
    adapter.setConfirmationEnabled(true);
    QVERIFY(settings.shows(QStringLiteral("[Ask before opening what is on a tag: on]")));
    adapter.setConfirmationEnabled(false);
    QVERIFY(settings.shows(asksNever));
}

void TestNfcSettings::settingStoredElsewhereAppearsWhereNothingWasStored()
{
    const QString folder = QFileInfo(lockFile()).path();
    QVERIFY(QDir(folder).removeRecursively());
    const auto isOff = QStringLiteral("[%1: off]").arg(moreTime);
    const auto isOn = QStringLiteral("[%1: on]").arg(moreTime);
    ConnectivitySettings stored(1);
    Settings settings;
    QVERIFY(settings.shows(isOff));
    stored.set(questionDelay, 3000);
    QVERIFY(settings.shows(isOn));
    stored.set(questionDelay, QVariant());
    QVERIFY(settings.shows(isOff));
    stored.set(questionDelay, 3000);
    QVERIFY(settings.shows(isOn));
    // As when the user's settings are taken away, and begun anew.
    QVERIFY(QDir(folder).removeRecursively());
    QVERIFY(settings.shows(isOff));
    stored.set(questionDelay, 3000);
    QVERIFY(settings.shows(isOn));
}

void TestNfcSettings::questionsMayTakeLonger()
{
    const auto isOff = QStringLiteral("[%1: off]").arg(moreTime);
    const auto isOn = QStringLiteral("[%1: on]").arg(moreTime);
    ConnectivitySettings stored(1);
    Settings settings;
    QVERIFY(settings.shows(isOff));
    settings.say(QStringLiteral("press ") + moreTime);
    QVERIFY(settings.shows(isOn));
    QCOMPARE(stored.get(questionDelay), QVariant(qlonglong(3000)));
    settings.say(QStringLiteral("press ") + moreTime);
    QVERIFY(settings.shows(isOff));
    QCOMPARE(stored.get(questionDelay), QVariant());
    // The time that a phone maker or another program has chosen.
    stored.set(questionDelay, 1500);
    QVERIFY(settings.shows(isOn));
    QCOMPARE(stored.get(questionDelay), QVariant(qlonglong(1500)));
    stored.set(questionDelay, 500);
    QVERIFY(settings.shows(isOff));
}

void TestNfcSettings::settingsSayWhatNfcDoes()
{
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral("against an NFC tag to open links")));
}

void TestNfcSettings::applicationsThatOpenContentAreListed()
{
    const Applications applications;
    Applications::install(QStringLiteral("browser"), "Browser");
    Applications::install(QStringLiteral("phone"), "Phone");
    Applications::install(QStringLiteral("contacts"), "Address Book");
    Applications::install(QStringLiteral("mail"), "Post");
    Applications::install(QStringLiteral("map"), "Map");
    Applications::setDefaults(
        "x-scheme-handler/https=browser.desktop\nx-scheme-handler/tel=phone.desktop\n"
        "x-scheme-handler/sms=phone.desktop\nx-scheme-handler/mailto=post.desktop;mail.desktop\n"
        "text/vcard=contacts.desktop\nx-scheme-handler/geo=map.desktop\n");
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral(
        "Default applications | Web links | Browser | Phone numbers | Phone | Text messages | Phone | "
        "Email addresses | Post | Contacts | Address Book | Places | Map")));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::listWithoutApplicationsIsHidden()
{
    const Applications applications;
    Applications::install(QStringLiteral("browser"), "Browser");
    Applications::setDefaults("x-scheme-handler/https=browser.desktop\n");
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral("Default applications | Web links | Browser")));
    Applications::remove(QStringLiteral("browser"));
    QVERIFY(settings.showsNot(QStringLiteral("Default applications")));
    QVERIFY(settings.shows(off));
}

void TestNfcSettings::applicationsThatChangeAreFollowed()
{
    const Applications applications;
    Settings settings;
    QVERIFY(settings.shows(off));
    Applications::install(QStringLiteral("browser"), "Browser");
    Applications::install(QStringLiteral("other"), "Other Browser");
    Applications::setDefaults("x-scheme-handler/https=browser.desktop\n");
    QVERIFY(settings.shows(QStringLiteral("Web links | Browser")));
    Applications::setDefaults("x-scheme-handler/https=other.desktop\n");
    QVERIFY(settings.shows(QStringLiteral("Web links | Other Browser")));
    Applications::install(QStringLiteral("other"), "New Browser");
    QVERIFY(settings.shows(QStringLiteral("Web links | New Browser")));
}

void TestNfcSettings::nameOfAnApplicationIsMadeSafe_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("long") << QByteArray(500, 'x')
                          << QString(53, QLatin1Char('x')) + QChar(0x2026) + QString(10, QLatin1Char('x'));
    QTest::newRow("steering") << QByteArray("evil\u202egpj") << QStringLiteral("evil\ufffdgpj");
    QTest::newRow("markup") << QByteArray("<b>Bank</b>&amp;") << QStringLiteral("<b>Bank</b>&amp;");
    QTest::newRow("lines") << QByteArray("Browser\\nis safe") << QStringLiteral("Browser is safe");
    QTest::newRow("length variants") << QByteArray("Long name\u009cShort") << QStringLiteral("Long name");
    QTest::newRow("blanks") << QByteArray("\\s\\s") << QStringLiteral("browser");
}

void TestNfcSettings::nameOfAnApplicationIsMadeSafe()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, shown);
    const Applications applications;
    Applications::install(QStringLiteral("browser"), name);
    Applications::setDefaults("x-scheme-handler/https=browser.desktop\n");
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral("Web links | %1 | [Done]").arg(shown)));
}

void TestNfcSettings::badIconDelaysNothing()
{
    const Applications applications;
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("icon.svg"));
    QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
    Applications::install(QStringLiteral("browser"), "Browser", "Icon=" + pipe.toUtf8() + '\n');
    Applications::setDefaults("x-scheme-handler/https=browser.desktop\n");
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral("Web links | Browser")));
    // Nobody will ever write to the pipe.
    settings.say(QStringLiteral("press Done"));
    QCOMPARE(settings.exitCode(), 0);
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::clientThatIsNotAskedIsTold()
{
    const auto words = QStringLiteral("Questions about tags cannot be shown here");
    FakeService client(QDBusConnection::SessionBus, QStringLiteral("org.connui.NfcUi"));
    client.reply(QStringLiteral("GetAll"), {QVariantMap{{QStringLiteral("Registered"), false},
                                                        {QStringLiteral("HiddenTransfers"), 0u}}});
    client.start();
    Settings settings;
    QVERIFY(settings.shows(words));
    const auto announce = [&client](bool registered) {
        client.emitSignal(QStringLiteral("/org/connui/NfcUi"),
                          QStringLiteral("org.freedesktop.DBus.Properties"),
                          QStringLiteral("PropertiesChanged"),
                          {QStringLiteral("org.connui.NfcUi"),
                           QVariantMap{{QStringLiteral("Registered"), registered}}, QStringList()});
    };
    announce(true);
    QVERIFY(settings.showsNot(words));
    announce(false);
    QVERIFY(settings.shows(words));
    client.kill();
    QVERIFY(settings.showsNot(words));
}

void TestNfcSettings::filesThatArriveCanBeShown()
{
    FakeService client(QDBusConnection::SessionBus, QStringLiteral("org.connui.NfcUi"));
    client.reply(QStringLiteral("GetAll"), {QVariantMap{{QStringLiteral("Registered"), true},
                                                        {QStringLiteral("HiddenTransfers"), 1u}}});
    client.start();
    Settings settings;
    QVERIFY(settings.shows(QStringLiteral("[Show files that arrive]")));
    settings.say(QStringLiteral("press Show files that arrive"));
    QTRY_COMPARE(client.calls(QStringLiteral("ShowTransfers")).size(), 1);
}

void TestNfcSettings::doneEndsIt()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(QStringLiteral("press Done"));
    QCOMPARE(settings.exitCode(), 0);
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::closedWindowEndsIt()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(QStringLiteral("close"));
    QCOMPARE(settings.exitCode(), 0);
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::endOfInputEndsIt()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.process.closeWriteChannel();
    QCOMPARE(settings.exitCode(), 0);
}

void TestNfcSettings::terminationEndsIt()
{
    for (const int signal : {SIGTERM, SIGINT}) {
        Settings settings;
        QVERIFY(settings.shows(off));
        ::kill(pid_t(settings.process.processId()), signal);
        QCOMPARE(settings.exitCode(), 0);
        QCOMPARE(settings.errors(), QString());
    }
}

void TestNfcSettings::pictureIsTaken()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("picture.png"));
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(QStringLiteral("picture ") + file);
    QVERIFY(settings.says(QStringLiteral("done: picture ")));
    QCOMPARE(QImage(file).size(), QSize(480, 854));
}

QTEST_GUILESS_MAIN(TestNfcSettings)
#include "tst_nfcsettings.moc"
