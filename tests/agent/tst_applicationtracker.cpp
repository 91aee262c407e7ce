// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QtTest>

#include <ApplicationTracker>

#include "busmonitor.h"
#include "fakeohm.h"

using ConnUi::ApplicationTracker;

namespace {

const char *const unableToSubscribe = "ApplicationTracker: Unable to subscribe to track applications";
const QString ohmPath = QStringLiteral("/com/tavix/ApplicationTracker");
const QString ohmInterface = QStringLiteral("com.tavix.ApplicationTracker");
const QString news = QStringLiteral("CurrentActiveApplication");

} // namespace

class TestApplicationTracker : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void fence() { ++fences; }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void subscribesOnceWithoutArguments();
    void pidOfTheReplyIsKnownAtOnce();
    void fourthArgumentIsConverted_data();
    void fourthArgumentIsConverted();
    void furtherArgumentsAreIgnored();
    void constructionWaitsForTheAnswer();
    void notificationsAreConnectedBeforeTheSubscription();
    void shortReplyIsNoSubscription_data();
    void shortReplyIsNoSubscription();
    void errorReplyIsNoSubscription();
    void missingPolicyDaemonIsNoSubscription();
    void notificationSetsThePidAndNothingElse();
    void notificationArrivesWithoutASubscription();
    void notificationOfALatePolicyDaemonArrives();
    void notificationOfAnotherFormIsIgnored_data();
    void notificationOfAnotherFormIsIgnored();
    void notificationOfAnotherServiceIsIgnored();
    void unsubscribesOnceWithZero();
    void endWaitsForTheAnswer();
    void endWithoutPolicyDaemonIsQuiet();
    void notificationAfterTheEndIsIgnored();
    void asksForNoIntrospection();
    void hasNoSignalsAndNoProperties();

private:
    void passFence();

    std::unique_ptr<FakeOhm> ohm;
    int fences = 0;
};

void TestApplicationTracker::initTestCase()
{
    QVERIFY(QDBusConnection::systemBus().connect(QStringLiteral("org.freedesktop.ohm"), ohmPath, ohmInterface,
                                                 QStringLiteral("Fence"), this, SLOT(fence())));
}

void TestApplicationTracker::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
}

void TestApplicationTracker::cleanup()
{
    ohm.reset();
}

// Returns when all signals that the policy daemon has sent so far have been delivered.
void TestApplicationTracker::passFence()
{
    const int before = fences;
    ohm->emitSignal(ohmPath, ohmInterface, QStringLiteral("Fence"));
    QTRY_COMPARE(fences, before + 1);
}

void TestApplicationTracker::subscribesOnceWithoutArguments()
{
    const ApplicationTracker tracker;
    const QList<FakeCall> calls = ohm->calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.at(0).member, QStringLiteral("Subscribe"));
    QCOMPARE(calls.at(0).signature, QString());
    QCOMPARE(calls.at(0).path, ohmPath);
    QCOMPARE(calls.at(0).interface, ohmInterface);
}

void TestApplicationTracker::pidOfTheReplyIsKnownAtOnce()
{
    ohm->setActive(QStringLiteral("/usr/bin/browser"), QStringLiteral("standard"), QString(), 1234);
    const ApplicationTracker tracker;
    QCOMPARE(tracker.currentForegroundApplicationPid(), 1234U);
}

void TestApplicationTracker::fourthArgumentIsConverted_data()
{
    QTest::addColumn<QVariant>("argument");
    QTest::addColumn<uint>("pid");
    QTest::newRow("largest") << QVariant(UINT_MAX) << UINT_MAX;
    QTest::newRow("signed") << QVariant(1234) << 1234U;
    QTest::newRow("text") << QVariant(QStringLiteral("1234")) << 1234U;
    QTest::newRow("no number") << QVariant(QStringLiteral("browser")) << 0U;
}

void TestApplicationTracker::fourthArgumentIsConverted()
{
    QFETCH(QVariant, argument);
    QFETCH(uint, pid);
    ohm->reply(QStringLiteral("Subscribe"), {QString(), QString(), QString(), argument});
    const ApplicationTracker tracker;
    QCOMPARE(tracker.currentForegroundApplicationPid(), pid);
}

