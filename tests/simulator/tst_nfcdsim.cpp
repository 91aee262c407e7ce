// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
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

using namespace Qt::Literals::StringLiterals;

class TestNfcdSim : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void noteProperty(const QString &name, const QDBusVariant &value)
    {
        news.append(name + u'=' + value.variant().toString());
    }
    void noteStart() { news.append(u"started"_s); }
    void noteCarrier(const QString &carrier) { news.append(u"selected "_s + carrier); }
    void noteCompletion(const QString &carrier, const QDBusVariant &data)
    {
        news.append(u"completed "_s + carrier);
        handoverData = data.variant();
    }
    void noteFailure(const QString &reason) { news.append(u"failed "_s + reason); }

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

    void handoverTellsEveryStep();
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
    QVERIFY(daemon.connectAdapter(u"PropertyChanged"_s, this, SLOT(noteProperty(QString, QDBusVariant))));
    QVERIFY(daemon.connectAdapter(u"HandoverStarted"_s, this, SLOT(noteStart())));
    QVERIFY(daemon.connectAdapter(u"HandoverCarrierSelected"_s, this, SLOT(noteCarrier(QString))));
    QVERIFY(daemon.connectAdapter(u"HandoverCompleted"_s, this, SLOT(noteCompletion(QString, QDBusVariant))));
    QVERIFY(daemon.connectAdapter(u"HandoverFailed"_s, this, SLOT(noteFailure(QString))));
}

void TestNfcdSim::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    news.clear();
    handoverData.clear();
}

void TestNfcdSim::cleanup()
{
    daemon.kill();
}

void TestNfcdSim::managerNamesTheAdapter()
{
    daemon.start();
    const QDBusMessage reply = QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
        u"com.tavix.nfc"_s, u"/"_s, u"com.tavix.nfc.Manager"_s, u"DefaultAdapter"_s));
    QCOMPARE(reply.signature(), u"o"_s);
    QCOMPARE(reply.arguments().constFirst().value<QDBusObjectPath>().path(), u"/com/tavix/nfc/adapter0"_s);
}

void TestNfcdSim::interfacesAreAsPublished_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("com.tavix.nfc.Manager") << u"/"_s;
    QTest::newRow("com.tavix.nfc.Adapter") << u"/com/tavix/nfc/adapter0"_s;
    QTest::newRow("com.tavix.nfc.Transfers") << u"/com/tavix/nfc/adapter0"_s;
    QTest::newRow("com.tavix.nfc.Simulator") << u"/com/tavix/nfc/simulator"_s;
}

void TestNfcdSim::interfacesAreAsPublished()
{
    QFETCH(QString, path);
    const QString interface = QString::fromLatin1(QTest::currentDataTag());
    daemon.start();
    const QDBusMessage reply = QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
        u"com.tavix.nfc"_s, path, u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s));
    QFile file(QStringLiteral(INTERFACES "/%1.xml").arg(interface));
    QVERIFY(file.open(QFile::ReadOnly));
    const QStringList published = Introspection::members(file.readAll(), interface);
    QVERIFY(!published.isEmpty());
    QCOMPARE(Introspection::members(reply.arguments().constFirst().toString().toUtf8(), interface),
             published);
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
    QTest::newRow("unknown option") << QStringList{u"--reader"_s};
    QTest::newRow("no number") << QStringList{u"--handover-step"_s, u"soon"_s};
    QTest::newRow("negative number") << QStringList{u"--handover-step"_s, u"-1"_s};
    QTest::newRow("folder without a name") << QStringList{u"--handlers"_s, QString()};
    QTest::newRow("argument") << QStringList{u"tag"_s};
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
    process.start(QStringLiteral(NFCD_SIM), {u"--help"_s});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().contains("--handlers <folder>"));
}

void TestNfcdSim::busStartsTheDaemon()
{
    daemon.makeActivatable();
    QVERIFY(!daemon.isOnBus());
    const QDBusMessage reply = daemon.callAdapter(u"GetProperties"_s);
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QVERIFY(daemon.isOnBus());
    QCOMPARE(Tap({u"crash"_s}).exitCode(), 0);
    QTRY_VERIFY(!daemon.isOnBus());
}

void TestNfcdSim::daemonLeavesWithItsBus()
{
    PrivateBus bus;
    QProcess process;
    process.setProcessEnvironment(bus.environment(u"DBUS_SYSTEM_BUS_ADDRESS"_s));
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
        const auto reply = daemon.callAdapter(u"GetProperties"_s).arguments().constFirst();
        return qdbus_cast<QVariantMap>(reply);
    };
    QCOMPARE(state(), (QVariantMap{{u"State"_s, u"on"_s}}));

    const QVariant off = QVariant::fromValue(QDBusVariant(u"off"_s));
    QCOMPARE(daemon.callAdapter(u"SetProperty"_s, {u"State"_s, off}).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(state(), (QVariantMap{{u"State"_s, u"off"_s}}));
    QTRY_COMPARE(news, QStringList{u"State=off"_s});
}

