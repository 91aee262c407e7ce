// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>
#include <functional>
#include <memory>
#include <sys/stat.h>
#include <utility>

#include <QApplication>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <MDialog>
#include <MWindow>
#include <NdefMessageHandler>
#include <RadioState>

#include "catalogue.h"
#include "core/session.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "screen/screenface.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::RadioState;

namespace {

constexpr qint64 bound = 1000;    // milliseconds: far more than drawing takes, far less than a call waits
constexpr int longEnough = 20000; // likewise

QByteArray textTag()
{
    QNdefNfcTextRecord record;
    record.setText(QStringLiteral("Hello"));
    return QNdefMessage(record).toByteArray();
}

// Not the record itself: that would die on the bus's own thread.
QVariant viewer()
{
    QDBusArgument argument;
    argument.beginArray(QMetaType::fromType<NdefMessageHandler>());
    argument << NdefMessageHandler(QStringLiteral("viewer"), QStringLiteral("session"),
                                   QStringLiteral("org.example.Viewer"),
                                   QDBusObjectPath(QStringLiteral("/viewer")));
    argument.endArray();
    return QVariant::fromValue(argument);
}

MDialog *shownDialog()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        const auto *window = qobject_cast<const MWindow *>(widget);
        const QList<QGraphicsItem *> items =
            window && window->isVisible() ? window->scene()->items() : QList<QGraphicsItem *>();
        for (QGraphicsItem *item : items)
            if (auto *dialog = qobject_cast<MDialog *>(item->toGraphicsObject()))
                return dialog;
    }
    return nullptr;
}

/** A program that answers commands, so that its event loop turns while it does. */
class Program
{
public:
    Program(const QString &program, const QStringList &arguments) { process.start(program, arguments); }

    /** Returns whether the program says \a text, now or later. */
    bool says(const QByteArray &text)
    {
        while (!said.contains(text)) {
            if (!process.waitForReadyRead(longEnough))
                return false;
            said += process.readAllStandardOutput();
        }
        said.remove(0, said.indexOf(text) + text.size());
        return true;
    }

    void hears(const QByteArray &line) { process.write(line + '\n'); }

    /** Returns how many milliseconds the program takes to answer; the limit, when it does not. */
    qint64 answerTime()
    {
        QElapsedTimer clock;
        clock.start();
        hears("press nothing");
        return says(": press nothing\n") ? clock.elapsed() : longEnough;
    }

    QProcess process;

private:
    QByteArray said;
};

/** Everybody whom the programs speak to beside the daemon, its handlers and the policy daemon, stopped. */
class HungPeers
{
public:
    HungPeers()
    {
        for (FakeService *peer : {&manager, &bluez, &login, &saver, &thumbnails}) {
            peer->start();
            peer->suspend();
        }
    }

private:
    FakeService manager{QDBusConnection::SystemBus, QStringLiteral("net.connman")};
    FakeService bluez{QDBusConnection::SystemBus, QStringLiteral("org.bluez")};
    FakeService login{QDBusConnection::SystemBus, QStringLiteral("org.freedesktop.login1")};
    FakeService saver{QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.ScreenSaver")};
    FakeService thumbnails{QDBusConnection::SessionBus,
                           QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1")};
};

/** Notices when the event loop does not turn. */
class Heartbeat : public QObject
{
public:
    Heartbeat()
    {
        connect(&timer, &QTimer::timeout, this, &Heartbeat::beat);
        timer.start(10);
        sinceLast.start();
    }

    int beats = 0;
    qint64 longestGap = 0; // milliseconds

private:
    void beat()
    {
        longestGap = qMax(longestGap, sinceLast.restart());
        ++beats;
    }

    QTimer timer;
    QElapsedTimer sinceLast;
};

} // namespace

/** Any peer of the client may hang: its event loop turns on, and it ends when asked to. */
class TestStoppedPeers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void daemonThatNeverAnswered();
    void daemonThatHangsLater();
    void policyDaemon();
    void handler();
    void bluetooth();
    void thumbnailer();
    void contactStore();
    void connectionManager();
    void screenLock();
    void programEnds_data();
    void programEnds();
    void busyClientEnds();

private:
    int callAgent(const QString &member, const QVariantList &arguments);
    int deliver(const QString &target);
    int pair(const QString &target);
    int share(const QString &resource);

    std::unique_ptr<FakeDaemon> daemon;
    std::unique_ptr<FakeOhm> ohm;
};

void TestStoppedPeers::initTestCase()
{
    static const Catalogue catalogue;
    qDBusRegisterMetaType<NdefMessageHandler>();
    qDBusRegisterMetaType<NdefMessageHandlerList>();
    RadioState(RadioState::NFC).setEnabled(false);
}

void TestStoppedPeers::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    daemon = std::make_unique<FakeDaemon>();
    daemon->start();
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
}