void TestApplicationTracker::furtherArgumentsAreIgnored()
{
    ohm->reply(QStringLiteral("Subscribe"), {1U, 2U, 3U, 1234U, 5U});
    const ApplicationTracker tracker;
    QCOMPARE(tracker.currentForegroundApplicationPid(), 1234U);
}

void TestApplicationTracker::constructionWaitsForTheAnswer()
{
    ohm->setActive(QString(), QString(), QString(), 1234);
    ohm->delay(QStringLiteral("Subscribe"), 200);
    QElapsedTimer time;
    time.start();
    const ApplicationTracker tracker;
    QVERIFY(time.elapsed() >= 190);
    QCOMPARE(tracker.currentForegroundApplicationPid(), 1234U);
}

void TestApplicationTracker::notificationsAreConnectedBeforeTheSubscription()
{
    BusMonitor monitor;
    const ApplicationTracker tracker;
    const QStringList calls = monitor.takeCalls();
    const auto addMatch = QStringLiteral("org.freedesktop.DBus.AddMatch");
    QVERIFY(calls.contains(addMatch));
    QVERIFY2(calls.lastIndexOf(addMatch) < calls.indexOf(ohmInterface + QLatin1String(".Subscribe")),
             qPrintable(calls.join(QLatin1Char(' '))));
}

void TestApplicationTracker::shortReplyIsNoSubscription_data()
{
    QTest::addColumn<QVariantList>("arguments");
    QTest::newRow("three arguments") << QVariantList{QStringLiteral("a"), QStringLiteral("b"), 1234U};
    QTest::newRow("one argument") << QVariantList{1234U};
    QTest::newRow("no argument") << QVariantList{};
}

void TestApplicationTracker::shortReplyIsNoSubscription()
{
    QFETCH(QVariantList, arguments);
    ohm->reply(QStringLiteral("Subscribe"), arguments);
    QTest::ignoreMessage(QtWarningMsg, unableToSubscribe);
    const ApplicationTracker tracker;
    QCOMPARE(tracker.currentForegroundApplicationPid(), 0U);
}

void TestApplicationTracker::errorReplyIsNoSubscription()
{
    ohm->fail(QStringLiteral("Subscribe"), QStringLiteral("org.example.Error.Busy"), QStringLiteral("busy"));
    QTest::ignoreMessage(QtWarningMsg, unableToSubscribe);
    const ApplicationTracker tracker;
    QCOMPARE(tracker.currentForegroundApplicationPid(), 0U);
}

void TestApplicationTracker::missingPolicyDaemonIsNoSubscription()
{
    ohm->stop();
    QTest::ignoreMessage(QtWarningMsg, unableToSubscribe);
    const ApplicationTracker tracker;
    QCOMPARE(tracker.currentForegroundApplicationPid(), 0U);
}

void TestApplicationTracker::notificationSetsThePidAndNothingElse()
{
    const ApplicationTracker tracker;
    ohm->emitActive(QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three"), 77);
    QTRY_COMPARE(tracker.currentForegroundApplicationPid(), 77U);
    ohm->emitActive(QString(), QString(), QString(), 0);
    QTRY_COMPARE(tracker.currentForegroundApplicationPid(), 0U);
    QCOMPARE(ohm->members(), QStringList{QStringLiteral("Subscribe")});
}

void TestApplicationTracker::notificationArrivesWithoutASubscription()
{
    ohm->fail(QStringLiteral("Subscribe"), QStringLiteral("org.example.Error.Busy"), QStringLiteral("busy"));
    QTest::ignoreMessage(QtWarningMsg, unableToSubscribe);
    const ApplicationTracker tracker;
    ohm->emitActive(QString(), QString(), QString(), 77);
    QTRY_COMPARE(tracker.currentForegroundApplicationPid(), 77U);
}

void TestApplicationTracker::notificationOfALatePolicyDaemonArrives()
{
    ohm->stop();
    QTest::ignoreMessage(QtWarningMsg, unableToSubscribe);
    const ApplicationTracker tracker;
    ohm->start();
    ohm->emitActive(QString(), QString(), QString(), 77);
    QTRY_COMPARE(tracker.currentForegroundApplicationPid(), 77U);
}

void TestApplicationTracker::notificationOfAnotherFormIsIgnored_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QVariantList>("arguments");
    const QVariantList usual = {QString(), QString(), QString(), 99U};
    QTest::newRow("signed pid") << ohmPath << ohmInterface << news
                                << QVariantList{QString(), QString(), QString(), 99};
    QTest::newRow("pid alone") << ohmPath << ohmInterface << news << QVariantList{99U};
    QTest::newRow("one text less") << ohmPath << ohmInterface << news
                                   << QVariantList{QString(), QString(), 99U};
    QTest::newRow("one text more") << ohmPath << ohmInterface << news << usual + QVariantList{QString()};
    QTest::newRow("another path") << QStringLiteral("/com/tavix") << ohmInterface << news << usual;
    QTest::newRow("another interface") << ohmPath << QStringLiteral("com.tavix.Other") << news << usual;
    QTest::newRow("another signal") << ohmPath << ohmInterface << QStringLiteral("LastActiveApplication")
                                    << usual;
}

