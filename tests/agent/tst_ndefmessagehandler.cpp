// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>
#include <type_traits>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QElapsedTimer>
#include <QtTest>

#include <NdefMessageHandler>

#include "agent/ndefmessagehandler_p.h"
#include "busmonitor.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "unmatchedcalls.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NdefMessageHandlerPrivate;

static_assert(std::has_virtual_destructor_v<NdefMessageHandler>);
static_assert(std::has_virtual_destructor_v<NdefMessageHandlerPrivate>);

namespace {

const QString viewer = QStringLiteral("org.example.Viewer");
const QString session = QStringLiteral("session");
const QString onSystem = QStringLiteral("system");
const QDBusObjectPath handlerPath(QStringLiteral("/org/example/viewer"));
const QDBusObjectPath target(QStringLiteral("/com/tavix/nfc/tag1"));
const QString ndefData = QStringLiteral("NDEFData");
const QString launch = QStringLiteral("launch");
const QString launchCall = QStringLiteral("com.tavix.MApplicationIf.launch");
const QString dataCall = QStringLiteral("com.tavix.nfc.NDEFHandler.NDEFData");

NdefMessageHandler handler(const QString &busType = session, const QString &service = viewer)
{
    return NdefMessageHandler(QStringLiteral("viewer"), busType, service, handlerPath);
}

QByteArray warning(const QString &text)
{
    return "NfcAgentTagReadRequest: Calling NDEFData() for the handler fails: " + text.toUtf8();
}

// The calls that do not concern the bus itself.
QStringList handlerCalls(BusMonitor &monitor)
{
    QStringList calls = monitor.takeCalls();
    calls.removeIf(
        [](const QString &call) { return call.startsWith(QLatin1String("org.freedesktop.DBus.")); });
    return calls;
}

// Returns when all that this program has sent to the service has arrived there.
void passFence(const QDBusConnection &bus, const QString &service)
{
    bus.call(
        QDBusMessage::createMethodCall(service, QStringLiteral("/"), QString(), QStringLiteral("Fence")));
}

} // namespace

/** Takes in what another connection sends. */
class Receiver : public QObject
{
    Q_OBJECT

public:
    QList<QDBusMessage> messages;

public Q_SLOTS:
    void take(const QDBusMessage &message) { messages.append(message); }
};

class TestNdefMessageHandler : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void passedOn(const NdefMessageHandlerList &handlers);

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void defaultHandlerIsEmpty();
    void fieldsComeInTheConstructorsOrder();
    void applicationIdIsNoPartOfTheIdentity();
    void identityIsBusServiceAndPath_data();
    void identityIsBusServiceAndPath();
    void copyTakesAllFields();
    void copySharesNothing();
    void handlerMayBeAssignedToItself();
    void handlerWithAnEmptyPathIsCopiedQuietly();
    void malformedPathLeavesTheOtherFields();
    void wireFormIsBusServicePathApplication();
    void handlerComesBackFromTheBus();
    void listComesBackFromTheBusInOrder();
    void emptyListReplacesWhatWasThere();
    void handlersShareOneTracker();
    void copiesAreCounted();
    void trackerOutlivesItsFirstHandler();
    void dataGoesToTheBusOfTheHandler_data();
    void dataGoesToTheBusOfTheHandler();
    void handlerOnTheSystemBusIsNotLaunched();
    void anyDataArrives_data();
    void anyDataArrives();
    void launchWaitsForTheAnswer();
    void failureIsLoggedAndLaunchedAllTheSame_data();
    void failureIsLoggedAndLaunchedAllTheSame();
    void handlerThatDiesIsLaunchedAllTheSame();
    void handlerThatIsNotThereIsLaunchedAllTheSame_data();
    void handlerThatIsNotThereIsLaunchedAllTheSame();
    void failureOnTheSystemBusIsLogged();
    void handlerIsStartedOnDemand();
    void handlerMayBeNamedByItsConnection();
    void handlerThatHangsDoesNotHoldUpItsLaunch();
    void nothingIsAskedBetweenDataAndLaunch();
    void serviceThatIsNoBusNameIsLogged_data();
    void serviceThatIsNoBusNameIsLogged();
    void handlerWithoutAPathIsLaunchedAllTheSame();
    void handlerInFrontIsRunningOnForeground();
    void systemHandlerInFrontIsRunningOnForeground();
    void noHandlerIsInFrontWhileThePidIsUnknown();
    void missingServiceIsNotInFront_data();
    void missingServiceIsNotInFront();

