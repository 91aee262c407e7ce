// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <climits>
#include <functional>
#include <limits>
#include <memory>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDBusVariant>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QtTest>

#include <NfcAgent>

#include "agent/nfcagent_p.h"
#include "busmonitor.h"
#include "unmatchedcalls.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAgent;
using ConnUi::NfcAgentPrivate;

Q_DECLARE_METATYPE(std::function<void()>)

namespace {

const QString agentInterface = QStringLiteral("com.tavix.nfc.UIAgent");
const QString rejected = QStringLiteral("com.tavix.nfc.UIAgent.Rejected");
const QString canceled = QStringLiteral("com.tavix.nfc.UIAgent.Canceled");
const QString denied =
    QStringLiteral("org.freedesktop.DBus.Error.AccessDenied Only the NFC daemon may call this agent");
const QString target = QStringLiteral("/com/tavix/nfc/tag1");
const QString otherTarget = QStringLiteral("/com/tavix/nfc/tag2");

QVariant path(const QString &path)
{
    return QVariant::fromValue(QDBusObjectPath(path));
}

QVariant variant(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

QVariant handover(const QString &text)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << QDBusObjectPath(QStringLiteral("/carrier")) << text;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

// Not the records themselves: those would die on the bus's own thread.
QVariant marshalled(const NdefMessageHandlerList &handlers)
{
    QDBusArgument argument;
    argument << handlers;
    return QVariant::fromValue(argument);
}

QString member(const char *name)
{
    return QString::fromLatin1(name);
}

} // namespace

/** The daemon's side: calls an agent over a connection of its own and writes down the answers. */
class Daemon
{
public:
    explicit Daemon(const QString &name = QStringLiteral("daemon"))
        : bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, name))
        , name(name)
    {}
    ~Daemon() { leave(); }
    Q_DISABLE_COPY_MOVE(Daemon)

    void leave() const { QDBusConnection::disconnectFromBus(name); }

    bool ownName() { return bus.registerService(QStringLiteral("com.tavix.nfc")); }

    QDBusMessage message(const QString &agent, const char *method, const QVariantList &arguments) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QDBusConnection::systemBus().baseService(), agent,
                                                           agentInterface, member(method));
        call.setArguments(arguments);
        return call;
    }

    void call(const char *label, const QString &agent, const char *method, const QVariantList &arguments = {})
    {
        auto *watcher =
            new QDBusPendingCallWatcher(bus.asyncCall(message(agent, method, arguments), INT_MAX), &context);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context,
                         [this, watcher, label = QString::fromLatin1(label)] {
                             answers.append(label + QLatin1String(": ") + text(watcher->reply()));
                         });
    }

    void pair(const char *label, const QString &agent, const QString &device = target)
    {
        call(label, agent, "RequestBTPairing",
             {path(device), QStringLiteral("00:11"), QStringLiteral("Headset"), 0x240404U,
              QStringLiteral("0000")});
    }

    void connectTo(const char *label, const QString &agent, const QString &device = target)
    {
        call(label, agent, "RequestBTConnection",
             {path(device), QStringLiteral("00:11"), QStringLiteral("Headset"), 0x240404U});
    }

    void select(const char *label, const QString &agent, const QVariant &info)
    {
        call(label, agent, "RequestSharingSelection", {QStringLiteral("bluetooth"), variant(info)});
    }

    QStringList answers;
    QDBusConnection bus;

private:
    static QString text(const QDBusMessage &reply)
    {
        if (reply.type() == QDBusMessage::ErrorMessage)
            return (reply.errorName() + QLatin1Char(' ') + reply.errorMessage()).trimmed();
        return reply.signature().isEmpty() ? QStringLiteral("granted") : reply.signature();
    }

    QString name;
    QObject context;
};

class TestNfcAgent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void agentsAreNumberedFromZero();
    void touchStatusesHaveFixedNumbers();
    void signalsAreDeclaredInOrderWithTheirNames();
    void answeringFunctionsAreNotSlots();
    void everyMethodIsOnTheBus();
    void releaseIsAnsweredAtOnceAndLeavesRequestsPending();
    void bluetoothRequestsCarryTheirArguments();
    void dataDeliveryCarriesHandlersInOrder();
    void dataDeliveryMayNameNoHandler();
    void sharingRequestsCarryTheInnerInfo();
    void grantAnswersItsKindOnly_data();
    void grantAnswersItsKindOnly();
    void olderOfTwoEqualRequestsIsAnsweredFirst();
    void rejectionAnswersTheOldestOfAnyKind();
    void requestForAnotherTargetStaysPending();
    void answerWithoutRequestIsLoggedAndSendsNothing_data();
    void answerWithoutRequestIsLoggedAndSendsNothing();
    void answeredRequestIsAnsweredOnce();
    void valueOfAReplyIsItsOnlyArgument();
    void anyErrorNameOfDBusIsPassedOn();
    void impossibleErrorNameBecomesRejected_data();
    void impossibleErrorNameBecomesRejected();
    void emptyErrorNameGrants();
    void bothSharingRequestsAreOfOneType();
    void canceledSharingIsNobodysDecision();
    void rejectedDeviceMayBeWhatIsSharedWith();
    void sharingIsMatchedByContent();
    void sharingInfoMatchesAfterTheClientReadIt();
    void everyTypeOfInfoIsFoundAgain_data();
    void everyTypeOfInfoIsFoundAgain();
    void invalidInfoAnswersNothing();
    void deletedAgentCancelsOldestFirst();
    void cancellationKeepsItsOrderAroundAnAnswer();
    void everyRequestOfManyIsFoundByItsTarget();
    void agentDeletedWithItsParentCancels();
    void cancellationEndsWhateverTheKeys();
    void agentAnswersForItsOwnRequestsOnly();
    void agentLeavesTheBusWhenDeleted();
    void callOnItsWayToADeletedAgentIsAnswered();
    void slotMayAnswerAtOnce_data();
    void slotMayAnswerAtOnce();
    void slotMayDeleteTheAgent_data();
    void slotMayDeleteTheAgent();
    void slotMayWaitWhileTheAgentIsDeleted();
    void callerThatIsGoneIsAnsweredQuietly();
    void callThatExpectsNoReplyBecomesARequest();
    void wrongSignatureIsAnErrorAndChangesNothing_data();
    void wrongSignatureIsAnErrorAndChangesNothing();
    void releaseWithAnArgumentIsRefusedWithTheReason();
    void strangersMayCallByDefault();
    void daemonOnlyAgentRefusesStrangers_data();
    void daemonOnlyAgentRefusesStrangers();
    void daemonOnlyAgentAsksNobodyAboutACall();
    void daemonOnlyAgentKnowsTheDaemonThatIsThere();
    void daemonOnlyAgentRefusesAllWithoutDaemon();
    void daemonOnlyAgentFollowsTheNextDaemon();
    void daemonOnlyCanBeSwitchedOff();
    void touchStatusIsMapped_data();
    void touchStatusIsMapped();