void TestApplicationTracker::notificationOfAnotherFormIsIgnored()
{
    QFETCH(QString, path);
    QFETCH(QString, interface);
    QFETCH(QString, member);
    QFETCH(QVariantList, arguments);
    ohm->setActive(QString(), QString(), QString(), 1234);
    const ApplicationTracker tracker;
    ohm->emitSignal(path, interface, member, arguments);
    passFence();
    QCOMPARE(tracker.currentForegroundApplicationPid(), 1234U);
}

void TestApplicationTracker::notificationOfAnotherServiceIsIgnored()
{
    const ApplicationTracker tracker;
    FakeService impostor(QDBusConnection::SystemBus, QStringLiteral("org.example.Impostor"));
    impostor.start();
    impostor.emitSignal(ohmPath, ohmInterface, news, {QString(), QString(), QString(), 99U});
    // Its next message to this connection is the answer to this: the signal has been here by then.
    QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(impostor.service(), QStringLiteral("/"),
                                                                     QString(), QStringLiteral("Anything")));
    passFence();
    QCOMPARE(tracker.currentForegroundApplicationPid(), 0U);
}

void TestApplicationTracker::unsubscribesOnceWithZero()
{
    std::make_unique<ApplicationTracker>().reset();
    QCOMPARE(ohm->members(), (QStringList{QStringLiteral("Subscribe"), QStringLiteral("Unsubscribe")}));
    const FakeCall call = ohm->calls(QStringLiteral("Unsubscribe")).at(0);
    QCOMPARE(call.signature, QStringLiteral("i"));
    QCOMPARE(call.arguments, QVariantList{0});
    QCOMPARE(call.path, ohmPath);
    QCOMPARE(call.interface, ohmInterface);
}

void TestApplicationTracker::endWaitsForTheAnswer()
{
    auto tracker = std::make_unique<ApplicationTracker>();
    ohm->delay(QStringLiteral("Unsubscribe"), 200);
    QElapsedTimer time;
    time.start();
    tracker.reset();
    QVERIFY(time.elapsed() >= 190);
}

void TestApplicationTracker::endWithoutPolicyDaemonIsQuiet()
{
    auto tracker = std::make_unique<ApplicationTracker>();
    ohm->kill();
    tracker.reset();
    ohm->start();
    QCOMPARE(ohm->members(), QStringList());
}

void TestApplicationTracker::notificationAfterTheEndIsIgnored()
{
    auto tracker = std::make_unique<ApplicationTracker>();
    ohm->emitActive(QString(), QString(), QString(), 77);
    tracker.reset();
    ohm->emitActive(QString(), QString(), QString(), 78);
    passFence();
    QCOMPARE(ohm->calls(QStringLiteral("Unsubscribe")).size(), 1);
}

void TestApplicationTracker::asksForNoIntrospection()
{
    BusMonitor monitor;
    std::make_unique<ApplicationTracker>().reset();
    const QStringList calls = monitor.takeCalls();
    QVERIFY(calls.contains(ohmInterface + QLatin1String(".Subscribe")));
    QVERIFY2(calls.filter(QStringLiteral("Introspect")).isEmpty(), qPrintable(calls.join(QLatin1Char(' '))));
}

void TestApplicationTracker::hasNoSignalsAndNoProperties()
{
    const QMetaObject &meta = ApplicationTracker::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod notify = meta.method(meta.methodOffset());
    QCOMPARE(notify.methodSignature(), QByteArray("notify(QString,QString,QString,uint)"));
    QCOMPARE(notify.access(), QMetaMethod::Private);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

QTEST_GUILESS_MAIN(TestApplicationTracker)
#include "tst_applicationtracker.moc"
