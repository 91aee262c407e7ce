// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include "busmonitor.h"
#include "fakedaemon.h"
#include "fakehandler.h"
#include "fakeohm.h"

class TestFakeService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isOnTheBusBetweenStartAndStop();
    void answersAsScripted();
    void failsAsScripted();
    void answersEveryValueThatTheBusKnows();
    void remembersCallsInTheirOrder();
    void holdsCallsUntilReleased();
    void answersLate();
    void diesInMidCall();
    void startsOnDemand();
    void emitsSignals();
    void reportsRepliesInTheirOrder();
    void fakesLiveSideBySide();
    void monitorSeesCallsOfOneConnection();

private:
    static QDBusMessage call(const QString &member, const QVariantList &arguments = {});
};

void TestFakeService::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

QDBusMessage TestFakeService::call(const QString &member, const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("com.tavix.nfc"), QStringLiteral("/some/path"),
                                       QStringLiteral("org.example.Interface"), member);
    message.setArguments(arguments);
    return QDBusConnection::systemBus().call(message);
}

void TestFakeService::isOnTheBusBetweenStartAndStop()
{
    QDBusConnectionInterface *bus = QDBusConnection::systemBus().interface();
    FakeDaemon daemon;
    QVERIFY(!bus->isServiceRegistered(daemon.service()));
    daemon.start();
    QVERIFY(bus->isServiceRegistered(daemon.service()));
    daemon.stop();
    QVERIFY(!bus->isServiceRegistered(daemon.service()));
    daemon.start();
    daemon.kill();
    QVERIFY(!bus->isServiceRegistered(daemon.service()));
    daemon.start();
    QVERIFY(bus->isServiceRegistered(daemon.service()));
}

void TestFakeService::answersAsScripted()
{
    FakeDaemon daemon;
    daemon.start();
    QCOMPARE(call(QStringLiteral("Anything")).arguments(), QVariantList());
    daemon.reply(QStringLiteral("Anything"), {QStringLiteral("text"), 7u});
    QCOMPARE(call(QStringLiteral("Anything")).arguments(), QVariantList({QStringLiteral("text"), 7u}));
    QCOMPARE(call(QStringLiteral("GetProperties")).signature(), QStringLiteral("a{sv}"));
    QCOMPARE(call(QStringLiteral("DefaultAdapter")).signature(), QStringLiteral("o"));
}

void TestFakeService::failsAsScripted()
{
    FakeDaemon daemon;
    daemon.start();
    daemon.fail(QStringLiteral("Anything"), QStringLiteral("org.example.Error"), QStringLiteral("not today"));
    const QDBusMessage answer = call(QStringLiteral("Anything"));
    QCOMPARE(answer.errorName(), QStringLiteral("org.example.Error"));
    QCOMPARE(answer.errorMessage(), QStringLiteral("not today"));
}