private:
    void addRequests() const;
    static void finishDelivery();
    QVariantList arguments(const QByteArray &method) const;
    void connectAll(NfcAgent *agent, const std::function<void()> &slot);

    std::unique_ptr<Daemon> daemon;
    std::unique_ptr<NfcAgent> agent;
    // Keeps the one tracker of the foreground alive, so that data deliveries do not make and log new ones.
    std::unique_ptr<NdefMessageHandler> keeper;
};

void TestNfcAgent::initTestCase()
{
    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    keeper = std::make_unique<NdefMessageHandler>();
}

void TestNfcAgent::init()
{
    failOnWarningsExceptOfUnmatchedCalls();
    daemon = std::make_unique<Daemon>();
    QVERIFY(daemon->bus.isConnected());
    if (qstrcmp(QTest::currentTestFunction(), "agentsAreNumberedFromZero") != 0)
        agent = std::make_unique<NfcAgent>();
}

void TestNfcAgent::cleanup()
{
    agent.reset();
    daemon.reset();
}

void TestNfcAgent::agentsAreNumberedFromZero()
{
    const NfcAgent first;
    auto second = std::make_unique<NfcAgent>();
    QCOMPARE(first.path(), QStringLiteral("/com/tavix/nfcUIAgent/0"));
    QCOMPARE(second->path(), QStringLiteral("/com/tavix/nfcUIAgent/1"));
    QCOMPARE(second->property("path").toString(), second->path());
    second = std::make_unique<NfcAgent>();
    QCOMPARE(second->path(), QStringLiteral("/com/tavix/nfcUIAgent/2"));
}

void TestNfcAgent::touchStatusesHaveFixedNumbers()
{
    const QMetaObject &meta = NfcAgent::staticMetaObject;
    const QMetaEnum statuses = meta.enumerator(meta.indexOfEnumerator("TouchStatus"));
    QCOMPARE(statuses.keyCount(), 4);
    QCOMPARE(statuses.keyToValue("Ok"), 0);
    QCOMPARE(statuses.keyToValue("UnsupportedTagTypeError"), 1);
    QCOMPARE(statuses.keyToValue("MalformedContentError"), 2);
    QCOMPARE(statuses.keyToValue("UnknownError"), 255);
}

void TestNfcAgent::signalsAreDeclaredInOrderWithTheirNames()
{
    const QMetaObject &meta = NfcAgent::staticMetaObject;
    QStringList declared;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.methodType(), QMetaMethod::Signal);
        const QByteArray text = method.methodSignature() + " " + method.parameterNames().join(',');
        declared.append(QString::fromLatin1(text.trimmed()));
    }
    const QStringList expected = {
        QStringLiteral("release()"),
        QStringLiteral(
            "btPairingRequested(QDBusObjectPath,QString,QString,uint,QString) target,addr,name,cod,pin"),
        QStringLiteral("btConnectionRequested(QDBusObjectPath,QString,QString,uint) target,addr,name,cod"),
        QStringLiteral("btDisconnectionRequested(QDBusObjectPath,QString,QString,uint) target,addr,name,cod"),
        QStringLiteral(
            "dataDeliveryRequested(NdefMessageHandlerList,QDBusObjectPath,QByteArray) handlers,target,data"),
        QStringLiteral("sharingPermissionRequested(QString,QVariant,QStringList) carrier,info,resources"),
        QStringLiteral("sharingSelectionRequested(QString,QVariant) carrier,info"),
        QStringLiteral("notifyTouch(QDBusObjectPath,int) target,touchStatus"),
    };
    QCOMPARE(declared, expected);
}

void TestNfcAgent::answeringFunctionsAreNotSlots()
{
    QCOMPARE(NfcAgent::staticMetaObject.indexOfMethod("rejectDevice(QDBusObjectPath)"), -1);
    QCOMPARE(NfcAgent::staticMetaObject.indexOfMethod("acceptSharing(QVariant)"), -1);
}

void TestNfcAgent::everyMethodIsOnTheBus()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QDBusConnection::systemBus().baseService(), agent->path(),
        QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QDBusPendingCall pending = daemon->bus.asyncCall(call);
    QTRY_VERIFY(pending.isFinished());
    const QString live = QDBusReply<QString>(pending).value();

    // The bus library leaves a method out, with a warning, when it does not know one of its types.
    for (const char *method :
         {"Release", "RequestBTPairing", "RequestBTConnection", "RequestBTDisconnection",
          "RequestNDEFDataDelivery", "RequestSharingPermission", "RequestSharingSelection", "NotifyTouch"})
        QVERIFY2(live.contains(QStringLiteral("<method name=\"%1\"").arg(QLatin1String(method))), method);
    QVERIFY(live.contains(QLatin1String("type=\"a(ssos)\"")));
}

void TestNfcAgent::releaseIsAnsweredAtOnceAndLeavesRequestsPending()
{
    const QSignalSpy released(agent.get(), &NfcAgent::release);
    daemon->pair("pairing", agent->path());
    daemon->call("release", agent->path(), "Release");
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("release: granted")});
    QCOMPARE(released.count(), 1);

    agent->btPairingRequestGranted(QDBusObjectPath(target));
    QTRY_COMPARE(daemon->answers.value(1), QStringLiteral("pairing: granted"));
}

