// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

#include "agentprocess.h"
#include "daemon/handler.h"
#include "introspection.h"
#include "privatebus.h"
#include "simulateddaemon.h"
#include "tap.h"

class TestNfcdSim : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void noteProperty(const QString &name, const QDBusVariant &value)
    {
        news.append(name + u'=' + value.variant().toString());
    }
    void noteStart() { news.append(QStringLiteral("started")); }
    void noteCarrier(const QString &carrier) { news.append(QStringLiteral("selected ") + carrier); }
    void noteCompletion(const QString &carrier, const QDBusVariant &data)
    {
        news.append(QStringLiteral("completed ") + carrier);
        handoverData = data.variant();
    }
    void noteFailure(const QString &reason) { news.append(QStringLiteral("failed ") + reason); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void managerNamesTheAdapter();
    void interfacesAreAsPublished_data();
    void interfacesAreAsPublished();
    void secondDaemonLeaves();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void helpIsPrinted();
    void busStartsTheDaemon();
    void daemonLeavesWithItsBus();

    void stateIsSetAndAnnounced();
    void sameStateIsNotAnnounced();
    void otherPropertiesAndStatesAreRefused_data();
    void otherPropertiesAndStatesAreRefused();

    void onlyOneAgentIsRegistered();
    void sameAgentMayRegisterAgain();
    void strangerCannotUnregister();
    void unregisteredAgentIsNotAsked();
    void agentOfALeavingProcessIsDropped();
    void agentOfAProcessThatHasLeftIsDropped();
    void openTapsOfALeavingProcessAreCanceled();
    void handlerFolderMayComeLater();

    void everyStepOfAHandoverIsReported();
    void handoverDataNamesThePeer();
    void canceledHandoverFails();
    void switchingOffFailsTheHandover();
    void impossibleHandoverIsRefused();

private:
    SimulatedDaemon daemon;
    QStringList news;
    QVariant handoverData;
};

void TestNfcdSim::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
    qRegisterMetaType<QDBusVariant>();
    QVERIFY(daemon.connectAdapter(QStringLiteral("PropertyChanged"), this,
                                  SLOT(noteProperty(QString, QDBusVariant))));
    QVERIFY(daemon.connectAdapter(QStringLiteral("HandoverStarted"), this, SLOT(noteStart())));
    QVERIFY(
        daemon.connectAdapter(QStringLiteral("HandoverCarrierSelected"), this, SLOT(noteCarrier(QString))));
    QVERIFY(daemon.connectAdapter(QStringLiteral("HandoverCompleted"), this,
                                  SLOT(noteCompletion(QString, QDBusVariant))));
    QVERIFY(daemon.connectAdapter(QStringLiteral("HandoverFailed"), this, SLOT(noteFailure(QString))));
}

void TestNfcdSim::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    news.clear();
    handoverData.clear();
}

void TestNfcdSim::cleanup()
{
    daemon.kill();
    // Its last words, about a handover whose requestor has left, are not the next one's news.
    QCoreApplication::processEvents();
}

void TestNfcdSim::managerNamesTheAdapter()
{
    daemon.start();
    const QDBusMessage reply = QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
        QStringLiteral("com.tavix.nfc"), QStringLiteral("/"), QStringLiteral("com.tavix.nfc.Manager"),
        QStringLiteral("DefaultAdapter")));
    QCOMPARE(reply.signature(), QStringLiteral("o"));
    QCOMPARE(reply.arguments().constFirst().value<QDBusObjectPath>().path(),
             QStringLiteral("/com/tavix/nfc/adapter0"));
}

void TestNfcdSim::interfacesAreAsPublished_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("com.tavix.nfc.Manager") << QStringLiteral("/");
    QTest::newRow("com.tavix.nfc.Adapter") << QStringLiteral("/com/tavix/nfc/adapter0");
    QTest::newRow("com.tavix.nfc.Transfers") << QStringLiteral("/com/tavix/nfc/adapter0");
    QTest::newRow("com.tavix.nfc.TagWriter") << QStringLiteral("/com/tavix/nfc/adapter0");
    QTest::newRow("com.tavix.nfc.Simulator") << QStringLiteral("/com/tavix/nfc/simulator");
}

void TestNfcdSim::interfacesAreAsPublished()
{
    QFETCH(QString, path);
    const QString interface = QString::fromLatin1(QTest::currentDataTag());
    daemon.start();
    const QStringList published = Introspection::publishedMembers(interface);
    QVERIFY(!published.isEmpty());
    QCOMPARE(Introspection::daemonMembers(path, interface), published);
}