void TestFakeService::answersEveryValueThatTheBusKnows()
{
    FakeDaemon daemon;
    daemon.start();
    daemon.reply(QStringLiteral("Anything"),
                 {QByteArray("bytes"), QStringList{QStringLiteral("a"), QStringLiteral("b")}, true,
                  QVariantMap{{QStringLiteral("key"), 1}}, QVariant::fromValue(QDBusVariant(2)),
                  QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a")))});
    const QDBusMessage answer = call(QStringLiteral("Anything"));
    QCOMPARE(answer.signature(), QStringLiteral("ayasba{sv}vo"));
    QCOMPARE(qdbus_cast<QVariantMap>(answer.arguments().at(3)), (QVariantMap{{QStringLiteral("key"), 1}}));
}

void TestFakeService::remembersCallsInTheirOrder()
{
    FakeDaemon daemon;
    daemon.start();
    call(QStringLiteral("First"),
         {QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a"))), QByteArray("x")});
    call(QStringLiteral("Second"));
    QCOMPARE(daemon.members(), QStringList({QStringLiteral("First"), QStringLiteral("Second")}));

    const FakeCall first = daemon.calls(QStringLiteral("First")).value(0);
    QCOMPARE(first.sender, QDBusConnection::systemBus().baseService());
    QCOMPARE(first.path, QStringLiteral("/some/path"));
    QCOMPARE(first.interface, QStringLiteral("org.example.Interface"));
    QCOMPARE(first.signature, QStringLiteral("oay"));
    QCOMPARE(first.arguments.value(0).value<QDBusObjectPath>().path(), QStringLiteral("/a"));
    QCOMPARE(first.arguments.value(1).toByteArray(), QByteArray("x"));
    daemon.clearCalls();
    QCOMPARE(daemon.members(), QStringList());
}

void TestFakeService::holdsCallsUntilReleased()
{
    FakeDaemon daemon;
    daemon.start();
    daemon.hold(QStringLiteral("Anything"));
    QSignalSpy called(&daemon, &FakeService::called);
    QDBusPendingCallWatcher watcher(QDBusConnection::systemBus().asyncCall(
        QDBusMessage::createMethodCall(daemon.service(), QStringLiteral("/"),
                                       QStringLiteral("org.example.Interface"), QStringLiteral("Anything"))));
    QSignalSpy finished(&watcher, &QDBusPendingCallWatcher::finished);
    QVERIFY(called.wait());
    QCOMPARE(called.first().first().toString(), QStringLiteral("Anything"));
    QVERIFY(!watcher.isFinished());
    daemon.fail(QStringLiteral("Anything"), QStringLiteral("org.example.Error"), QStringLiteral("late"));
    daemon.release(QStringLiteral("Anything"));
    QVERIFY(watcher.isFinished() || finished.wait());
    QCOMPARE(watcher.error().message(), QStringLiteral("late"));
}

void TestFakeService::answersLate()
{
    FakeDaemon daemon;
    daemon.start();
    daemon.delay(QStringLiteral("Anything"), 100);
    QElapsedTimer time;
    time.start();
    QCOMPARE(call(QStringLiteral("Anything")).type(), QDBusMessage::ReplyMessage);
    QVERIFY(time.elapsed() >= 90);
}

void TestFakeService::diesInMidCall()
{
    FakeDaemon daemon;
    daemon.start();
    daemon.dieOn(QStringLiteral("Anything"));
    QCOMPARE(call(QStringLiteral("Anything")).errorName(),
             QStringLiteral("org.freedesktop.DBus.Error.NoReply"));
    QTRY_VERIFY(!daemon.isOnBus());
    daemon.start();
    QCOMPARE(call(QStringLiteral("Anything")).type(), QDBusMessage::ReplyMessage);
}

void TestFakeService::startsOnDemand()
{
    QDBusConnectionInterface *bus = QDBusConnection::systemBus().interface();
    {
        FakeDaemon daemon;
        daemon.makeActivatable();
        QVERIFY(!daemon.isOnBus());
        QVERIFY(bus->startService(daemon.service()).isValid());
        QVERIFY(daemon.isOnBus());
        call(QStringLiteral("Anything"));
        QCOMPARE(daemon.members(), QStringList(QStringLiteral("Anything")));

        daemon.kill();
        daemon.makeActivatable(QStringLiteral("/bin/false"));
        QVERIFY(!bus->startService(daemon.service()).isValid());
    }
    QCOMPARE(bus->startService(QStringLiteral("com.tavix.nfc")).error().type(), QDBusError::ServiceUnknown);
}

void TestFakeService::emitsSignals()
{
    FakeOhm ohm;
    ohm.start();
    QSignalSpy called(&ohm, &FakeService::called);
    QDBusConnection::systemBus().connect(ohm.service(), QStringLiteral("/com/tavix/ApplicationTracker"),
                                         QStringLiteral("com.tavix.ApplicationTracker"),
                                         QStringLiteral("CurrentActiveApplication"), QStringLiteral("sssu"),
                                         &ohm, SIGNAL(called(QString)));
    ohm.emitActive(QStringLiteral("/usr/bin/viewer"), QString(), QString(), 5);
    QVERIFY(called.wait());
    QCOMPARE(called.first().first().toString(), QStringLiteral("/usr/bin/viewer"));
}

void TestFakeService::reportsRepliesInTheirOrder()
{
    FakeDaemon daemon;
    FakeHandler handler(QDBusConnection::SystemBus);
    handler.start();
    handler.hold(QStringLiteral("Slow"));
    const QString interface = QStringLiteral("org.example.Interface");
    QSignalSpy called(&handler, &FakeService::called);
    const int slow = daemon.call(handler.service(), QStringLiteral("/"), interface, QStringLiteral("Slow"));
    const int quick = daemon.call(handler.service(), QStringLiteral("/"), interface, QStringLiteral("Quick"));
    QTRY_COMPARE(called.count(), 2);
    QTRY_COMPARE(daemon.replies().size(), 1);
    handler.fail(QStringLiteral("Slow"), QStringLiteral("org.example.Error"), QStringLiteral("no"));
    handler.release(QStringLiteral("Slow"));
    QTRY_COMPARE(daemon.replies().size(), 2);
    QCOMPARE(daemon.replies().at(0).id, quick);
    QCOMPARE(daemon.replies().at(0).error, QString());
    QCOMPARE(daemon.replies().at(1).id, slow);
    QCOMPARE(daemon.replies().at(1).error, QStringLiteral("org.example.Error"));
    QCOMPARE(daemon.replies().at(1).message, QStringLiteral("no"));
}

void TestFakeService::fakesLiveSideBySide()
{
    FakeDaemon daemon;
    FakeOhm ohm;
    FakeHandler onSession;
    FakeHandler onSystem(QDBusConnection::SystemBus);
    for (FakeService *fake : QList<FakeService *>{&daemon, &ohm, &onSession, &onSystem}) {
        fake->start();
        QVERIFY(fake->isOnBus());
    }
}

void TestFakeService::monitorSeesCallsOfOneConnection()
{
    FakeDaemon daemon;
    daemon.start();
    QDBusConnection::systemBus();
    BusMonitor monitor;
    QCOMPARE(monitor.takeCalls(), QStringList());
    daemon.clearCalls();
    call(QStringLiteral("First"));
    call(QStringLiteral("Second"));
    QCOMPARE(monitor.takeCalls(), QStringList({QStringLiteral("org.example.Interface.First"),
                                               QStringLiteral("org.example.Interface.Second")}));
    QCOMPARE(monitor.takeCalls(), QStringList());
}

QTEST_GUILESS_MAIN(TestFakeService)
#include "tst_fakeservice.moc"