private:
    QDBusMessage received(const QVariant &value);

    std::unique_ptr<FakeOhm> ohm;
    Receiver receiver;
    QDBusConnection sender = QDBusConnection(QString());
};

void TestNdefMessageHandler::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
    qDBusRegisterMetaType<NdefMessageHandler>();
    qDBusRegisterMetaType<NdefMessageHandlerList>();
    QVERIFY(QDBusConnection::sessionBus().registerObject(QStringLiteral("/receiver"), &receiver,
                                                         QDBusConnection::ExportAllSlots));
    sender = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("sender"));
    QVERIFY(sender.isConnected());
}

void TestNdefMessageHandler::init()
{
    failOnWarningsExceptOfUnmatchedCalls();
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
}

void TestNdefMessageHandler::cleanup()
{
    QCOMPARE(NdefMessageHandlerPrivate::refCount, 0);
    ohm.reset();
}

// The message that brings the value over the bus.
QDBusMessage TestNdefMessageHandler::received(const QVariant &value)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(),
                                       QStringLiteral("/receiver"), QString(), QStringLiteral("take"));
    call << value;
    receiver.messages.clear();
    if (!sender.send(call) || !QTest::qWaitFor([&] { return !receiver.messages.isEmpty(); }))
        qFatal("value did not arrive");
    return receiver.messages.takeFirst();
}

void TestNdefMessageHandler::defaultHandlerIsEmpty()
{
    const NdefMessageHandler record;
    QVERIFY(record.busType().isNull());
    QVERIFY(record.service().isNull());
    QVERIFY(record.path().path().isNull());
    QVERIFY(record.applicationId().isNull());
}

void TestNdefMessageHandler::fieldsComeInTheConstructorsOrder()
{
    const NdefMessageHandler record(QStringLiteral("application"), QStringLiteral("bus"),
                                    QStringLiteral("service"), handlerPath);
    QCOMPARE(record.applicationId(), QStringLiteral("application"));
    QCOMPARE(record.busType(), QStringLiteral("bus"));
    QCOMPARE(record.service(), QStringLiteral("service"));
    QCOMPARE(record.path(), handlerPath);
}

void TestNdefMessageHandler::applicationIdIsNoPartOfTheIdentity()
{
    const NdefMessageHandler other(QStringLiteral("other"), session, viewer, handlerPath);
    QVERIFY(handler() == other);
    QVERIFY(NdefMessageHandlerList{handler()}.contains(other));
}

void TestNdefMessageHandler::identityIsBusServiceAndPath_data()
{
    QTest::addColumn<QString>("busType");
    QTest::addColumn<QString>("service");
    QTest::addColumn<QDBusObjectPath>("path");
    QTest::newRow("bus") << onSystem << viewer << handlerPath;
    QTest::newRow("case of the bus") << QStringLiteral("Session") << viewer << handlerPath;
    QTest::newRow("service") << session << QStringLiteral("org.example.Other") << handlerPath;
    QTest::newRow("case of the service") << session << QStringLiteral("org.example.viewer") << handlerPath;
    QTest::newRow("path") << session << viewer << target;
    QTest::newRow("case of the path")
        << session << viewer << QDBusObjectPath(QStringLiteral("/org/example/Viewer"));
    QTest::newRow("no path") << session << viewer << QDBusObjectPath();
}