void TestNfcdSim::secondDaemonLeaves()
{
    daemon.start();
    QProcess second;
    second.start(QStringLiteral(NFCD_SIM), {});
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 1);
    QCOMPARE(second.readAllStandardError(), "nfcd-sim: com.tavix.nfc belongs to another process\n");
}

void TestNfcdSim::badArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--reader")};
    QTest::newRow("no number") << QStringList{QStringLiteral("--handover-step"), QStringLiteral("soon")};
    QTest::newRow("negative number") << QStringList{QStringLiteral("--handover-step"), QStringLiteral("-1")};
    QTest::newRow("folder without a name") << QStringList{QStringLiteral("--handlers"), QString()};
    QTest::newRow("argument") << QStringList{QStringLiteral("tag")};
}

void TestNfcdSim::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    process.start(QStringLiteral(NFCD_SIM), arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 64);
    QVERIFY(process.readAllStandardError().startsWith("nfcd-sim: "));
}

void TestNfcdSim::helpIsPrinted()
{
    QProcess process;
    process.start(QStringLiteral(NFCD_SIM), {QStringLiteral("--help")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().contains("--handlers <folder>"));
}

void TestNfcdSim::busStartsTheDaemon()
{
    daemon.makeActivatable();
    QVERIFY(!daemon.isOnBus());
    const QDBusMessage reply = daemon.callAdapter(QStringLiteral("GetProperties"));
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QVERIFY(daemon.isOnBus());
    QCOMPARE(Tap({QStringLiteral("crash")}).exitCode(), 0);
    QTRY_VERIFY(!daemon.isOnBus());
}

void TestNfcdSim::daemonLeavesWithItsBus()
{
    PrivateBus bus;
    QProcess process;
    process.setProcessEnvironment(bus.environment(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS")));
    process.start(QStringLiteral(NFCD_SIM), {});
    QVERIFY(process.waitForStarted());
    QByteArray said;
    const auto isReady = [&process, &said] {
        return (said += process.readAllStandardError()).contains("ready");
    };
    QVERIFY(QTest::qWaitFor(isReady, 30000));
    bus.end();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
}

void TestNfcdSim::stateIsSetAndAnnounced()
{
    daemon.start();
    const auto state = [this] {
        const auto reply = daemon.callAdapter(QStringLiteral("GetProperties")).arguments().constFirst();
        return qdbus_cast<QVariantMap>(reply);
    };
    QCOMPARE(state(), (QVariantMap{{QStringLiteral("State"), QStringLiteral("on")}}));

    const QVariant off = QVariant::fromValue(QDBusVariant(QStringLiteral("off")));
    QCOMPARE(daemon.callAdapter(QStringLiteral("SetProperty"), {QStringLiteral("State"), off}).type(),
             QDBusMessage::ReplyMessage);
    QCOMPARE(state(), (QVariantMap{{QStringLiteral("State"), QStringLiteral("off")}}));
    QTRY_COMPARE(news, QStringList{QStringLiteral("State=off")});
}

void TestNfcdSim::sameStateIsNotAnnounced()
{
    daemon.start();
    const auto set = [this](const QString &state) {
        return daemon.callAdapter(QStringLiteral("SetProperty"),
                                  {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(state))});
    };
    QCOMPARE(set(QStringLiteral("on")).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(set(QStringLiteral("off")).type(), QDBusMessage::ReplyMessage);
    QTRY_COMPARE(news, QStringList{QStringLiteral("State=off")});
}

void TestNfcdSim::otherPropertiesAndStatesAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("other property") << QStringLiteral("Name") << QStringLiteral("on");
    QTest::newRow("other state") << QStringLiteral("State") << QStringLiteral("On");
    QTest::newRow("no state") << QStringLiteral("State") << QString();
}

void TestNfcdSim::otherPropertiesAndStatesAreRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    daemon.start();
    const QDBusMessage reply =
        daemon.callAdapter(QStringLiteral("SetProperty"), {name, QVariant::fromValue(QDBusVariant(value))});
    QCOMPARE(reply.errorName(), QStringLiteral("com.tavix.nfc.Error.InvalidArguments"));
}

void TestNfcdSim::onlyOneAgentIsRegistered()
{
    daemon.start();
    AgentProcess first;
    AgentProcess second(QStringLiteral("org.connui.test.SecondClient"));
    QCOMPARE(first.registerAgent().error, QString());
    QCOMPARE(second.registerAgent().error, QStringLiteral("com.tavix.nfc.Error.AlreadyExists"));
    QCOMPARE(Tap({QStringLiteral("malformed")}).exitCode(), 0);
    QCOMPARE(first.members(), QStringList{QStringLiteral("NotifyTouch")});
    QCOMPARE(second.members(), QStringList());
}

void TestNfcdSim::sameAgentMayRegisterAgain()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(client.registerAgent(QStringLiteral("/test/other")).error,
             QStringLiteral("com.tavix.nfc.Error.AlreadyExists"));
}

