// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QtTest>

#include <NfcAdapter>
#include <RadioState>

#include "fakedaemon.h"
#include "fakeservice.h"

using ConnUi::NfcAdapter;
using ConnUi::RadioState;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 60000; // milliseconds

const auto off = u"[Near Field Communication (NFC): off]"_s;
const auto busy = u"[Near Field Communication (NFC): on, busy]"_s;
const auto on = u"[Near Field Communication (NFC): on]"_s;
const auto asksNever = u"[Ask before opening what is on a tag: off]"_s;
const auto pressNfc = u"press Near Field Communication (NFC)"_s;

QString lockFile()
{
    return qEnvironmentVariable("XDG_CONFIG_HOME") + u"/connui/settings.lock"_s;
}

// The program, under remote control.
class Settings
{
public:
    explicit Settings(const QStringList &arguments = {u"--remote-control"_s})
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

    QString errors() { return QString::fromUtf8(process.readAllStandardError()); }

    QProcess process;

private:
    QString screen;
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
    void withoutBusItSaysSo();

    void daemonThatIsThereIsShown();
    void absentDaemonIsOff();
    void startedDaemonIsFollowed();
    void daemonThatComesAndGoesIsFollowed();
    void daemonThatDiesIsOff();
    void daemonThatHangsWhileComingIsWaitedFor();
    void daemonThatHangsWhileSwitchingIsWaitedFor();
    void startThatFailsIsToldAfter20Seconds();

    void settingThatCannotBeStoredGoesBack();
    void settingStoredElsewhereAppears();
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
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    RadioState(RadioState::NFC).setEnabled(false);
    NfcAdapter().setConfirmationEnabled(false);
}

// Also after a test that has failed half way.
void TestNfcSettings::cleanup()
{
    QDir().rmdir(lockFile());
}

void TestNfcSettings::helpIsPrinted()
{
    for (const QString &option : {u"--help"_s, u"-h"_s}) {
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
    QTest::newRow("unknown option") << QStringList{u"--dance"_s}
                                    << u"nfc-settings: Unknown option 'dance'.\n"_s;
    QTest::newRow("argument") << QStringList{u"now"_s}
                              << u"nfc-settings: usage: nfc-settings [--remote-control]\n"_s;
}

void TestNfcSettings::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    Settings settings(arguments);
    QCOMPARE(settings.exitCode(), 64);
    QCOMPARE(settings.errors(), error);
}

void TestNfcSettings::withoutBusItSaysSo()
{
    const QByteArray address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    Settings settings;
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    QCOMPARE(settings.exitCode(), 1);
    QVERIFY(settings.errors().startsWith(u"nfc-settings: Failed to connect to socket"_s));
}

void TestNfcSettings::daemonThatIsThereIsShown()
{
    FakeDaemon daemon;
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(on));
    QVERIFY(settings.shows(u"screen: NFC settings | "_s));
    QVERIFY(settings.shows(u"[Ask before opening what is on a tag: off]"_s));
    settings.say(pressNfc);
    QVERIFY(settings.shows(off));
    QCOMPARE(daemon.calls(u"SetProperty"_s).size(), 1);
    settings.say(u"press Ask before opening what is on a tag"_s);
    QVERIFY(settings.shows(u"[Ask before opening what is on a tag: on]"_s));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::absentDaemonIsOff()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    QCOMPARE(settings.errors(), QString());
    settings.say(pressNfc);
    QVERIFY(settings.shows(busy));
    QCOMPARE(settings.errors(), u"NfcAdapter: unable to start service com.tavix.nfc\n"_s);
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
    daemon.emitPropertyChanged(u"State"_s, u"off"_s);
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
    daemon.hold(u"DefaultAdapter"_s);
    daemon.start();
    Settings settings;
    QTRY_VERIFY_WITH_TIMEOUT(!daemon.calls(u"DefaultAdapter"_s).isEmpty(), patience);
    daemon.release(u"DefaultAdapter"_s);
    QVERIFY(settings.shows(on));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::daemonThatHangsWhileSwitchingIsWaitedFor()
{
    FakeDaemon daemon;
    daemon.setState(u"off"_s);
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(off));
    daemon.hold(u"SetProperty"_s);
    settings.say(pressNfc);
    QTRY_VERIFY_WITH_TIMEOUT(!daemon.calls(u"SetProperty"_s).isEmpty(), patience);
    daemon.release(u"SetProperty"_s);
    QVERIFY(settings.shows(busy));
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::startThatFailsIsToldAfter20Seconds()
{
    FakeDaemon daemon;
    daemon.setState(u"off"_s);
    daemon.start();
    Settings settings;
    QVERIFY(settings.shows(off));
    QElapsedTimer clock;
    clock.start();
    settings.say(pressNfc);
    QVERIFY(settings.shows(busy));
    QVERIFY(settings.shows(
        u"screen: NFC is not available | NFC did not start. Try again, or restart the phone. | [OK]"_s));
    QVERIFY2(clock.elapsed() >= 20000, qPrintable(QString::number(clock.elapsed())));
    settings.say(u"press OK"_s);
    QVERIFY(settings.shows(off));
}