void TestNdefMessageHandler::identityIsBusServiceAndPath()
{
    QFETCH(QString, busType);
    QFETCH(QString, service);
    QFETCH(QDBusObjectPath, path);
    const NdefMessageHandler other(QStringLiteral("viewer"), busType, service, path);
    QVERIFY(!(handler() == other));
    QVERIFY(handler() == handler());
}

void TestNdefMessageHandler::copyTakesAllFields()
{
    const NdefMessageHandler source = handler();
    const NdefMessageHandler copy(source);
    NdefMessageHandler assigned;
    assigned = source;
    QVERIFY(copy == source);
    QCOMPARE(copy.applicationId(), source.applicationId());
    QVERIFY(assigned == source);
    QCOMPARE(assigned.applicationId(), source.applicationId());
}

void TestNdefMessageHandler::copySharesNothing()
{
    NdefMessageHandler source = handler();
    const NdefMessageHandler copy(source);
    source = NdefMessageHandler();
    QVERIFY(copy == handler());
    QCOMPARE(copy.applicationId(), QStringLiteral("viewer"));
}

void TestNdefMessageHandler::handlerMayBeAssignedToItself()
{
    NdefMessageHandler record = handler();
    const NdefMessageHandler &same = record;
    record = same;
    QVERIFY(record == handler());
    QCOMPARE(record.applicationId(), QStringLiteral("viewer"));
}

void TestNdefMessageHandler::handlerWithAnEmptyPathIsCopiedQuietly()
{
    const NdefMessageHandler record(QStringLiteral("viewer"), session, viewer, QDBusObjectPath());
    const NdefMessageHandler copy(record);
    NdefMessageHandler assigned = handler();
    assigned = record;
    QVERIFY(copy == record);
    QVERIFY(assigned == record);
    QVERIFY(assigned.path().path().isEmpty());
}

void TestNdefMessageHandler::malformedPathLeavesTheOtherFields()
{
    QTest::ignoreMessage(QtWarningMsg, "QDBusObjectPath: invalid path \"viewer/\"");
    const NdefMessageHandler record(QStringLiteral("viewer"), session, viewer,
                                    QDBusObjectPath(QStringLiteral("viewer/")));
    QVERIFY(record.path().path().isEmpty());
    QCOMPARE(record.service(), viewer);
    QCOMPARE(record.applicationId(), QStringLiteral("viewer"));
}

void TestNdefMessageHandler::wireFormIsBusServicePathApplication()
{
    QDBusArgument argument;
    argument << handler();
    const QDBusMessage message = received(QVariant::fromValue(argument));
    QCOMPARE(message.signature(), QStringLiteral("(ssos)"));

    const auto wire = message.arguments().at(0).value<QDBusArgument>();
    wire.beginStructure();
    QCOMPARE(wire.asVariant(), QVariant(session));
    QCOMPARE(wire.asVariant(), QVariant(viewer));
    QCOMPARE(wire.asVariant(), QVariant::fromValue(handlerPath));
    QCOMPARE(wire.asVariant(), QVariant(QStringLiteral("viewer")));
    QVERIFY(wire.atEnd());
    wire.endStructure();
}

void TestNdefMessageHandler::handlerComesBackFromTheBus()
{
    QDBusArgument argument;
    argument << handler();
    const auto record =
        qdbus_cast<NdefMessageHandler>(received(QVariant::fromValue(argument)).arguments().at(0));
    QVERIFY(record == handler());
    QCOMPARE(record.applicationId(), QStringLiteral("viewer"));
}

void TestNdefMessageHandler::listComesBackFromTheBusInOrder()
{
    const NdefMessageHandlerList list = {handler(session), handler(onSystem), handler(QString(), QString())};
    QDBusArgument argument;
    argument << list;
    const QDBusMessage message = received(QVariant::fromValue(argument));
    QCOMPARE(message.signature(), QStringLiteral("a(ssos)"));
    QVERIFY(qdbus_cast<NdefMessageHandlerList>(message.arguments().at(0)) == list);
}

