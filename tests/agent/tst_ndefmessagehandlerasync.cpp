// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QObject>
#include <QTest>

#include <ApplicationTracker>
#include <NdefMessageHandler>
#include <NfcPendingCall>

#include "agent/ndefmessagehandler_p.h"
#include "busmonitor.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "outcome.h"

using ConnUi::ApplicationTracker;
using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerPrivate;

namespace {

// Milliseconds, somewhat less than the bus's own: a call that waits for nothing takes longer.
constexpr qint64 replyTimeout = 20000;
const QString session = QStringLiteral("session");
const QString viewer = QStringLiteral("org.example.Viewer");
const QString ndefData = QStringLiteral("NDEFData");
const QString launch = QStringLiteral("launch");
const QString fence = QStringLiteral("Fence");
const QString dataCall = QStringLiteral("com.tavix.nfc.NDEFHandler.NDEFData");
const QString launchCall = QStringLiteral("com.tavix.MApplicationIf.launch");
const QDBusObjectPath target(QStringLiteral("/com/tavix/nfc/tag1"));
const QDBusObjectPath handlerPath(QStringLiteral("/org/example/viewer"));

NdefMessageHandler handler(const QString &busType = session, const QString &service = viewer,
                           const QDBusObjectPath &path = handlerPath)
{
    return {QStringLiteral("viewer"), busType, service, path};
}

// Returns when the service has what was sent to it before.
void passFence(const QDBusConnection &bus)
{
    bus.call(QDBusMessage::createMethodCall(viewer, QStringLiteral("/"), QString(), fence));
}

QByteArray warning(const QString &error)
{
    return (QStringLiteral("NfcAgentTagReadRequest: Calling NDEFData() for the handler fails: ") + error)
        .toUtf8();
}

} // namespace

/** The functions of handlers and of the tracker that do not wait. */
class TestNdefMessageHandlerAsync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void applicationIsLaunchedAfterItsAnswer();
    void onlyDataAndLaunchAreSent();
    void systemHandlerIsNotLaunched();
    void failedDeliveryIsLoggedAndLaunched();
    void serviceThatIsNoBusNameFails();
    void handlerWithoutAPathFailsAndIsLaunched();
    void deliveryOutlivesItsHandlerAndItsCall();

    void handlerInFrontIsFound();
    void missingHandlerIsNotInFront();
    void nothingIsInFrontWithoutTracker();

    void subscriptionIsSharedByHandlers();
    void subscriptionDoesNotWait();
    void subscriptionEndsWithItsHolderWithoutWaiting();
    void subscriptionOutlivesItsHolderWhileHandlersLive();
    void subscriptionOfHandlersIsTakenOver();
    void failedSubscriptionIsLogged();
    void shortReplyIsNoSubscription();

private:
    std::unique_ptr<FakeOhm> ohm;
    std::unique_ptr<FakeHandler> application;
    std::unique_ptr<QObject> holder;
};

void TestNdefMessageHandlerAsync::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
    application = std::make_unique<FakeHandler>();
    application->start();
    holder = std::make_unique<QObject>();
}

void TestNdefMessageHandlerAsync::cleanup()
{
    holder.reset();
    QCOMPARE(NdefMessageHandlerPrivate::refCount, 0);
    QVERIFY(!NdefMessageHandlerPrivate::applicationTracker);
    application.reset();
    ohm.reset();
}

void TestNdefMessageHandlerAsync::applicationIsLaunchedAfterItsAnswer()
{
    application->hold(ndefData);
    const QByteArray data("\xd1\x01\x00\xff", 4);
    const Outcome outcome(handler().forwardDataAsync(target, data));
    passFence(QDBusConnection::sessionBus());
    QCOMPARE(application->members(), (QStringList{ndefData, fence}));
    QVERIFY(!outcome.call->isFinished());
    const FakeCall delivery = application->calls().at(0);
    QCOMPARE(delivery.path, handlerPath.path());
    QCOMPARE(delivery.interface, QStringLiteral("com.tavix.nfc.NDEFHandler"));
    QCOMPARE(delivery.signature, QStringLiteral("oay"));
    QCOMPARE(delivery.arguments.at(0).value<QDBusObjectPath>(), target);
    QCOMPARE(delivery.arguments.at(1).toByteArray(), data);

    application->release(ndefData);
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    passFence(QDBusConnection::sessionBus());
    QCOMPARE(application->members(), (QStringList{ndefData, fence, launch, fence}));
    const FakeCall call = application->calls().at(2);
    QCOMPARE(call.path, QStringLiteral("/org/orvik/m"));
    QCOMPARE(call.interface, QStringLiteral("com.tavix.MApplicationIf"));
    QCOMPARE(call.signature, QString());
}