void TestNfcAgent::bluetoothRequestsCarryTheirArguments()
{
    QSignalSpy pairing(agent.get(), &NfcAgent::btPairingRequested);
    QSignalSpy connection(agent.get(), &NfcAgent::btConnectionRequested);
    QSignalSpy disconnection(agent.get(), &NfcAgent::btDisconnectionRequested);
    const QVariantList device = {path(target), QStringLiteral("00:11"), QStringLiteral("K\u00f6pfe"),
                                 UINT_MAX};
    daemon->call("pairing", agent->path(), "RequestBTPairing", device + QVariantList{QStringLiteral("0000")});
    daemon->call("connection", agent->path(), "RequestBTConnection", device);
    daemon->call("disconnection", agent->path(), "RequestBTDisconnection", device);

    QTRY_COMPARE(disconnection.count(), 1);
    QCOMPARE(pairing.takeFirst(), device + QVariantList{QStringLiteral("0000")});
    QCOMPARE(connection.takeFirst(), device);
    QCOMPARE(disconnection.takeFirst(), device);
    QCOMPARE(daemon->answers, QStringList());
}

void TestNfcAgent::dataDeliveryCarriesHandlersInOrder()
{
    QSignalSpy spy(agent.get(), &NfcAgent::dataDeliveryRequested);
    const NdefMessageHandlerList handlers = {
        NdefMessageHandler(QStringLiteral("browser"), QStringLiteral("session"),
                           QStringLiteral("com.tavix.browser"), QDBusObjectPath(QStringLiteral("/browser"))),
        NdefMessageHandler(QStringLiteral("store"), QStringLiteral("system"), QStringLiteral("viewer"),
                           QDBusObjectPath(QStringLiteral("/"))),
    };
    const QByteArray data("\xd1\x01\x00\xff", 4);
    daemon->call("delivery", agent->path(), "RequestNDEFDataDelivery",
                 {marshalled(handlers), path(target), data});

    QTRY_COMPARE(spy.count(), 1);
    const auto received = spy.at(0).at(0).value<NdefMessageHandlerList>();
    QVERIFY(received == handlers);
    QCOMPARE(received.at(0).applicationId(), QStringLiteral("browser"));
    QCOMPARE(received.at(1).applicationId(), QStringLiteral("store"));
    QCOMPARE(spy.at(0).at(1).value<QDBusObjectPath>().path(), target);
    QCOMPARE(spy.at(0).at(2).toByteArray(), data);
}

void TestNfcAgent::dataDeliveryMayNameNoHandler()
{
    QSignalSpy spy(agent.get(), &NfcAgent::dataDeliveryRequested);
    daemon->call("delivery", agent->path(), "RequestNDEFDataDelivery",
                 {marshalled({}), path(target), QByteArray()});
    QTRY_COMPARE(spy.count(), 1);
    QVERIFY(spy.at(0).at(0).value<NdefMessageHandlerList>().isEmpty());
    QVERIFY(spy.at(0).at(2).toByteArray().isEmpty());
}

void TestNfcAgent::sharingRequestsCarryTheInnerInfo()
{
    QSignalSpy permission(agent.get(), &NfcAgent::sharingPermissionRequested);
    QSignalSpy selection(agent.get(), &NfcAgent::sharingSelectionRequested);
    const QStringList resources = {QStringLiteral("file:///a"), QStringLiteral("contact:1")};
    daemon->call("permission", agent->path(), "RequestSharingPermission",
                 {QStringLiteral("bluetooth"), variant(handover(QStringLiteral("oob"))), resources});
    daemon->call("selection", agent->path(), "RequestSharingSelection",
                 {QStringLiteral("wifi"), variant(QStringLiteral("key"))});

    QTRY_COMPARE(selection.count(), 1);
    QCOMPARE(permission.at(0).at(0).toString(), QStringLiteral("bluetooth"));
    const auto info = permission.at(0).at(1).value<QVariant>().value<QDBusArgument>();
    QCOMPARE(info.currentSignature(), QStringLiteral("(os)"));
    QCOMPARE(permission.at(0).at(2).toStringList(), resources);
    QCOMPARE(selection.at(0).at(0).toString(), QStringLiteral("wifi"));
    QCOMPARE(selection.at(0).at(1).value<QVariant>(), QVariant(QStringLiteral("key")));
}

using Grant = void (NfcAgent::*)(const QDBusObjectPath &);
Q_DECLARE_METATYPE(Grant)

void TestNfcAgent::grantAnswersItsKindOnly_data()
{
    QTest::addColumn<Grant>("grant");
    QTest::addColumn<QString>("answer");
    QTest::newRow("pairing") << &NfcAgent::btPairingRequestGranted << QStringLiteral("pairing: granted");
    QTest::newRow("connection") << &NfcAgent::btConnectionRequestGranted
                                << QStringLiteral("connection: granted");
    QTest::newRow("disconnection") << &NfcAgent::btDisconnectionRequestGranted
                                   << QStringLiteral("disconnection: granted");
    QTest::newRow("delivery") << &NfcAgent::dataDeliveryGranted << QStringLiteral("delivery: granted");
}

void TestNfcAgent::grantAnswersItsKindOnly()
{
    QFETCH(Grant, grant);
    QFETCH(QString, answer);
    const QSignalSpy last(agent.get(), &NfcAgent::sharingSelectionRequested);
    const QVariantList device = {path(target), QString(), QString(), 0U};
    daemon->call("delivery", agent->path(), "RequestNDEFDataDelivery",
                 {marshalled({}), path(target), QByteArray()});
    daemon->call("disconnection", agent->path(), "RequestBTDisconnection", device);
    daemon->call("connection", agent->path(), "RequestBTConnection", device);
    daemon->pair("pairing", agent->path());
    daemon->select("selection", agent->path(), target);
    QTRY_COMPARE(last.count(), 1);

    (agent.get()->*grant)(QDBusObjectPath(target));
    daemon->call("release", agent->path(), "Release");
    QTRY_COMPARE(daemon->answers, (QStringList{answer, QStringLiteral("release: granted")}));
}