void TestNfcSettings::settingThatCannotBeStoredGoesBack()
{
    // A folder in the lock's place, as permissions do not stop root.
    QVERIFY(QFile::remove(lockFile()));
    QVERIFY(QDir().mkdir(lockFile()));
    Settings settings;
    QVERIFY(settings.shows(asksNever));
    settings.say(u"press Ask before opening what is on a tag"_s);
    QVERIFY(settings.shows(u"The change could not be stored | The setting stays as it was."_s));
    settings.say(u"press OK"_s);
    QVERIFY(settings.shows(asksNever));
}

void TestNfcSettings::settingStoredElsewhereAppears()
{
    Settings settings;
    QVERIFY(settings.shows(asksNever));
    NfcAdapter adapter;
    adapter.setConfirmationEnabled(true);
    QVERIFY(settings.shows(u"[Ask before opening what is on a tag: on]"_s));
    adapter.setConfirmationEnabled(false);
    QVERIFY(settings.shows(asksNever));
}

void TestNfcSettings::clientThatIsNotAskedIsTold()
{
    const auto words = u"Questions about tags cannot be shown here"_s;
    FakeService client(QDBusConnection::SessionBus, u"org.connui.NfcUi"_s);
    client.reply(u"GetAll"_s, {QVariantMap{{u"Registered"_s, false}, {u"HiddenTransfers"_s, 0u}}});
    client.start();
    Settings settings;
    QVERIFY(settings.shows(words));
    const auto announce = [&client](bool registered) {
        client.emitSignal(u"/org/connui/NfcUi"_s, u"org.freedesktop.DBus.Properties"_s,
                          u"PropertiesChanged"_s,
                          {u"org.connui.NfcUi"_s, QVariantMap{{u"Registered"_s, registered}}, QStringList()});
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
    FakeService client(QDBusConnection::SessionBus, u"org.connui.NfcUi"_s);
    client.reply(u"GetAll"_s, {QVariantMap{{u"Registered"_s, true}, {u"HiddenTransfers"_s, 1u}}});
    client.start();
    Settings settings;
    QVERIFY(settings.shows(u"[Show files that arrive]"_s));
    settings.say(u"press Show files that arrive"_s);
    QTRY_COMPARE(client.calls(u"ShowTransfers"_s).size(), 1);
}

void TestNfcSettings::doneEndsIt()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(u"press Done"_s);
    QCOMPARE(settings.exitCode(), 0);
    QCOMPARE(settings.errors(), QString());
}

void TestNfcSettings::closedWindowEndsIt()
{
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(u"close"_s);
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
    const QString file = folder.filePath(u"picture.png"_s);
    Settings settings;
    QVERIFY(settings.shows(off));
    settings.say(u"picture "_s + file);
    QVERIFY(settings.shows(off));
    QCOMPARE(QImage(file).size(), QSize(480, 854));
}

QTEST_GUILESS_MAIN(TestNfcSettings)
#include "tst_nfcsettings.moc"