void TestNdefMessageHandlerAsync::onlyDataAndLaunchAreSent()
{
    const NdefMessageHandler viewerHandler = handler();
    BusMonitor monitor(QDBusConnection::sessionBus());
    const Outcome outcome(viewerHandler.forwardDataAsync(target, QByteArray()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(monitor.takeCalls(), (QStringList{dataCall, launchCall}));
}

void TestNdefMessageHandlerAsync::systemHandlerIsNotLaunched()
{
    FakeHandler service(QDBusConnection::SystemBus, viewer);
    service.start();
    const Outcome outcome(handler(QStringLiteral("system")).forwardDataAsync(target, QByteArray()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    passFence(QDBusConnection::systemBus());
    QCOMPARE(service.members(), (QStringList{ndefData, fence}));
    passFence(QDBusConnection::sessionBus());
    QCOMPARE(application->members(), QStringList(fence));
}

void TestNdefMessageHandlerAsync::failedDeliveryIsLoggedAndLaunched()
{
    application->fail(ndefData, QStringLiteral("org.example.Error.Full"), QStringLiteral("no %s left"));
    QTest::ignoreMessage(QtWarningMsg, warning(QStringLiteral("org.example.Error.Full no %s left")));
    const Outcome outcome(handler().forwardDataAsync(target, QByteArray()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QStringLiteral("org.example.Error.Full"));
    QCOMPARE(outcome.message, QStringLiteral("no %s left"));
    passFence(QDBusConnection::sessionBus());
    QCOMPARE(application->members(), (QStringList{ndefData, launch, fence}));
}

void TestNdefMessageHandlerAsync::serviceThatIsNoBusNameFails()
{
    const QString invalid = QStringLiteral("org.qtproject.QtDBus.Error.InvalidService");
    QTest::ignoreMessage(QtWarningMsg, warning(invalid + QStringLiteral(" Invalid service name: viewer")));
    const Outcome outcome(handler(session, QStringLiteral("viewer")).forwardDataAsync(target, QByteArray()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, invalid);
}

void TestNdefMessageHandlerAsync::handlerWithoutAPathFailsAndIsLaunched()
{
    const QString invalid = QStringLiteral("org.qtproject.QtDBus.Error.InvalidObjectPath");
    QTest::ignoreMessage(QtWarningMsg, warning(invalid + QStringLiteral(" Object path cannot be empty")));
    const Outcome outcome(handler(session, viewer, QDBusObjectPath()).forwardDataAsync(target, QByteArray()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, invalid);
    passFence(QDBusConnection::sessionBus());
    QCOMPARE(application->members(), (QStringList{launch, fence}));
}

void TestNdefMessageHandlerAsync::deliveryOutlivesItsHandlerAndItsCall()
{
    application->hold(ndefData);
    delete handler().forwardDataAsync(target, QByteArray());
    passFence(QDBusConnection::sessionBus());
    application->release(ndefData);
    QTRY_COMPARE(application->members(), (QStringList{ndefData, fence, launch}));
}

void TestNdefMessageHandlerAsync::handlerInFrontIsFound()
{
    const uint pid = QDBusConnection::sessionBus().interface()->servicePid(viewer);
    ohm->setActive(QStringLiteral("viewer"), QString(), QString(), pid);
    const NdefMessageHandler viewerHandler = handler();
    BusMonitor monitor(QDBusConnection::sessionBus());
    const Outcome outcome(viewerHandler.isRunningOnForegroundAsync());
    QVERIFY(!outcome.call->isFinished());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(true));
    QCOMPARE(monitor.takeCalls(),
             QStringList(QStringLiteral("org.freedesktop.DBus.GetConnectionUnixProcessID")));

    const Outcome other(
        handler(session, QDBusConnection::sessionBus().baseService()).isRunningOnForegroundAsync());
    QTRY_COMPARE(other.times, 1);
    QCOMPARE(other.value, QVariant(false));
    QCOMPARE(other.error, QString());
}

void TestNdefMessageHandlerAsync::missingHandlerIsNotInFront()
{
    const Outcome outcome(
        handler(session, QStringLiteral("org.example.Missing")).isRunningOnForegroundAsync());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(false));
    QCOMPARE(outcome.error, QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"));
}

void TestNdefMessageHandlerAsync::nothingIsInFrontWithoutTracker()
{
    const uint pid = QDBusConnection::sessionBus().interface()->servicePid(viewer);
    ohm->setActive(QStringLiteral("viewer"), QString(), QString(), pid);
    const Outcome outcome(handler().isRunningOnForegroundAsync());
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(false));
}

void TestNdefMessageHandlerAsync::subscriptionIsSharedByHandlers()
{
    const uint pid = QDBusConnection::sessionBus().interface()->servicePid(viewer);
    ohm->setActive(QStringLiteral("viewer"), QString(), QString(), pid);
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QString());
    QVERIFY(handler().isRunningOnForeground());
    QVERIFY(handler().isRunningOnForeground());
    QCOMPARE(ohm->members(), QStringList(QStringLiteral("Subscribe")));
}

void TestNdefMessageHandlerAsync::subscriptionDoesNotWait()
{
    const uint pid = QDBusConnection::sessionBus().interface()->servicePid(viewer);
    ohm->hold(QStringLiteral("Subscribe"));
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QVERIFY(!outcome.call->isFinished());
    QVERIFY(!handler().isRunningOnForeground());
    ohm->setActive(QStringLiteral("viewer"), QString(), QString(), pid);
    ohm->release(QStringLiteral("Subscribe"));
    QTRY_COMPARE(outcome.times, 1);
    QVERIFY(handler().isRunningOnForeground());
    ohm->emitActive(QStringLiteral("browser"), QString(), QString(), pid + 1);
    QTRY_VERIFY(!handler().isRunningOnForeground());
}

void TestNdefMessageHandlerAsync::subscriptionEndsWithItsHolderWithoutWaiting()
{
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QTRY_COMPARE(outcome.times, 1);
    ohm->hold(QStringLiteral("Unsubscribe"));
    QElapsedTimer time;
    time.start();
    holder.reset();
    QVERIFY(time.elapsed() < replyTimeout);
    QVERIFY(!NdefMessageHandlerPrivate::applicationTracker);
    const QList<FakeCall> ends = ohm->calls(QStringLiteral("Unsubscribe"));
    QCOMPARE(ends.size(), 1);
    QCOMPARE(ends.constFirst().signature, QStringLiteral("i"));
    QCOMPARE(ends.constFirst().arguments, QVariantList{0});
}

void TestNdefMessageHandlerAsync::subscriptionOutlivesItsHolderWhileHandlersLive()
{
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QTRY_COMPARE(outcome.times, 1);
    auto last = std::make_unique<NdefMessageHandler>(handler());
    holder.reset();
    QCOMPARE(ohm->members(), QStringList(QStringLiteral("Subscribe")));
    ohm->hold(QStringLiteral("Unsubscribe"));
    QElapsedTimer time;
    time.start();
    last.reset();
    QVERIFY(time.elapsed() < replyTimeout);
    QCOMPARE(ohm->members(), (QStringList{QStringLiteral("Subscribe"), QStringLiteral("Unsubscribe")}));

    // A subscription by the handlers themselves waits again.
    ohm->release(QStringLiteral("Unsubscribe"));
    ohm->setActive(QString(), QString(), QString(), 1234);
    last = std::make_unique<NdefMessageHandler>(handler());
    QCOMPARE(NdefMessageHandlerPrivate::applicationTracker->currentForegroundApplicationPid(), 1234U);
    QVERIFY(NdefMessageHandlerPrivate::trackerWaits);
}

void TestNdefMessageHandlerAsync::subscriptionOfHandlersIsTakenOver()
{
    auto first = std::make_unique<NdefMessageHandler>(handler());
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QVERIFY(outcome.call->isFinished());
    QTRY_COMPARE(outcome.times, 1);
    first.reset();
    QCOMPARE(ohm->members(), QStringList(QStringLiteral("Subscribe")));
    ohm->hold(QStringLiteral("Unsubscribe"));
    holder.reset();
    QCOMPARE(ohm->members(), (QStringList{QStringLiteral("Subscribe"), QStringLiteral("Unsubscribe")}));
}

void TestNdefMessageHandlerAsync::failedSubscriptionIsLogged()
{
    ohm->stop();
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(outcome.error, QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"));
    QVERIFY(!handler().isRunningOnForeground());
}

void TestNdefMessageHandlerAsync::shortReplyIsNoSubscription()
{
    ohm->reply(QStringLiteral("Subscribe"), {QString(), QString(), QString()});
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    const Outcome outcome(ApplicationTracker::subscribeAsync(holder.get()));
    QTRY_COMPARE(outcome.times, 1);
    QCOMPARE(NdefMessageHandlerPrivate::applicationTracker->currentForegroundApplicationPid(), 0U);
}

QTEST_GUILESS_MAIN(TestNdefMessageHandlerAsync)

#include "tst_ndefmessagehandlerasync.moc"