void TestNdefMessageHandler::emptyListReplacesWhatWasThere()
{
    QDBusArgument empty;
    empty << NdefMessageHandlerList();
    const QDBusMessage message = received(QVariant::fromValue(empty));
    QCOMPARE(message.signature(), QStringLiteral("a(ssos)"));

    NdefMessageHandlerList list = {handler(), handler()};
    message.arguments().at(0).value<QDBusArgument>() >> list;
    QVERIFY(list.isEmpty());

    QDBusArgument one;
    one << NdefMessageHandlerList{handler(onSystem)};
    list = {handler(), handler()};
    received(QVariant::fromValue(one)).arguments().at(0).value<QDBusArgument>() >> list;
    QVERIFY(list == NdefMessageHandlerList{handler(onSystem)});
}

void TestNdefMessageHandler::handlersShareOneTracker()
{
    QVERIFY(!NdefMessageHandlerPrivate::applicationTracker);
    auto first = std::make_unique<NdefMessageHandler>();
    QVERIFY(NdefMessageHandlerPrivate::applicationTracker);
    auto second = std::make_unique<NdefMessageHandler>(handler());
    QCOMPARE(NdefMessageHandlerPrivate::refCount, 2);
    first.reset();
    QCOMPARE(ohm->members(), QStringList{QStringLiteral("Subscribe")});

    second.reset();
    QVERIFY(!NdefMessageHandlerPrivate::applicationTracker);
    QCOMPARE(NdefMessageHandlerPrivate::refCount, 0);
    QCOMPARE(ohm->members(), (QStringList{QStringLiteral("Subscribe"), QStringLiteral("Unsubscribe")}));

    const NdefMessageHandler third;
    QVERIFY(NdefMessageHandlerPrivate::applicationTracker);
    QCOMPARE(ohm->calls(QStringLiteral("Subscribe")).size(), 2);
}

void TestNdefMessageHandler::copiesAreCounted()
{
    {
        const NdefMessageHandler record = handler();
        const NdefMessageHandler copy(record);
        NdefMessageHandler assigned;
        assigned = record;
        QCOMPARE(NdefMessageHandlerPrivate::refCount, 3);
        const NdefMessageHandlerList list(10, record);
        QCOMPARE(NdefMessageHandlerPrivate::refCount, 13);
    }
    QCOMPARE(NdefMessageHandlerPrivate::refCount, 0);
}

void TestNdefMessageHandler::trackerOutlivesItsFirstHandler()
{
    qsizetype delivered = 0;
    QObject context;
    connect(
        this, &TestNdefMessageHandler::passedOn, &context,
        [&](const NdefMessageHandlerList &handlers) { delivered = handlers.size(); }, Qt::QueuedConnection);
    Q_EMIT passedOn({handler(), handler(onSystem)});
    // Only the copies in the event queue are left.
    QCOMPARE(NdefMessageHandlerPrivate::refCount, 2);
    QCOMPARE(ohm->calls(QStringLiteral("Unsubscribe")).size(), 0);
    QTRY_COMPARE(delivered, 2);
    QTRY_COMPARE(ohm->calls(QStringLiteral("Unsubscribe")).size(), 1);
}

void TestNdefMessageHandler::dataGoesToTheBusOfTheHandler_data()
{
    QTest::addColumn<QString>("busType");
    QTest::newRow("session") << session;
    QTest::newRow("empty") << QString();
    QTest::newRow("capital S") << QStringLiteral("System");
    QTest::newRow("blank behind") << QStringLiteral("system ");
}