void TestNfcAgent::olderOfTwoEqualRequestsIsAnsweredFirst()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("older", agent->path());
    daemon->pair("newer", agent->path());
    QTRY_COMPARE(requested.count(), 2);

    agent->btPairingRequestGranted(QDBusObjectPath(target));
    daemon->call("release", agent->path(), "Release");
    QTRY_COMPARE(daemon->answers,
                 (QStringList{QStringLiteral("older: granted"), QStringLiteral("release: granted")}));
    agent->btPairingRequestGranted(QDBusObjectPath(target));
    QTRY_COMPARE(daemon->answers.value(2), QStringLiteral("newer: granted"));
}

void TestNfcAgent::rejectionAnswersTheOldestOfAnyKind()
{
    const QSignalSpy paired(agent.get(), &NfcAgent::btPairingRequested);
    const QSignalSpy connected(agent.get(), &NfcAgent::btConnectionRequested);
    daemon->pair("pairing 1", agent->path());
    daemon->connectTo("connection 1", agent->path());
    daemon->connectTo("connection 2", agent->path(), otherTarget);
    daemon->pair("pairing 2", agent->path(), otherTarget);
    QTRY_COMPARE(paired.count() + connected.count(), 4);

    agent->rejectDevice(QDBusObjectPath(target));
    agent->rejectDevice(QDBusObjectPath(otherTarget));
    agent->rejectDevice(QDBusObjectPath(otherTarget));
    agent->btConnectionRequestGranted(QDBusObjectPath(target));
    QTRY_COMPARE(
        daemon->answers,
        (QStringList{QStringLiteral("pairing 1: ") + rejected, QStringLiteral("connection 2: ") + rejected,
                     QStringLiteral("pairing 2: ") + rejected, QStringLiteral("connection 1: granted")}));
}

void TestNfcAgent::requestForAnotherTargetStaysPending()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("first", agent->path());
    daemon->pair("second", agent->path(), otherTarget);
    QTRY_COMPARE(requested.count(), 2);

    agent->btPairingRequestGranted(QDBusObjectPath(otherTarget));
    QTest::ignoreMessage(QtWarningMsg, "No request for agent request type 0");
    agent->btPairingRequestGranted(QDBusObjectPath(otherTarget));
    agent->btPairingRequestGranted(QDBusObjectPath(target));
    QTRY_COMPARE(daemon->answers,
                 (QStringList{QStringLiteral("second: granted"), QStringLiteral("first: granted")}));
}

void TestNfcAgent::answerWithoutRequestIsLoggedAndSendsNothing_data()
{
    using Answer = std::function<void()>;
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<int>("type");
    const QDBusObjectPath tag(target);
    QTest::newRow("pairing") << Answer([=, this] { agent->btPairingRequestGranted(tag); }) << 0;
    QTest::newRow("connection") << Answer([=, this] { agent->btConnectionRequestGranted(tag); }) << 1;
    QTest::newRow("disconnection") << Answer([=, this] { agent->btDisconnectionRequestGranted(tag); }) << 2;
    QTest::newRow("delivery") << Answer([=, this] { agent->dataDeliveryGranted(tag); }) << 3;
    QTest::newRow("sharing") << Answer([=, this] { agent->acceptSharing(QStringLiteral("key")); }) << 4;
    QTest::newRow("no sharing") << Answer([=, this] { agent->rejectSharing(QStringLiteral("key")); }) << 4;
    QTest::newRow("rejection") << Answer([=, this] { agent->rejectDevice(tag); }) << 5;
    QTest::newRow("error") << Answer([=, this] { agent->replyError(tag, QStringLiteral("a.b")); }) << 5;
}

void TestNfcAgent::answerWithoutRequestIsLoggedAndSendsNothing()
{
    QFETCH(std::function<void()>, answer);
    QFETCH(int, type);
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("another", agent->path(), otherTarget);
    QTRY_COMPARE(requested.count(), 1);

    QTest::ignoreMessage(QtWarningMsg,
                         QByteArray("No request for agent request type " + QByteArray::number(type)));
    answer();
    daemon->call("release", agent->path(), "Release");
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("release: granted")});
}

void TestNfcAgent::answeredRequestIsAnsweredOnce()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(requested.count(), 1);

    agent->btPairingRequestGranted(QDBusObjectPath(target));
    QTest::ignoreMessage(QtWarningMsg, "No request for agent request type 5");
    agent->rejectDevice(QDBusObjectPath(target));
    agent.reset();
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: granted")});
}

void TestNfcAgent::valueOfAReplyIsItsOnlyArgument()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(requested.count(), 1);

    auto *d = agent->findChild<NfcAgentPrivate *>();
    d->replyRequest(NfcAgentPrivate::BtPairingRequest, target, QStringList());
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: as")});
}

void TestNfcAgent::anyErrorNameOfDBusIsPassedOn()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(requested.count(), 1);
    agent->replyError(QDBusObjectPath(target), QStringLiteral("org.example.Error_1.TooLate"));
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: org.example.Error_1.TooLate")});
}

void TestNfcAgent::impossibleErrorNameBecomesRejected_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("one word") << QStringLiteral("Rejected");
    QTest::newRow("sentence") << QStringLiteral("the user said %s.");
    QTest::newRow("too long") << QStringLiteral("a.") + QString(254, QLatin1Char('b'));
    QTest::newRow("outside ASCII") << QStringLiteral("a.\u00fc");
}

void TestNfcAgent::impossibleErrorNameBecomesRejected()
{
    QFETCH(QString, name);
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(requested.count(), 1);

    const QString warning =
        QStringLiteral("NfcAgent: '%1' is not a D-Bus error name, replying %2").arg(name, rejected);
    QTest::ignoreMessage(QtWarningMsg, warning.toUtf8());
    agent->replyError(QDBusObjectPath(target), name);
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: ") + rejected});
}

void TestNfcAgent::emptyErrorNameGrants()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(requested.count(), 1);
    agent->replyError(QDBusObjectPath(target), QString());
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: granted")});
}

