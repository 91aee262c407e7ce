// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <memory>

#include <QDBusVariant>
#include <QElapsedTimer>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <NdefMessageHandler>
#include <RadioState>

#include "catalogue.h"
#include "core/session.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakehandler.h"
#include "fakeohm.h"

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
    void screenLock();
    void programEnds_data();
    void programEnds();

private:
    QString agentPath();
    int deliver(const QString &target);
    int pair(const QString &target);

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

QString TestStoppedPeers::agentPath()
{
    return qdbus_cast<QDBusObjectPath>(
               daemon->calls(QStringLiteral("RegisterUIAgent")).constLast().arguments[0])
        .path();
}

int TestStoppedPeers::deliver(const QString &target)
{
    return daemon->callAgent(agentPath(), QStringLiteral("RequestNDEFDataDelivery"),
                             {viewer(), QVariant::fromValue(QDBusObjectPath(target)), textTag()});
}

int TestStoppedPeers::pair(const QString &target)
{
    return daemon->callAgent(agentPath(), QStringLiteral("RequestBTPairing"),
                             {QVariant::fromValue(QDBusObjectPath(target)), QStringLiteral("00:11"),
                              QStringLiteral("Headset"), 0u, QString()});
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
    daemon->callAgent(agentPath(), QStringLiteral("RequestSharingSelection"),
                      {QStringLiteral("bluetooth"), QVariant::fromValue(QDBusVariant(QString()))});
    QTRY_COMPARE(face.title(), QStringLiteral("Choose what to share"));
    QVERIFY2(heart.longestGap < bound, qPrintable(QString::number(heart.longestGap)));
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
    QTest::newRow("nfc-ui") << QStringLiteral(NFC_UI) << QStringList{QStringLiteral("--console")};
    QTest::newRow("nfc-settings") << QStringLiteral(NFC_SETTINGS)
                                  << QStringList{QStringLiteral("--remote-control")};
}

// The daemon and the policy daemon hang. A program that waited for either would take 25 seconds.
void TestStoppedPeers::programEnds()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    daemon->suspend();
    ohm->suspend();
    QProcess process;
    process.start(program, arguments);
    QVERIFY(process.waitForStarted());
    // It answers, so its event loop turns.
    process.write("press nothing\n");
    QVERIFY(process.waitForReadyRead(longEnough));
    process.terminate();
    QVERIFY(process.waitForFinished(longEnough));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestStoppedPeers)
#include "tst_stoppedpeers.moc"