void TestNdefMessageHandler::dataGoesToTheBusOfTheHandler()
{
    QFETCH(QString, busType);
    FakeHandler application;
    application.start();
    const QByteArray data("\xd1\x01\x00\xff", 4);
    handler(busType).forwardData(target, data);
    passFence(QDBusConnection::sessionBus(), viewer);

    QCOMPARE(application.members(), (QStringList{ndefData, launch, QStringLiteral("Fence")}));
    const FakeCall delivery = application.calls().at(0);
    QCOMPARE(delivery.path, handlerPath.path());
    QCOMPARE(delivery.interface, QStringLiteral("com.tavix.nfc.NDEFHandler"));
    QCOMPARE(delivery.signature, QStringLiteral("oay"));
    QCOMPARE(delivery.arguments.at(0).value<QDBusObjectPath>(), target);
    QCOMPARE(delivery.arguments.at(1).toByteArray(), data);
    const FakeCall call = application.calls().at(1);
    QCOMPARE(call.path, QStringLiteral("/org/orvik/m"));
    QCOMPARE(call.interface, QStringLiteral("com.tavix.MApplicationIf"));
    QCOMPARE(call.signature, QString());
}

void TestNdefMessageHandler::handlerOnTheSystemBusIsNotLaunched()
{
    FakeHandler service(QDBusConnection::SystemBus, viewer);
    FakeHandler namesake(QDBusConnection::SessionBus, viewer);
    service.start();
    namesake.start();
    handler(onSystem).forwardData(target, QByteArray("data"));
    passFence(QDBusConnection::systemBus(), viewer);
    passFence(QDBusConnection::sessionBus(), viewer);
    QCOMPARE(service.members(), (QStringList{ndefData, QStringLiteral("Fence")}));
    QCOMPARE(service.calls().at(0).arguments.at(1).toByteArray(), QByteArray("data"));
    QCOMPARE(namesake.members(), QStringList{QStringLiteral("Fence")});
}

void TestNdefMessageHandler::anyDataArrives_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("NUL") << QByteArray(1, '\0');
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all.append(char(i));
    QTest::newRow("every byte") << all;
    QTest::newRow("a million") << QByteArray(1000000, 'x');
}

void TestNdefMessageHandler::anyDataArrives()
{
    QFETCH(QByteArray, data);
    FakeHandler application;
    application.start();
    handler().forwardData(target, data);
    const QList<FakeCall> calls = application.calls(ndefData);
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.at(0).arguments.at(1).toByteArray(), data);
}

void TestNdefMessageHandler::launchWaitsForTheAnswer()
{
    FakeHandler application;
    application.delay(ndefData, 200);
    application.start();
    BusMonitor monitor(QDBusConnection::sessionBus());
    QElapsedTimer time;
    time.start();
    handler().forwardData(target, QByteArray());
    QVERIFY(time.elapsed() >= 190);
    QCOMPARE(handlerCalls(monitor), (QStringList{dataCall, launchCall}));
}

void TestNdefMessageHandler::failureIsLoggedAndLaunchedAllTheSame_data()
{
    dataGoesToTheBusOfTheHandler_data();
}

void TestNdefMessageHandler::failureIsLoggedAndLaunchedAllTheSame()
{
    QFETCH(QString, busType);
    FakeHandler application;
    application.fail(ndefData, QStringLiteral("org.example.Error.Full"),
                     QStringLiteral("no %s left, K\u00f6pfe"));
    application.start();
    QTest::ignoreMessage(QtWarningMsg,
                         warning(QStringLiteral("org.example.Error.Full no %s left, K\u00f6pfe")));
    handler(busType).forwardData(target, QByteArray());
    passFence(QDBusConnection::sessionBus(), viewer);
    QCOMPARE(application.members(), (QStringList{ndefData, launch, QStringLiteral("Fence")}));
}

void TestNdefMessageHandler::handlerThatDiesIsLaunchedAllTheSame()
{
    FakeHandler application;
    application.dieOn(ndefData);
    application.start();
    BusMonitor monitor(QDBusConnection::sessionBus());
    QTest::ignoreMessage(
        QtWarningMsg,
        warning(QStringLiteral("org.freedesktop.DBus.Error.NoReply Message recipient disconnected "
                               "from message bus without replying")));
    handler().forwardData(target, QByteArray());
    QCOMPARE(handlerCalls(monitor), (QStringList{dataCall, launchCall}));
}