void TestNfcAgent::bothSharingRequestsAreOfOneType()
{
    QVariant info;
    connect(agent.get(), &NfcAgent::sharingSelectionRequested, this,
            [&](const QString &, const QVariant &value) { info = value; });
    daemon->call("permission", agent->path(), "RequestSharingPermission",
                 {QStringLiteral("bluetooth"), variant(handover(QStringLiteral("a"))), QStringList()});
    daemon->select("selection", agent->path(), handover(QStringLiteral("a")));
    QTRY_VERIFY(info.isValid());

    agent->acceptSharing(info);
    agent->rejectSharing(info);
    QTRY_COMPARE(daemon->answers, (QStringList{QStringLiteral("permission: granted"),
                                               QStringLiteral("selection: ") + rejected}));
}

void TestNfcAgent::canceledSharingIsNobodysDecision()
{
    QVariant info;
    connect(agent.get(), &NfcAgent::sharingSelectionRequested, this,
            [&](const QString &, const QVariant &value) { info = value; });
    daemon->select("selection", agent->path(), handover(QStringLiteral("a")));
    QTRY_VERIFY(info.isValid());
    agent->cancelSharing(info);
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("selection: ") + canceled});
}

void TestNfcAgent::rejectedDeviceMayBeWhatIsSharedWith()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::sharingSelectionRequested);
    daemon->select("selection", agent->path(), target);
    QTRY_COMPARE(requested.count(), 1);
    agent->rejectDevice(QDBusObjectPath(target));
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("selection: ") + rejected});
}

void TestNfcAgent::sharingIsMatchedByContent()
{
    QVariantList infos;
    connect(agent.get(), &NfcAgent::sharingSelectionRequested, this,
            [&](const QString &, const QVariant &value) { infos.append(value); });
    daemon->select("first", agent->path(), handover(QStringLiteral("a")));
    daemon->select("second", agent->path(), handover(QStringLiteral("b")));
    QTRY_COMPARE(infos.size(), 2);

    agent->rejectSharing(infos.at(1));
    QTest::ignoreMessage(QtWarningMsg, "No request for agent request type 4");
    agent->acceptSharing(infos.at(1));
    agent->acceptSharing(infos.at(0));
    QTRY_COMPARE(daemon->answers,
                 (QStringList{QStringLiteral("second: ") + rejected, QStringLiteral("first: granted")}));
}

void TestNfcAgent::sharingInfoMatchesAfterTheClientReadIt()
{
    QVariant info;
    connect(agent.get(), &NfcAgent::sharingSelectionRequested, this,
            [&](const QString &, const QVariant &value) { info = value; });
    daemon->select("selection", agent->path(), handover(QStringLiteral("oob")));
    QTRY_VERIFY(info.isValid());

    const auto argument = info.value<QDBusArgument>();
    QDBusObjectPath device;
    QString text;
    argument.beginStructure();
    argument >> device >> text;
    argument.endStructure();
    QCOMPARE(text, QStringLiteral("oob"));

    agent->acceptSharing(info);
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("selection: granted")});
}

void TestNfcAgent::everyTypeOfInfoIsFoundAgain_data()
{
    QTest::addColumn<QVariant>("info");
    QTest::newRow("string") << QVariant(QStringLiteral("key"));
    QTest::newRow("byte array") << QVariant(QByteArray("\0key", 4));
    QTest::newRow("structure") << handover(QStringLiteral("oob"));
    QTest::newRow("dictionary") << QVariant(
        QVariantMap{{QStringLiteral("key"), handover(QStringLiteral("oob"))}});
    QTest::newRow("variant") << variant(handover(QStringLiteral("oob")));
    QTest::newRow("NaN") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("object path") << path(target);
}

void TestNfcAgent::everyTypeOfInfoIsFoundAgain()
{
    QFETCH(QVariant, info);
    QVariant received;
    connect(agent.get(), &NfcAgent::sharingPermissionRequested, this,
            [&](const QString &, const QVariant &value) { received = value; });
    // Another request in front, to be passed over.
    daemon->select("other", agent->path(), handover(QStringLiteral("other")));
    daemon->call("permission", agent->path(), "RequestSharingPermission",
                 {QStringLiteral("bluetooth"), variant(info), QStringList()});
    QTRY_VERIFY(received.isValid());
    agent->acceptSharing(received);
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("permission: granted")});
}

void TestNfcAgent::invalidInfoAnswersNothing()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::sharingSelectionRequested);
    daemon->select("selection", agent->path(), QString());
    QTRY_COMPARE(requested.count(), 1);
    QTest::ignoreMessage(QtWarningMsg, "No request for agent request type 4");
    agent->acceptSharing(QVariant());
    daemon->call("release", agent->path(), "Release");
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("release: granted")});
}

void TestNfcAgent::deletedAgentCancelsOldestFirst()
{
    const QSignalSpy last(agent.get(), &NfcAgent::sharingSelectionRequested);
    daemon->pair("first", agent->path());
    daemon->connectTo("second", agent->path());
    daemon->select("third", agent->path(), handover(QStringLiteral("oob")));
    QTRY_COMPARE(last.count(), 1);

    agent.reset();
    QTRY_COMPARE(daemon->answers,
                 (QStringList{QStringLiteral("first: ") + canceled, QStringLiteral("second: ") + canceled,
                              QStringLiteral("third: ") + canceled}));
}

void TestNfcAgent::cancellationKeepsItsOrderAroundAnAnswer()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("first", agent->path());
    daemon->pair("second", agent->path(), otherTarget);
    daemon->pair("third", agent->path());
    daemon->pair("fourth", agent->path(), otherTarget);
    QTRY_COMPARE(requested.count(), 4);

    agent->btPairingRequestGranted(QDBusObjectPath(otherTarget));
    agent.reset();
    QTRY_COMPARE(daemon->answers,
                 (QStringList{QStringLiteral("second: granted"), QStringLiteral("first: ") + canceled,
                              QStringLiteral("third: ") + canceled, QStringLiteral("fourth: ") + canceled}));
}