void TestNfcdSim::sameStateIsNotAnnounced()
{
    daemon.start();
    const auto set = [this](const QString &state) {
        return daemon.callAdapter(u"SetProperty"_s, {u"State"_s, QVariant::fromValue(QDBusVariant(state))});
    };
    QCOMPARE(set(u"on"_s).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(set(u"off"_s).type(), QDBusMessage::ReplyMessage);
    QTRY_COMPARE(news, QStringList{u"State=off"_s});
}

void TestNfcdSim::otherPropertiesAndStatesAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("other property") << u"Name"_s << u"on"_s;
    QTest::newRow("other state") << u"State"_s << u"On"_s;
    QTest::newRow("no state") << u"State"_s << QString();
}

void TestNfcdSim::otherPropertiesAndStatesAreRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    daemon.start();
    const QDBusMessage reply =
        daemon.callAdapter(u"SetProperty"_s, {name, QVariant::fromValue(QDBusVariant(value))});
    QCOMPARE(reply.errorName(), u"com.tavix.nfc.Error.InvalidArguments"_s);
}

void TestNfcdSim::onlyOneAgentIsRegistered()
{
    daemon.start();
    AgentProcess first;
    AgentProcess second(u"org.connui.test.SecondClient"_s);
    QCOMPARE(first.registerAgent().error, QString());
    QCOMPARE(second.registerAgent().error, u"com.tavix.nfc.Error.AlreadyExists"_s);
    QCOMPARE(Tap({u"malformed"_s}).exitCode(), 0);
    QCOMPARE(first.members(), QStringList{u"NotifyTouch"_s});
    QCOMPARE(second.members(), QStringList());
}

void TestNfcdSim::sameAgentMayRegisterAgain()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(client.registerAgent(u"/test/other"_s).error, u"com.tavix.nfc.Error.AlreadyExists"_s);
}

void TestNfcdSim::strangerCannotUnregister()
{
    daemon.start();
    AgentProcess client;
    AgentProcess stranger(u"org.connui.test.Stranger"_s);
    QCOMPARE(client.registerAgent().error, QString());
    stranger.unregisterAgent();
    QCOMPARE(Tap({u"malformed"_s}).exitCode(), 0);
    QCOMPARE(client.members(), QStringList{u"NotifyTouch"_s});
}

void TestNfcdSim::unregisteredAgentIsNotAsked()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(client.unregisterAgent().error, QString());
    QCOMPARE(Tap({u"malformed"_s}).exitCode(), 3);
    QCOMPARE(client.members(), QStringList());
}

void TestNfcdSim::agentOfALeavingProcessIsDropped()
{
    daemon.start();
    AgentProcess first;
    QCOMPARE(first.registerAgent().error, QString());
    first.kill();
    AgentProcess second(u"org.connui.test.SecondClient"_s);
    QCOMPARE(second.registerAgent().error, QString());
}

// It leaves while the daemon reads nothing, as one that does not wait for its reply may.
void TestNfcdSim::agentOfAProcessThatHasLeftIsDropped()
{
    daemon.start();
    QCOMPARE(Tap({u"hang"_s, u"1"_s}).exitCode(), 0);
    QCOMPARE(QProcess::execute(u"dbus-send"_s,
                               {u"--system"_s, u"--type=method_call"_s, u"--dest=com.tavix.nfc"_s,
                                u"/com/tavix/nfc/adapter0"_s, u"com.tavix.nfc.Adapter.RegisterUIAgent"_s,
                                u"objpath:/test/agent"_s}),
             0);
    AgentProcess client;
    const auto isRegistered = [&client] { return client.registerAgent().error.isEmpty(); };
    QVERIFY(QTest::qWaitFor(isRegistered, 30000));
}

void TestNfcdSim::openTapsOfALeavingProcessAreCanceled()
{
    daemon.start();
    AgentProcess client;
    client.hold(u"RequestNDEFDataDelivery"_s);
    client.hold(u"RequestSharingSelection"_s);
    QCOMPARE(client.registerAgent().error, QString());
    Tap tag({u"text"_s, u"Hello"_s});
    Tap phone({u"share-selection"_s});
    // Each touch is announced before its request.
    QTRY_COMPARE(client.members().size(), 4);
    client.kill();
    QCOMPARE(tag.exitCode(), 2);
    QCOMPARE(phone.exitCode(), 2);
}

void TestNfcdSim::handlerFolderMayComeLater()
{
    QDir folder(qEnvironmentVariable("XDG_DATA_HOME") + u"/connui-nfc/handlers"_s);
    QVERIFY(!folder.exists());
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QVERIFY(folder.mkpath(u"."_s));
    const auto clean = qScopeGuard([&folder] { folder.removeRecursively(); });
    QFile file(folder.filePath(u"late.handler"_s));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("[Handler]\nApplicationId=late\nService=org.connui.Late\nPath=/late\nTakes=*\n");
    file.close();

    QCOMPARE(Tap({u"text"_s, u"hello"_s}).exitCode(), 0);
    const QList<FakeCall> calls = client.calls(u"RequestNDEFDataDelivery"_s);
    QCOMPARE(calls.size(), 1);
    const auto handlers = qdbus_cast<QList<Handler>>(calls.constFirst().arguments.constFirst());
    QCOMPARE(handlers.size(), 1);
    QCOMPARE(handlers.constFirst().applicationId, u"late"_s);
}