void TestNdefMessageHandler::handlerThatIsNotThereIsLaunchedAllTheSame_data()
{
    dataGoesToTheBusOfTheHandler_data();
}

void TestNdefMessageHandler::handlerThatIsNotThereIsLaunchedAllTheSame()
{
    QFETCH(QString, busType);
    BusMonitor monitor(QDBusConnection::sessionBus());
    QTest::ignoreMessage(
        QtWarningMsg, warning(QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown The name "
                                             "org.example.Viewer was not provided by any .service files")));
    handler(busType).forwardData(target, QByteArray());
    QCOMPARE(handlerCalls(monitor), (QStringList{dataCall, launchCall}));
}

void TestNdefMessageHandler::failureOnTheSystemBusIsLogged()
{
    BusMonitor monitor(QDBusConnection::sessionBus());
    QTest::ignoreMessage(
        QtWarningMsg, warning(QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown The name "
                                             "org.example.Viewer was not provided by any .service files")));
    handler(onSystem).forwardData(target, QByteArray());
    QCOMPARE(handlerCalls(monitor), QStringList());
}

void TestNdefMessageHandler::handlerIsStartedOnDemand()
{
    FakeHandler application;
    application.makeActivatable();
    handler().forwardData(target, QByteArray("data"));
    QVERIFY(application.isOnBus());
    passFence(QDBusConnection::sessionBus(), viewer);
    QCOMPARE(application.members(), (QStringList{ndefData, launch, QStringLiteral("Fence")}));
}

void TestNdefMessageHandler::handlerMayBeNamedByItsConnection()
{
    FakeHandler application;
    application.start();
    const QString owner = QDBusConnection::sessionBus().interface()->serviceOwner(viewer).value();
    QVERIFY(owner.startsWith(QLatin1Char(':')));
    handler(session, owner).forwardData(target, QByteArray());
    passFence(QDBusConnection::sessionBus(), owner);
    QCOMPARE(application.members(), (QStringList{ndefData, launch, QStringLiteral("Fence")}));
}

void TestNdefMessageHandler::handlerThatHangsDoesNotHoldUpItsLaunch()
{
    FakeHandler application;
    application.hangAfter(ndefData);
    application.start();
    BusMonitor monitor(QDBusConnection::sessionBus());
    QElapsedTimer time;
    time.start();
    handler().forwardData(target, QByteArray());
    // A call that waited for the handler would wait for 25 seconds.
    QVERIFY(time.elapsed() < 20000);
    QCOMPARE(handlerCalls(monitor), (QStringList{dataCall, launchCall}));
}

void TestNdefMessageHandler::nothingIsAskedBetweenDataAndLaunch()
{
    FakeHandler application;
    application.start();
    BusMonitor monitor(QDBusConnection::sessionBus());
    handler().forwardData(target, QByteArray());
    const QStringList calls = monitor.takeCalls();
    QCOMPARE(calls.filter(QStringLiteral("Introspect")), QStringList());
    const qsizetype data = calls.indexOf(dataCall);
    QVERIFY(data >= 0);
    // Letting go of the handler's proxy ends the watch over its service; the bus answers that.
    QStringList rest = calls.mid(data + 1);
    rest.removeAll(QStringLiteral("org.freedesktop.DBus.RemoveMatch"));
    QCOMPARE(rest, QStringList{launchCall});
}

void TestNdefMessageHandler::serviceThatIsNoBusNameIsLogged_data()
{
    QTest::addColumn<QString>("service");
    QTest::newRow("one word") << QStringLiteral("viewer");
    QTest::newRow("empty") << QString();
    QTest::newRow("path") << QStringLiteral("/org/example/viewer");
    QTest::newRow("colon") << QStringLiteral(":");
    QTest::newRow("leading digit") << QStringLiteral("org.1example");
    QTest::newRow("outside ASCII") << QStringLiteral("org.ex\u00e4mple");
    QTest::newRow("too long") << QStringLiteral("org.") + QString(252, QLatin1Char('x'));
}