int TestStoppedPeers::callAgent(const QString &member, const QVariantList &arguments)
{
    const FakeCall registration = daemon->calls(QStringLiteral("RegisterUIAgent")).constLast();
    const QString path = qdbus_cast<QDBusObjectPath>(registration.arguments[0]).path();
    return daemon->call(registration.sender, path, QStringLiteral("com.tavix.nfc.UIAgent"), member,
                        arguments);
}

int TestStoppedPeers::deliver(const QString &target)
{
    return callAgent(QStringLiteral("RequestNDEFDataDelivery"),
                     {viewer(), QVariant::fromValue(QDBusObjectPath(target)), textTag()});
}

int TestStoppedPeers::pair(const QString &target)
{
    return callAgent(QStringLiteral("RequestBTPairing"),
                     {QVariant::fromValue(QDBusObjectPath(target)), QStringLiteral("00:11"),
                      QStringLiteral("Headset"), 0u, QString()});
}

int TestStoppedPeers::share(const QString &resource)
{
    return callAgent(
        QStringLiteral("RequestSharingPermission"),
        {QStringLiteral("bluetooth"), QVariant::fromValue(QDBusVariant(QString())), QStringList{resource}});
}

void TestStoppedPeers::daemonThatNeverAnswered()
{
    daemon->suspend();
    const Heartbeat heart;
    FakeFace face;
    auto session = std::make_unique<Session>(&face);
    QTRY_VERIFY(heart.beats > 20);
    session.reset();
    QTRY_VERIFY(heart.beats > 40);
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

void TestStoppedPeers::daemonThatHangsLater()
{
    FakeFace face;
    auto session = std::make_unique<Session>(&face);
    QTRY_VERIFY(session->isRegistered());
    pair(QStringLiteral("/headset"));
    QTRY_VERIFY(face.shown);
    daemon->suspend();
    const Heartbeat heart;
    face.answer(Answer::Yes);
    QTRY_VERIFY(heart.beats > 20);
    session.reset();
    QTRY_VERIFY(heart.beats > 40);
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

void TestStoppedPeers::policyDaemon()
{
    FakeHandler handler;
    handler.start();
    ohm->suspend();
    const Heartbeat heart;
    FakeFace face;
    auto session = std::make_unique<Session>(&face);
    QTRY_VERIFY(session->isRegistered());
    deliver(QStringLiteral("/tag"));
    QTRY_COMPARE(handler.calls(QStringLiteral("NDEFData")).size(), 1);
    session.reset();
    QTRY_VERIFY(heart.beats > 20);
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

void TestStoppedPeers::handler()
{
    FakeHandler handler;
    handler.start();
    FakeFace face;
    Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    handler.suspend();
    const Heartbeat heart;
    const int delivery = deliver(QStringLiteral("/tag"));
    QTRY_COMPARE(face.title(), QStringLiteral("Opening with viewer…"));

    // Meanwhile the next question is there, and answered.
    const int pairing = pair(QStringLiteral("/headset"));
    QTRY_COMPARE(face.title(), QStringLiteral("Pair with Headset?"));
    face.answer(Answer::Yes);
    QTRY_COMPARE(daemon->replies().size(), 1);
    QCOMPARE(daemon->replies()[0].id, pairing);

    QTest::ignoreMessage(QtWarningMsg, "viewer does not answer");
    QTRY_COMPARE_WITH_TIMEOUT(face.title(), QStringLiteral("No answer"), longEnough);
    QTRY_COMPARE(daemon->replies().size(), 2);
    QCOMPARE(daemon->replies()[1].id, delivery);
    QCOMPARE(daemon->replies()[1].error, QString());
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
    handler.resume();
    QTRY_COMPARE(handler.calls(QStringLiteral("launch")).size(), 1);
}

void TestStoppedPeers::bluetooth()
{
    FakeService bluez(QDBusConnection::SystemBus, QStringLiteral("org.bluez"));
    bluez.start();
    FakeFace face;
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    bluez.suspend();
    const Heartbeat heart;
    callAgent(QStringLiteral("RequestSharingSelection"),
              {QStringLiteral("bluetooth"), QVariant::fromValue(QDBusVariant(QString()))});
    QTRY_COMPARE(face.title(), QStringLiteral("Choose what to share"));
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

void TestStoppedPeers::thumbnailer()
{
    FakeService service(QDBusConnection::SessionBus,
                        QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1"));
    service.reply(QStringLiteral("Queue"), {1u});
    service.start();
    const QTemporaryDir folder;
    const QString picture = folder.filePath(QStringLiteral("beach.png"));
    QVERIFY(QImage(8, 8, QImage::Format_RGB32).save(picture));
    ScreenFace face;
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    share(picture);
    QTRY_COMPARE(service.calls(QStringLiteral("Queue")).size(), 1);
    QTRY_VERIFY(shownDialog());
    shownDialog()->reject();
    QTRY_COMPARE(daemon->replies().size(), 1);
    QTRY_VERIFY(!shownDialog());

    // The next question uses what the first has loaded.
    service.suspend();
    const Heartbeat heart;
    share(picture);
    QTRY_VERIFY(shownDialog());
    QTRY_VERIFY(heart.beats > 20);
    shownDialog()->reject();
    QTRY_COMPARE(daemon->replies().size(), 2);
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

// The card is a pipe, into which nobody writes.
void TestStoppedPeers::contactStore()
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/contacts");
    const QString card = folder + QStringLiteral("/1.vcf");
    QVERIFY(QDir().mkpath(folder));
    QCOMPARE(mkfifo(QFile::encodeName(card).constData(), 0600), 0);
    FakeFace face;
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    const Heartbeat heart;
    const QString warning = QStringLiteral("ContactExporter: unable to read %1: not a file").arg(card);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    share(QStringLiteral("contact:1"));
    QTRY_COMPARE(daemon->replies().size(), 1);
    QVERIFY(!daemon->replies()[0].error.isEmpty());
    QTRY_COMPARE(face.title(), qtTrId("qtn_nfc_share_fail_tit"));
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

void TestStoppedPeers::connectionManager()
{
    FakeService manager(QDBusConnection::SystemBus, QStringLiteral("net.connman"));
    manager.start();
    manager.suspend();
    daemon->setState(QStringLiteral("off"));
    Program settings(QStringLiteral(NFC_SETTINGS), {QStringLiteral("--remote-control")});
    QVERIFY(settings.says("(NFC): off]"));
    settings.hears("press Near Field Communication (NFC)");
    QVERIFY(settings.says("done: press Near Field Communication (NFC)"));
    for (int i = 0; i < 5; ++i) {
        const qint64 time = settings.answerTime();
        QVERIFY2(time < bound, qPrintable(QString::number(time)));
    }
    settings.process.terminate();
    QVERIFY(settings.process.waitForFinished(longEnough));
}

void TestStoppedPeers::screenLock()
{
    FakeService login(QDBusConnection::SystemBus, QStringLiteral("org.freedesktop.login1"));
    login.start();
    login.suspend();
    FakeService saver(QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.ScreenSaver"));
    saver.start();
    saver.suspend();
    const Heartbeat heart;
    FakeFace face;
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    pair(QStringLiteral("/headset"));
    QTRY_VERIFY(face.shown);
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
}

void TestStoppedPeers::programEnds_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("signal");
    const QStringList remote{QStringLiteral("--remote-control")};
    for (const auto &[name, number] :
         {std::pair("asked to", SIGTERM), std::pair("terminal closed", SIGHUP)}) {
        QTest::addRow("nfc-ui on the terminal, %s", name)
            << QStringLiteral(NFC_UI) << QStringList{QStringLiteral("--console")} << number;
        QTest::addRow("nfc-ui, %s", name) << QStringLiteral(NFC_UI) << remote << number;
        QTest::addRow("nfc-settings, %s", name) << QStringLiteral(NFC_SETTINGS) << remote << number;
    }
}

// All peers hang from the beginning. A program that waited for one of them would take 25 seconds.
void TestStoppedPeers::programEnds()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(int, signal);
    const HungPeers peers;
    daemon->suspend();
    ohm->suspend();
    Program started(program, arguments);
    QVERIFY(started.process.waitForStarted());
    // It answers, so its event loop turns.
    started.hears("press nothing");
    QVERIFY(started.process.waitForReadyRead(longEnough));
    QCOMPARE(kill(pid_t(started.process.processId()), signal), 0);
    QVERIFY(started.process.waitForFinished(longEnough));
    QCOMPARE(started.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(started.process.exitCode(), 0);
}

// The handler hangs while it takes what is on a tag, then everything else with a question open.
void TestStoppedPeers::busyClientEnds()
{
    FakeHandler handler;
    handler.start();
    Program client(QStringLiteral(NFC_UI), {QStringLiteral("--remote-control")});
    QVERIFY(client.says("the NFC daemon is here"));
    handler.suspend();
    deliver(QStringLiteral("/tag"));
    QVERIFY(client.says("Opening with viewer"));
    pair(QStringLiteral("/headset"));
    QVERIFY(client.says("Pair with Headset?"));
    const HungPeers peers;
    daemon->suspend();
    ohm->suspend();
    client.process.terminate();
    QVERIFY(client.process.waitForFinished(longEnough));
    QCOMPARE(client.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(client.process.exitCode(), 0);
}

QTEST_MAIN(TestStoppedPeers)
#include "tst_stoppedpeers.moc"