void TestNfcdSim::handoverTellsEveryStep()
{
    daemon.start({u"--handover-step"_s, u"1"_s});
    AgentProcess requestor;
    const QVariant path = QVariant::fromValue(QDBusObjectPath(u"/test/requestor"_s));
    QCOMPARE(requestor.callAdapter(u"RequestHandover"_s, {path, u"bluetooth"_s, u"send"_s}).error, QString());
    QTRY_COMPARE(news, (QStringList{u"started"_s, u"selected bluetooth"_s, u"completed bluetooth"_s}));
    QTRY_COMPARE(requestor.members(),
                 (QStringList{u"HandoverStarted"_s, u"HandoverCarrierSelected"_s, u"HandoverCompleted"_s}));
    for (const FakeCall &call : requestor.calls()) {
        QCOMPARE(call.path, u"/test/requestor"_s);
        QCOMPARE(call.interface, u"com.tavix.nfc.HandoverRequestor"_s);
    }
    QCOMPARE(requestor.calls(u"HandoverCompleted"_s).constFirst().signature, u"sv"_s);
}

void TestNfcdSim::handoverDataNamesThePeer()
{
    daemon.start({u"--handover-step"_s, u"1"_s});
    QCOMPARE(Tap({u"handover"_s, u"bluetooth"_s}).exitCode(), 0);
    QTRY_COMPARE(news.size(), 3);
    const auto data = handoverData.value<QDBusArgument>();
    QCOMPARE(data.currentSignature(), u"(os)"_s);
    QDBusObjectPath path;
    QString address;
    data.beginStructure();
    data >> path >> address;
    data.endStructure();
    QCOMPARE(path.path(), u"/com/tavix/nfc/device/dev_00_1A_7D_DA_71_13"_s);
    QCOMPARE(address, u"00:1A:7D:DA:71:13"_s);
}

void TestNfcdSim::canceledHandoverFails()
{
    daemon.start({u"--handover-step"_s, u"3600000"_s});
    AgentProcess requestor;
    const QVariant path = QVariant::fromValue(QDBusObjectPath(u"/test/requestor"_s));
    QCOMPARE(requestor.callAdapter(u"CancelHandoverRequest"_s, {u"bluetooth"_s}).error,
             u"com.tavix.nfc.Error.NoHandover"_s);
    QCOMPARE(requestor.callAdapter(u"RequestHandover"_s, {path, u"bluetooth"_s, QString()}).error, QString());
    QCOMPARE(requestor.callAdapter(u"CancelHandoverRequest"_s, {u"wifi"_s}).error,
             u"com.tavix.nfc.Error.NoHandover"_s);
    QCOMPARE(news, QStringList());
    QCOMPARE(requestor.callAdapter(u"CancelHandoverRequest"_s, {u"bluetooth"_s}).error, QString());
    QTRY_COMPARE(news, QStringList{u"failed Canceled"_s});
    QTRY_COMPARE(requestor.members(), QStringList{u"HandoverFailed"_s});
    // And leaves room for another.
    QCOMPARE(requestor.callAdapter(u"RequestHandover"_s, {path, u"bluetooth"_s, QString()}).error, QString());
}

void TestNfcdSim::switchingOffFailsTheHandover()
{
    daemon.start({u"--handover-step"_s, u"3600000"_s});
    const QVariant path = QVariant::fromValue(QDBusObjectPath(u"/test/requestor"_s));
    QCOMPARE(daemon.callAdapter(u"RequestHandover"_s, {path, u"bluetooth"_s, QString()}).type(),
             QDBusMessage::ReplyMessage);
    QCOMPARE(Tap({u"power"_s, u"off"_s}).exitCode(), 0);
    QTRY_COMPARE(news, (QStringList{u"State=off"_s, u"failed The adapter was switched off"_s}));
    const QDBusMessage refusal = daemon.callAdapter(u"RequestHandover"_s, {path, u"bluetooth"_s, QString()});
    QCOMPARE(refusal.errorMessage(), u"The adapter is switched off"_s);
}

void TestNfcdSim::impossibleHandoverIsRefused()
{
    daemon.start({u"--handover-step"_s, u"3600000"_s});
    const QVariant path = QVariant::fromValue(QDBusObjectPath(u"/test/requestor"_s));
    const auto request = [this, path](const QString &carrier) {
        return daemon.callAdapter(u"RequestHandover"_s, {path, carrier, QString()});
    };
    QCOMPARE(request(u"pigeon"_s).errorName(), u"com.tavix.nfc.Error.HandoverRefused"_s);
    QCOMPARE(request(u"pigeon"_s).errorMessage(), u"No carrier named 'pigeon'"_s);
    QCOMPARE(request(u"bluetooth"_s).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(request(u"bluetooth"_s).errorMessage(), u"Another handover is in progress"_s);
}

QTEST_GUILESS_MAIN(TestNfcdSim)
#include "tst_nfcdsim.moc"