void TestNdefMessageHandler::serviceThatIsNoBusNameIsLogged()
{
    QFETCH(QString, service);
    BusMonitor monitor(QDBusConnection::sessionBus());
    for (const QString &busType : {session, onSystem}) {
        QTest::ignoreMessage(
            QtWarningMsg,
            warning(QStringLiteral("org.qtproject.QtDBus.Error.InvalidService Invalid service name: %1")
                        .arg(service)));
        handler(busType, service).forwardData(target, QByteArray());
    }
    QCOMPARE(handlerCalls(monitor), QStringList());
}

void TestNdefMessageHandler::handlerWithoutAPathIsLaunchedAllTheSame()
{
    FakeHandler application;
    application.start();
    NdefMessageHandler pathless(QStringLiteral("viewer"), session, viewer, QDBusObjectPath());
    QTest::ignoreMessage(
        QtWarningMsg,
        warning(QStringLiteral("org.qtproject.QtDBus.Error.InvalidObjectPath Object path cannot be empty")));
    pathless.forwardData(target, QByteArray());
    passFence(QDBusConnection::sessionBus(), viewer);
    QCOMPARE(application.members(), (QStringList{launch, QStringLiteral("Fence")}));
}

void TestNdefMessageHandler::handlerInFrontIsRunningOnForeground()
{
    FakeHandler application;
    application.start();
    const uint pid = QDBusConnection::sessionBus().interface()->servicePid(viewer);
    ohm->setActive(QStringLiteral("viewer"), QString(), QString(), pid);
    const NdefMessageHandler record = handler();
    QVERIFY(record.isRunningOnForeground());
    QVERIFY(handler(QString()).isRunningOnForeground());
    QVERIFY(!handler(onSystem).isRunningOnForeground());

    ohm->emitActive(QStringLiteral("browser"), QString(), QString(), pid + 1);
    QTRY_VERIFY(!record.isRunningOnForeground());
    ohm->emitActive(QStringLiteral("viewer"), QString(), QString(), pid);
    QTRY_VERIFY(record.isRunningOnForeground());
}

void TestNdefMessageHandler::systemHandlerInFrontIsRunningOnForeground()
{
    FakeHandler service(QDBusConnection::SystemBus, viewer);
    service.start();
    const uint pid = QDBusConnection::systemBus().interface()->servicePid(viewer);
    ohm->setActive(QStringLiteral("viewer"), QString(), QString(), pid);
    const NdefMessageHandler record = handler(onSystem);
    QVERIFY(record.isRunningOnForeground());
    QVERIFY(!handler(QStringLiteral("System")).isRunningOnForeground());
}

void TestNdefMessageHandler::noHandlerIsInFrontWhileThePidIsUnknown()
{
    ohm->stop();
    FakeHandler application;
    application.start();
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    const NdefMessageHandler record = handler();
    QVERIFY(!record.isRunningOnForeground());
    QVERIFY(!handler(session, QStringLiteral("org.freedesktop.DBus")).isRunningOnForeground());
    QVERIFY(!handler(session, QDBusConnection::sessionBus().baseService()).isRunningOnForeground());
}

void TestNdefMessageHandler::missingServiceIsNotInFront_data()
{
    QTest::addColumn<QString>("service");
    QTest::newRow("unknown") << QStringLiteral("org.example.Nobody");
    QTest::newRow("one word") << QStringLiteral("viewer");
    QTest::newRow("empty") << QString();
}

void TestNdefMessageHandler::missingServiceIsNotInFront()
{
    QFETCH(QString, service);
    const NdefMessageHandler record = handler(session, service);
    QVERIFY(!record.isRunningOnForeground());
    QVERIFY(!handler(onSystem, service).isRunningOnForeground());
}

QTEST_GUILESS_MAIN(TestNdefMessageHandler)
#include "tst_ndefmessagehandler.moc"