void TestNfcAgent::everyRequestOfManyIsFoundByItsTarget()
{
    constexpr int many = 200;
    const auto device = [](int number) { return QStringLiteral("/com/tavix/nfc/device%1").arg(number); };
    const QSignalSpy paired(agent.get(), &NfcAgent::btPairingRequested);
    const QSignalSpy connected(agent.get(), &NfcAgent::btConnectionRequested);
    QStringList expected;
    for (int i = 0; i < many; ++i) {
        daemon->pair(qPrintable(QStringLiteral("pairing %1").arg(i)), agent->path(), device(i));
        daemon->connectTo(qPrintable(QStringLiteral("connection %1").arg(i)), agent->path(), device(i));
    }
    QTRY_COMPARE(paired.count() + connected.count(), 2 * many);

    for (int i = many - 1; i >= 0; --i) {
        agent->btConnectionRequestGranted(QDBusObjectPath(device(i)));
        expected << QStringLiteral("connection %1: granted").arg(i);
    }
    for (int i = 0; i < many; ++i) {
        agent->rejectDevice(QDBusObjectPath(device(i)));
        expected << QStringLiteral("pairing %1: ").arg(i) + rejected;
    }
    QTRY_COMPARE(daemon->answers, expected);
}

void TestNfcAgent::agentDeletedWithItsParentCancels()
{
    auto parent = std::make_unique<QObject>();
    auto *child = new NfcAgent(parent.get());
    const QSignalSpy requested(child, &NfcAgent::btPairingRequested);
    daemon->pair("pairing", child->path());
    QTRY_COMPARE(requested.count(), 1);
    parent.reset();
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: ") + canceled});
}

void TestNfcAgent::cancellationEndsWhateverTheKeys()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::sharingSelectionRequested);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    daemon->select("NaN", agent->path(), nan);
    daemon->select("structure", agent->path(), handover(QStringLiteral("oob")));
    daemon->select("NaN again", agent->path(), nan);
    daemon->select("variant", agent->path(), variant(nan));
    QTRY_COMPARE(requested.count(), 4);
    agent.reset();
    QTRY_COMPARE(
        daemon->answers,
        (QStringList{QStringLiteral("NaN: ") + canceled, QStringLiteral("structure: ") + canceled,
                     QStringLiteral("NaN again: ") + canceled, QStringLiteral("variant: ") + canceled}));
}

void TestNfcAgent::agentAnswersForItsOwnRequestsOnly()
{
    auto other = std::make_unique<NfcAgent>();
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    const QSignalSpy requestedOther(other.get(), &NfcAgent::btPairingRequested);
    daemon->pair("agent", agent->path());
    daemon->pair("other", other->path());
    QTRY_COMPARE(requested.count() + requestedOther.count(), 2);

    other.reset();
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("other: ") + canceled});
    agent->btPairingRequestGranted(QDBusObjectPath(target));
    QTRY_COMPARE(daemon->answers.value(1), QStringLiteral("agent: granted"));
}

void TestNfcAgent::agentLeavesTheBusWhenDeleted()
{
    const QString path = agent->path();
    agent.reset();
    daemon->pair("pairing", path);
    QTRY_COMPARE(daemon->answers.size(), 1);
    QVERIFY2(
        daemon->answers.at(0).startsWith(QLatin1String("pairing: org.freedesktop.DBus.Error.UnknownObject")),
        qPrintable(daemon->answers.at(0)));
}

void TestNfcAgent::callOnItsWayToADeletedAgentIsAnswered()
{
    daemon->pair("pairing", agent->path());
    // The bus answers in order: the call has reached this process, but no event loop has run since.
    QVERIFY(QDBusReply<QString>(daemon->bus.call(QDBusMessage::createMethodCall(
                                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"))))
                .isValid());
    QVERIFY(QDBusReply<QString>(QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
                                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"))))
                .isValid());
    agent.reset();
    QTRY_COMPARE(daemon->answers.size(), 1);
    QVERIFY2(
        daemon->answers.at(0).startsWith(QLatin1String("pairing: org.freedesktop.DBus.Error.UnknownObject")),
        qPrintable(daemon->answers.at(0)));
}

// The methods that end in a signal, the delayed ones first.
// Returns when what the bus has sent so far has reached this program.
void TestNfcAgent::finishDelivery()
{
    QVERIFY(QDBusConnection::systemBus().interface()->isServiceRegistered(
        QDBusConnection::systemBus().baseService()));
}

void TestNfcAgent::addRequests() const
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<bool>("delayed");
    for (const char *method :
         {"RequestBTPairing", "RequestBTConnection", "RequestBTDisconnection", "RequestNDEFDataDelivery",
          "RequestSharingPermission", "RequestSharingSelection"})
        QTest::newRow(method) << QByteArray(method) << true;
    for (const char *method : {"Release", "NotifyTouch"})
        QTest::newRow(method) << QByteArray(method) << false;
}

QVariantList TestNfcAgent::arguments(const QByteArray &method) const
{
    const QVariantList device = {path(target), QString(), QString(), 0U};
    if (method == "RequestBTPairing")
        return device + QVariantList{QString()};
    if (method == "RequestBTConnection" || method == "RequestBTDisconnection")
        return device;
    if (method == "RequestNDEFDataDelivery")
        return {marshalled({NdefMessageHandler(QString(), QString(), QString(), QDBusObjectPath(target))}),
                path(target), QByteArray()};
    if (method == "RequestSharingPermission")
        return {QStringLiteral("bluetooth"), variant(handover(QString())), QStringList()};
    if (method == "RequestSharingSelection")
        return {QStringLiteral("bluetooth"), variant(handover(QString()))};
    if (method == "NotifyTouch")
        return {path(target), QStringLiteral("ok")};
    return {};
}

void TestNfcAgent::connectAll(NfcAgent *agent, const std::function<void()> &slot)
{
    connect(agent, &NfcAgent::release, this, slot);
    connect(agent, &NfcAgent::btPairingRequested, this, slot);
    connect(agent, &NfcAgent::btConnectionRequested, this, slot);
    connect(agent, &NfcAgent::btDisconnectionRequested, this, slot);
    connect(agent, &NfcAgent::dataDeliveryRequested, this, slot);
    connect(agent, &NfcAgent::sharingPermissionRequested, this, slot);
    connect(agent, &NfcAgent::sharingSelectionRequested, this, slot);
    connect(agent, &NfcAgent::notifyTouch, this, slot);
}

void TestNfcAgent::slotMayAnswerAtOnce_data()
{
    addRequests();
}

void TestNfcAgent::slotMayAnswerAtOnce()
{
    QFETCH(QByteArray, method);
    const QDBusObjectPath tag(target);
    connect(
        agent.get(), &NfcAgent::btPairingRequested, this, [&] { agent->btPairingRequestGranted(tag); });
    connect(
        agent.get(), &NfcAgent::btConnectionRequested, this, [&] { agent->btConnectionRequestGranted(tag); });
    connect(
        agent.get(), &NfcAgent::btDisconnectionRequested, this,
        [&] { agent->btDisconnectionRequestGranted(tag); });
    connect(
        agent.get(), &NfcAgent::dataDeliveryRequested, this, [&] { agent->dataDeliveryGranted(tag); });
    connect(
        agent.get(), &NfcAgent::sharingPermissionRequested, this,
        [&](const QString &, const QVariant &info) { agent->acceptSharing(info); });
    connect(agent.get(), &NfcAgent::sharingSelectionRequested, this,
            [&](const QString &, const QVariant &info) { agent->acceptSharing(info); });
    daemon->call("call", agent->path(), method.constData(), arguments(method));
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("call: granted")});
}

void TestNfcAgent::slotMayDeleteTheAgent_data()
{
    addRequests();
}

void TestNfcAgent::slotMayDeleteTheAgent()
{
    QFETCH(QByteArray, method);
    QFETCH(bool, delayed);
    const QString path = agent->path();
    connectAll(agent.get(), [this] { agent.reset(); });
    daemon->call("call", path, method.constData(), arguments(method));
    daemon->call("next", path, "Release");
    QTRY_COMPARE(daemon->answers.size(), 2);
    // The error comes from the bus connection's own thread and may overtake.
    daemon->answers.sort();
    QCOMPARE(daemon->answers.at(0),
             QStringLiteral("call: ") + (delayed ? canceled : QStringLiteral("granted")));
    QVERIFY2(
        daemon->answers.at(1).startsWith(QLatin1String("next: org.freedesktop.DBus.Error.UnknownObject")),
        qPrintable(daemon->answers.at(1)));
}

void TestNfcAgent::slotMayWaitWhileTheAgentIsDeleted()
{
    connect(agent.get(), &NfcAgent::btPairingRequested, this, [this] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [this, &loop] {
            agent.reset();
            loop.quit();
        });
        loop.exec();
    });
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: ") + canceled});
}