void TestNfcdSim::strangerCannotUnregister()
{
    daemon.start();
    AgentProcess client;
    AgentProcess stranger(QStringLiteral("org.connui.test.Stranger"));
    QCOMPARE(client.registerAgent().error, QString());
    stranger.unregisterAgent();
    QCOMPARE(Tap({QStringLiteral("malformed")}).exitCode(), 0);
    QCOMPARE(client.members(), QStringList{QStringLiteral("NotifyTouch")});
}

void TestNfcdSim::unregisteredAgentIsNotAsked()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(client.unregisterAgent().error, QString());
    QCOMPARE(Tap({QStringLiteral("malformed")}).exitCode(), 3);
    QCOMPARE(client.members(), QStringList());
}

void TestNfcdSim::agentOfALeavingProcessIsDropped()
{
    daemon.start();
    AgentProcess first;
    QCOMPARE(first.registerAgent().error, QString());
    first.kill();
    AgentProcess second(QStringLiteral("org.connui.test.SecondClient"));
    QCOMPARE(second.registerAgent().error, QString());
}

// It leaves while the daemon reads nothing, as one that does not wait for its reply may.
void TestNfcdSim::agentOfAProcessThatHasLeftIsDropped()
{
    daemon.start();
    QCOMPARE(Tap({QStringLiteral("hang"), QStringLiteral("1")}).exitCode(), 0);
    QCOMPARE(
        QProcess::execute(QStringLiteral("dbus-send"),
                          {QStringLiteral("--system"), QStringLiteral("--type=method_call"),
                           QStringLiteral("--dest=com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
                           QStringLiteral("com.tavix.nfc.Adapter.RegisterUIAgent"),
                           QStringLiteral("objpath:/test/agent")}),
        0);
    AgentProcess client;
    const auto isRegistered = [&client] { return client.registerAgent().error.isEmpty(); };
    QVERIFY(QTest::qWaitFor(isRegistered, 30000));
}

void TestNfcdSim::openTapsOfALeavingProcessAreCanceled()
{
    daemon.start();
    AgentProcess client;
    client.hold(QStringLiteral("RequestNDEFDataDelivery"));
    client.hold(QStringLiteral("RequestSharingSelection"));
    QCOMPARE(client.registerAgent().error, QString());
    Tap tag({QStringLiteral("text"), QStringLiteral("Hello")});
    Tap phone({QStringLiteral("share-selection")});
    // Each touch is announced before its request.
    QTRY_COMPARE(client.members().size(), 4);
    client.kill();
    QCOMPARE(tag.exitCode(), 2);
    QCOMPARE(phone.exitCode(), 2);
}

void TestNfcdSim::handlerFolderMayComeLater()
{
    QDir folder(qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/connui-nfc/handlers"));
    QVERIFY(!folder.exists());
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QVERIFY(folder.mkpath(QStringLiteral(".")));
    const auto clean = qScopeGuard([&folder] { folder.removeRecursively(); });
    QFile file(folder.filePath(QStringLiteral("late.handler")));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("[Handler]\nApplicationId=late\nService=org.connui.Late\nPath=/late\nTakes=*\n");
    file.close();

    QCOMPARE(Tap({QStringLiteral("text"), QStringLiteral("hello")}).exitCode(), 0);
    const QList<FakeCall> calls = client.calls(QStringLiteral("RequestNDEFDataDelivery"));
    QCOMPARE(calls.size(), 1);
    const auto handlers = qdbus_cast<QList<Handler>>(calls.constFirst().arguments.constFirst());
    QCOMPARE(handlers.size(), 1);
    QCOMPARE(handlers.constFirst().applicationId, QStringLiteral("late"));
}

void TestNfcdSim::everyStepOfAHandoverIsReported()
{
    daemon.start({QStringLiteral("--handover-step"), QStringLiteral("1")});
    AgentProcess requestor;
    const QVariant path = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/test/requestor")));
    QCOMPARE(requestor
                 .callAdapter(QStringLiteral("RequestHandover"),
                              {path, QStringLiteral("bluetooth"), QStringLiteral("send")})
                 .error,
             QString());
    QTRY_COMPARE(news, (QStringList{QStringLiteral("started"), QStringLiteral("selected bluetooth"),
                                    QStringLiteral("completed bluetooth")}));
    QTRY_COMPARE(requestor.members(),
                 (QStringList{QStringLiteral("HandoverStarted"), QStringLiteral("HandoverCarrierSelected"),
                              QStringLiteral("HandoverCompleted")}));
    for (const FakeCall &call : requestor.calls()) {
        QCOMPARE(call.path, QStringLiteral("/test/requestor"));
        QCOMPARE(call.interface, QStringLiteral("com.tavix.nfc.HandoverRequestor"));
    }
    QCOMPARE(requestor.calls(QStringLiteral("HandoverCompleted")).constFirst().signature,
             QStringLiteral("sv"));
}

void TestNfcdSim::handoverDataNamesThePeer()
{
    daemon.start({QStringLiteral("--handover-step"), QStringLiteral("1")});
    QCOMPARE(Tap({QStringLiteral("handover"), QStringLiteral("bluetooth")}).exitCode(), 0);
    QTRY_COMPARE(news.size(), 3);
    const auto data = handoverData.value<QDBusArgument>();
    QCOMPARE(data.currentSignature(), QStringLiteral("(os)"));
    QDBusObjectPath path;
    QString address;
    data.beginStructure();
    data >> path >> address;
    data.endStructure();
    QCOMPARE(path.path(), QStringLiteral("/com/tavix/nfc/device/dev_00_1A_7D_DA_71_13"));
    QCOMPARE(address, QStringLiteral("00:1A:7D:DA:71:13"));
}

void TestNfcdSim::canceledHandoverFails()
{
    daemon.start({QStringLiteral("--handover-step"), QStringLiteral("3600000")});
    AgentProcess requestor;
    const QVariant path = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/test/requestor")));
    QCOMPARE(
        requestor.callAdapter(QStringLiteral("CancelHandoverRequest"), {QStringLiteral("bluetooth")}).error,
        QStringLiteral("com.tavix.nfc.Error.NoHandover"));
    QCOMPARE(
        requestor
            .callAdapter(QStringLiteral("RequestHandover"), {path, QStringLiteral("bluetooth"), QString()})
            .error,
        QString());
    QCOMPARE(requestor.callAdapter(QStringLiteral("CancelHandoverRequest"), {QStringLiteral("wifi")}).error,
             QStringLiteral("com.tavix.nfc.Error.NoHandover"));
    QCOMPARE(news, QStringList());
    QCOMPARE(
        requestor.callAdapter(QStringLiteral("CancelHandoverRequest"), {QStringLiteral("bluetooth")}).error,
        QString());
    QTRY_COMPARE(news, QStringList{QStringLiteral("failed Canceled")});
    QTRY_COMPARE(requestor.members(), QStringList{QStringLiteral("HandoverFailed")});
    // And leaves room for another.
    QCOMPARE(
        requestor
            .callAdapter(QStringLiteral("RequestHandover"), {path, QStringLiteral("bluetooth"), QString()})
            .error,
        QString());
}

void TestNfcdSim::switchingOffFailsTheHandover()
{
    daemon.start({QStringLiteral("--handover-step"), QStringLiteral("3600000")});
    const QVariant path = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/test/requestor")));
    QCOMPARE(
        daemon.callAdapter(QStringLiteral("RequestHandover"), {path, QStringLiteral("bluetooth"), QString()})
            .type(),
        QDBusMessage::ReplyMessage);
    QCOMPARE(Tap({QStringLiteral("power"), QStringLiteral("off")}).exitCode(), 0);
    QTRY_COMPARE(news, (QStringList{QStringLiteral("State=off"),
                                    QStringLiteral("failed The adapter was switched off")}));
    const QDBusMessage refusal =
        daemon.callAdapter(QStringLiteral("RequestHandover"), {path, QStringLiteral("bluetooth"), QString()});
    QCOMPARE(refusal.errorMessage(), QStringLiteral("The adapter is switched off"));
}

void TestNfcdSim::impossibleHandoverIsRefused()
{
    daemon.start({QStringLiteral("--handover-step"), QStringLiteral("3600000")});
    const QVariant path = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/test/requestor")));
    const auto request = [this, path](const QString &carrier) {
        return daemon.callAdapter(QStringLiteral("RequestHandover"), {path, carrier, QString()});
    };
    QCOMPARE(request(QStringLiteral("pigeon")).errorName(),
             QStringLiteral("com.tavix.nfc.Error.HandoverRefused"));
    QCOMPARE(request(QStringLiteral("pigeon")).errorMessage(), QStringLiteral("No carrier named 'pigeon'"));
    QCOMPARE(request(QStringLiteral("bluetooth")).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(request(QStringLiteral("bluetooth")).errorMessage(),
             QStringLiteral("Another handover is in progress"));
}

QTEST_GUILESS_MAIN(TestNfcdSim)
#include "tst_nfcdsim.moc"