void TestNfcAgent::callerThatIsGoneIsAnsweredQuietly()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    const QSignalSpy connected(agent.get(), &NfcAgent::btConnectionRequested);
    {
        Daemon gone(QStringLiteral("gone"));
        gone.pair("pairing", agent->path());
        gone.pair("another pairing", agent->path());
        gone.connectTo("connection", agent->path());
        QTRY_COMPARE(connected.count(), 1);
    }
    agent->btPairingRequestGranted(QDBusObjectPath(target));
    agent->rejectDevice(QDBusObjectPath(target));
    daemon->pair("pairing", agent->path());
    QTRY_COMPARE(requested.count(), 3);
    agent.reset();
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("pairing: ") + canceled});
}

void TestNfcAgent::callThatExpectsNoReplyBecomesARequest()
{
    const QSignalSpy requested(agent.get(), &NfcAgent::btConnectionRequested);
    const QVariantList device = {path(target), QString(), QString(), 0U};
    QVERIFY(daemon->bus.send(daemon->message(agent->path(), "RequestBTConnection", device)));
    QTRY_COMPARE(requested.count(), 1);
    agent->btConnectionRequestGranted(QDBusObjectPath(target));
    daemon->call("release", agent->path(), "Release");
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("release: granted")});
}

void TestNfcAgent::wrongSignatureIsAnErrorAndChangesNothing_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QVariantList>("arguments");
    const QVariant tag = path(target);
    const QString text;
    QTest::newRow("pairing without arguments") << QByteArray("RequestBTPairing") << QVariantList{};
    QTest::newRow("pairing without pin")
        << QByteArray("RequestBTPairing") << QVariantList{tag, text, text, 0U};
    QTest::newRow("pairing with a signed class")
        << QByteArray("RequestBTPairing") << QVariantList{tag, text, text, 0, text};
    QTest::newRow("pairing with a target that is text")
        << QByteArray("RequestBTPairing") << QVariantList{target, text, text, 0U, text};
    QTest::newRow("pairing with one argument more")
        << QByteArray("RequestBTPairing") << QVariantList{tag, text, text, 0U, text, text};
    QTest::newRow("connection with a pin")
        << QByteArray("RequestBTConnection") << QVariantList{tag, text, text, 0U, text};
    QTest::newRow("disconnection with a pin")
        << QByteArray("RequestBTDisconnection") << QVariantList{tag, text, text, 0U, text};
    QTest::newRow("delivery to names")
        << QByteArray("RequestNDEFDataDelivery") << QVariantList{QStringList(), tag, QByteArray()};
    QTest::newRow("delivery to a list of records of another form")
        << QByteArray("RequestNDEFDataDelivery") << QVariantList{handover(text), tag, QByteArray()};
    QTest::newRow("delivery of text")
        << QByteArray("RequestNDEFDataDelivery") << QVariantList{marshalled({}), tag, text};
    QTest::newRow("permission with a bare info")
        << QByteArray("RequestSharingPermission") << QVariantList{text, text, QStringList()};
    QTest::newRow("selection with resources")
        << QByteArray("RequestSharingSelection") << QVariantList{text, variant(text), QStringList()};
    QTest::newRow("touch without a status") << QByteArray("NotifyTouch") << QVariantList{tag};
    QTest::newRow("touch with a number") << QByteArray("NotifyTouch") << QVariantList{tag, 0};
    QTest::newRow("touch with one argument more")
        << QByteArray("NotifyTouch") << QVariantList{tag, text, text};
    QTest::newRow("release with an argument") << QByteArray("Release") << QVariantList{text};
    QTest::newRow("unknown method") << QByteArray("RequestCoffee") << QVariantList{};
}

void TestNfcAgent::wrongSignatureIsAnErrorAndChangesNothing()
{
    QFETCH(QByteArray, method);
    QFETCH(QVariantList, arguments);
    int signalled = 0;
    connectAll(agent.get(), [&] { ++signalled; });
    daemon->call("call", agent->path(), method.constData(), arguments);
    QTRY_COMPARE(daemon->answers.size(), 1);
    QVERIFY2(
        daemon->answers.at(0).startsWith(QLatin1String("call: org.freedesktop.DBus.Error.UnknownMethod")),
        qPrintable(daemon->answers.at(0)));
    QCOMPARE(signalled, 0);

    QTest::ignoreMessage(QtWarningMsg, "No request for agent request type 5");
    agent->rejectDevice(QDBusObjectPath(target));
}

void TestNfcAgent::releaseWithAnArgumentIsRefusedWithTheReason()
{
    daemon->call("release", agent->path(), "Release", {QString()});
    QTRY_COMPARE(daemon->answers,
                 QStringList{QStringLiteral("release: org.freedesktop.DBus.Error.UnknownMethod "
                                            "Release takes no arguments")});
}

void TestNfcAgent::strangersMayCallByDefault()
{
    QVERIFY(!agent->isDaemonOnly());
    QVERIFY(daemon->ownName());
    const Daemon stranger(QStringLiteral("stranger"));
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    const QDBusMessage call =
        stranger.message(agent->path(), "RequestBTPairing", arguments("RequestBTPairing"));
    QVERIFY(stranger.bus.send(call));
    QTRY_COMPARE(requested.count(), 1);
}

void TestNfcAgent::daemonOnlyAgentRefusesStrangers_data()
{
    addRequests();
}

void TestNfcAgent::daemonOnlyAgentRefusesStrangers()
{
    QFETCH(QByteArray, method);
    agent->setDaemonOnly(true);
    QVERIFY(agent->isDaemonOnly());
    QVERIFY(agent->property("daemonOnly").toBool());
    QVERIFY(daemon->ownName());
    int calls = 0;
    connectAll(agent.get(), [&calls] { ++calls; });

    Daemon stranger(QStringLiteral("stranger"));
    stranger.call("stranger", agent->path(), method.constData(), arguments(method));
    QTRY_COMPARE(stranger.answers, QStringList{QStringLiteral("stranger: ") + denied});
    QCOMPARE(calls, 0);

    daemon->call("daemon", agent->path(), method.constData(), arguments(method));
    QTRY_COMPARE(calls, 1);
    agent.reset();
    QTRY_COMPARE(daemon->answers.size(), 1);
    QVERIFY(daemon->answers.constFirst() != QStringLiteral("daemon: ") + denied);
    QCOMPARE(stranger.answers.size(), 1);
}

void TestNfcAgent::daemonOnlyAgentAsksNobodyAboutACall()
{
    agent->setDaemonOnly(true);
    QVERIFY(daemon->ownName());
    finishDelivery();
    Daemon stranger(QStringLiteral("stranger"));
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    BusMonitor monitor;
    stranger.pair("stranger", agent->path());
    QTRY_COMPARE(stranger.answers.size(), 1);
    daemon->pair("daemon", agent->path());
    QTRY_COMPARE(requested.count(), 1);
    QCOMPARE(monitor.takeCalls(), QStringList());
}

void TestNfcAgent::daemonOnlyAgentKnowsTheDaemonThatIsThere()
{
    QVERIFY(daemon->ownName());
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    agent->setDaemonOnly(true);
    // As registering the agent does: what the daemon sends comes after its reply.
    finishDelivery();
    daemon->pair("daemon", agent->path());
    QTRY_COMPARE(requested.count(), 1);
}

void TestNfcAgent::daemonOnlyAgentRefusesAllWithoutDaemon()
{
    agent->setDaemonOnly(true);
    daemon->pair("nobody", agent->path());
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("nobody: ") + denied});
}

void TestNfcAgent::daemonOnlyAgentFollowsTheNextDaemon()
{
    QVERIFY(daemon->ownName());
    agent->setDaemonOnly(true);
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    Daemon next(QStringLiteral("next"));
    QVERIFY(daemon->bus.unregisterService(QStringLiteral("com.tavix.nfc")));
    QVERIFY(next.ownName());
    finishDelivery();
    next.pair("next", agent->path());
    QTRY_COMPARE(requested.count(), 1);
    daemon->pair("former", agent->path());
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("former: ") + denied});
    QCOMPARE(requested.count(), 1);
}

void TestNfcAgent::daemonOnlyCanBeSwitchedOff()
{
    agent->setDaemonOnly(true);
    agent->setDaemonOnly(false);
    QVERIFY(!agent->isDaemonOnly());
    const QSignalSpy requested(agent.get(), &NfcAgent::btPairingRequested);
    daemon->pair("anybody", agent->path());
    QTRY_COMPARE(requested.count(), 1);
}

void TestNfcAgent::touchStatusIsMapped_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<int>("result");
    QTest::newRow("ok") << QStringLiteral("ok") << 0;
    QTest::newRow("unsupported") << QStringLiteral("unsupported-tag-type") << 1;
    QTest::newRow("malformed") << QStringLiteral("malformed-content") << 2;
    QTest::newRow("capitals") << QStringLiteral("OK") << 255;
    QTest::newRow("empty") << QString() << 255;
    QTest::newRow("unknown") << QStringLiteral("%s%n K\u00f6pfe") << 255;
}

void TestNfcAgent::touchStatusIsMapped()
{
    QFETCH(QString, status);
    QFETCH(int, result);
    if (result != 0) {
        const QString warning = QStringLiteral("NfcAgent: failed touch status '%1' detected").arg(status);
        QTest::ignoreMessage(QtWarningMsg, warning.toUtf8());
    }
    const QSignalSpy touched(agent.get(), &NfcAgent::notifyTouch);
    daemon->call("touch", agent->path(), "NotifyTouch", {path(target), status});
    QTRY_COMPARE(daemon->answers, QStringList{QStringLiteral("touch: granted")});
    QCOMPARE(touched.count(), 1);
    QCOMPARE(touched.at(0).at(0).value<QDBusObjectPath>().path(), target);
    QCOMPARE(touched.at(0).at(1).toInt(), result);
}

QTEST_GUILESS_MAIN(TestNfcAgent)
#include "tst_nfcagent.moc"
