// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QtTest>
#include <QXmlStreamReader>

namespace {

constexpr uint root = 0;
constexpr uint ordinary = 65534;

const QString daemonName = QStringLiteral("com.tavix.nfc");
const QString agentPath = QStringLiteral("/com/tavix/nfcUIAgent/0");
const QString refused = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied");

// Answers every call at every path, and counts them: what comes through has passed the policy.
class Anything : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return QString(); }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        ++calls;
        return connection.send(message.createReply());
    }

    int calls = 0;
};

// A program on the bus, for as long as the object lives.
class Program
{
public:
    Program(const QProcessEnvironment &environment, const QString &name, const QStringList &arguments)
    {
        process.setProcessEnvironment(environment);
        process.start(name, arguments);
    }

    ~Program()
    {
        process.kill();
        process.waitForFinished();
    }

private:
    QProcess process;
};

// The names of the elements of that kind, "method" or "signal".
QStringList membersOf(const QString &interface, QLatin1String kind)
{
    QFile file(QLatin1String(INTERFACES "/") + interface + QLatin1String(".xml"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("BusPolicy: unable to read %s", qUtf8Printable(file.fileName()));
    QStringList members;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == kind)
            members.append(xml.attributes().value(QLatin1String("name")).toString());
    return members;
}

void addMethods(const QString &interface, const QString &path)
{
    for (const QString &method : membersOf(interface, QLatin1String("method")))
        QTest::newRow(qUtf8Printable(interface + u'.' + method)) << path << interface << method;
}

} // namespace

class TestBusPolicy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void onlyTheDaemonCallsItsClients_data();
    void onlyTheDaemonCallsItsClients();
    void everybodyCallsTheDaemon_data();
    void everybodyCallsTheDaemon();
    void onlyRootCallsTheRestOfTheDaemon_data();
    void onlyRootCallsTheRestOfTheDaemon();
    void onlyRootIsTheDaemon();
    void onlyTheDaemonSendsItsSignals_data();
    void onlyTheDaemonSendsItsSignals();
    void daemonDecidesAboutItsCallers_data();
    void daemonDecidesAboutItsCallers();

public Q_SLOTS:
    void noteSignal(const QDBusMessage &message) { received.append(message.member()); }

private:
    QString callAs(uint user, const QStringList &action) const;
    QString call(uint user, const QString &service, const QString &path, const QString &interface,
                 const QString &method) const;

    QTemporaryDir folder;
    QProcess bus;
    QString address;
    Anything anything;
    QString client;
    QStringList received;
};

void TestBusPolicy::initTestCase()
{
    // Nor can root of a namespace that knows no other user.
    if (geteuid() != root || callAs(ordinary, {}) == QLatin1String("cannot become that user"))
        QSKIP("Only root can try the bus policy: it takes calls of several users");

    QFile from(QStringLiteral(BUS_CONFIGURATION));
    QVERIFY(from.open(QIODevice::ReadOnly));
    QString configuration = QString::fromUtf8(from.readAll());
    configuration.replace(QStringLiteral("@FOLDER@"), folder.path());
    configuration.replace(QStringLiteral("@POLICY@"), QLatin1String(INTERFACES "/com.tavix.nfc.conf"));
    QFile to(folder.filePath(QStringLiteral("bus.conf")));
    QVERIFY(to.open(QIODevice::WriteOnly) && to.write(configuration.toUtf8()) > 0);
    to.close();
    // Other users reach the socket in it.
    QVERIFY(QFile::setPermissions(folder.path(), QFile::Permissions(0x5755)));

    // It reports every refusal.
    bus.setStandardErrorFile(QProcess::nullDevice());
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"), QStringLiteral("--print-address"),
               QStringLiteral("--config-file=%1").arg(to.fileName())});
    QVERIFY(bus.waitForReadyRead(-1));
    address = QString::fromUtf8(bus.readLine()).trimmed();

    QDBusConnection daemon = QDBusConnection::connectToBus(address, QStringLiteral("daemon"));
    QVERIFY(daemon.registerVirtualObject(QStringLiteral("/"), &anything, QDBusConnection::SubPath));
    QVERIFY(daemon.registerService(daemonName));
    QDBusConnection client = QDBusConnection::connectToBus(address, QStringLiteral("client"));
    QVERIFY(client.registerVirtualObject(QStringLiteral("/"), &anything, QDBusConnection::SubPath));
    this->client = client.baseService();
    // From whomever.
    for (const QString &interface :
         {QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("com.tavix.nfc.Transfers"),
          QStringLiteral("org.connui.test.Mark")})
        QVERIFY(client.connect(QString(), QStringLiteral("/adapter"), interface, QString(), this,
                               SLOT(noteSignal(QDBusMessage))));
}

void TestBusPolicy::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(QStringLiteral("daemon"));
    QDBusConnection::disconnectFromBus(QStringLiteral("client"));
    bus.terminate();
    bus.waitForFinished(-1);
}

void TestBusPolicy::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    anything.calls = 0;
    received.clear();
}

// The outcome of the action: "done", or the name of an error.
QString TestBusPolicy::callAs(uint user, const QStringList &action) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(QStringLiteral(CALL_AS), QStringList{QString::number(user), address} + action);
    // The daemon and the client of this process answer meanwhile.
    while (finished.isEmpty() && process.state() != QProcess::NotRunning)
        finished.wait();
    return QString::fromUtf8(process.readAll()).trimmed();
}

QString TestBusPolicy::call(uint user, const QString &service, const QString &path, const QString &interface,
                            const QString &method) const
{
    return callAs(user, {QStringLiteral("call"), service, path, interface, method});
}

void TestBusPolicy::onlyTheDaemonCallsItsClients_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("method");
    addMethods(QStringLiteral("com.tavix.nfc.UIAgent"), agentPath);
    addMethods(QStringLiteral("com.tavix.nfc.HandoverRequestor"),
               QStringLiteral("/com/tavix/nfcHandoverRequestor"));
}

void TestBusPolicy::onlyTheDaemonCallsItsClients()
{
    QFETCH(QString, path);
    QFETCH(QString, interface);
    QFETCH(QString, method);
    QCOMPARE(call(ordinary, client, path, interface, method), refused);
    QCOMPARE(call(ordinary, client, path, QString(), method), refused);
    QCOMPARE(anything.calls, 0);
    QCOMPARE(call(root, client, path, interface, method), QStringLiteral("done"));
    QCOMPARE(anything.calls, 1);
}

void TestBusPolicy::everybodyCallsTheDaemon_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("method");
    addMethods(QStringLiteral("com.tavix.nfc.Manager"), QStringLiteral("/"));
    addMethods(QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("/adapter"));
    addMethods(QStringLiteral("com.tavix.nfc.Transfers"), QStringLiteral("/adapter"));
    addMethods(QStringLiteral("com.tavix.nfc.TagWriter"), QStringLiteral("/adapter"));
    QTest::newRow("Introspect") << QStringLiteral("/")
                                << QStringLiteral("org.freedesktop.DBus.Introspectable")
                                << QStringLiteral("Introspect");
    QTest::newRow("Ping") << QStringLiteral("/") << QStringLiteral("org.freedesktop.DBus.Peer")
                          << QStringLiteral("Ping");
    QTest::newRow("Get") << QStringLiteral("/") << QStringLiteral("org.freedesktop.DBus.Properties")
                         << QStringLiteral("Get");
}

void TestBusPolicy::everybodyCallsTheDaemon()
{
    QFETCH(QString, path);
    QFETCH(QString, interface);
    QFETCH(QString, method);
    for (const uint user : {root, ordinary})
        QCOMPARE(call(user, daemonName, path, interface, method), QStringLiteral("done"));
    // And nobody takes a client for the daemon.
    QCOMPARE(call(ordinary, client, path, interface, method), refused);
}

void TestBusPolicy::onlyRootCallsTheRestOfTheDaemon_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("method");
    QTest::newRow("tag held against the simulator")
        << QStringLiteral("com.tavix.nfc.Simulator") << QStringLiteral("TouchTag");
    QTest::newRow("unknown interface") << QStringLiteral("com.example.Other") << QStringLiteral("Do");
    QTest::newRow("no interface") << QString() << QStringLiteral("DefaultAdapter");
}

void TestBusPolicy::onlyRootCallsTheRestOfTheDaemon()
{
    QFETCH(QString, interface);
    QFETCH(QString, method);
    QCOMPARE(call(ordinary, daemonName, QStringLiteral("/"), interface, method), refused);
    QCOMPARE(anything.calls, 0);
    QCOMPARE(call(root, daemonName, QStringLiteral("/"), interface, method), QStringLiteral("done"));
}

void TestBusPolicy::onlyRootIsTheDaemon()
{
    QCOMPARE(callAs(ordinary, {QStringLiteral("own"), daemonName}), refused);
    QCOMPARE(callAs(root, {QStringLiteral("own"), daemonName}), QStringLiteral("done"));
    QCOMPARE(callAs(root, {QStringLiteral("own"), QStringLiteral("com.tavix.nfc.other")}), refused);
}

void TestBusPolicy::onlyTheDaemonSendsItsSignals_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("signal");
    for (const QString &interface :
         {QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("com.tavix.nfc.Transfers")})
        for (const QString &signal : membersOf(interface, QLatin1String("signal")))
            QTest::newRow(qUtf8Printable(signal)) << interface << signal;
}

void TestBusPolicy::onlyTheDaemonSendsItsSignals()
{
    QFETCH(QString, interface);
    QFETCH(QString, signal);
    QCOMPARE(callAs(ordinary, {QStringLiteral("signal"), QStringLiteral("/adapter"), interface, signal}),
             QStringLiteral("done"));
    QTRY_COMPARE(received, QStringList{QStringLiteral("Done")});
    QCOMPARE(callAs(root, {QStringLiteral("signal"), QStringLiteral("/adapter"), interface, signal}),
             QStringLiteral("done"));
    QTRY_COMPARE(received, (QStringList{QStringLiteral("Done"), signal, QStringLiteral("Done")}));
}

void TestBusPolicy::daemonDecidesAboutItsCallers_data()
{
    QTest::addColumn<QStringList>("call");
    QTest::addColumn<QString>("outcome");
    const QString adapter = QStringLiteral("com.tavix.nfc.Adapter");
    const auto add = [](const QString &interface, const QStringList &call, const QString &outcome) {
        QTest::newRow(qUtf8Printable(call.constFirst())) << QStringList{interface} + call << outcome;
    };
    add(adapter, {QStringLiteral("RegisterUIAgent"), QStringLiteral("o:/agent")}, QStringLiteral("done"));
    add(adapter, {QStringLiteral("UnregisterUIAgent"), QStringLiteral("o:/agent")}, QStringLiteral("done"));
    add(adapter, {QStringLiteral("SetProperty"), QStringLiteral("s:State"), QStringLiteral("v:on")},
        QStringLiteral("done"));
    add(adapter,
        {QStringLiteral("RequestHandover"), QStringLiteral("o:/requestor"), QStringLiteral("s:pigeon"),
         QStringLiteral("s:")},
        QStringLiteral("com.tavix.nfc.Error.HandoverRefused"));
    add(adapter, {QStringLiteral("CancelHandoverRequest"), QStringLiteral("s:bluetooth")},
        QStringLiteral("com.tavix.nfc.Error.NoHandover"));
    add(QStringLiteral("com.tavix.nfc.Transfers"), {QStringLiteral("CancelTransfer"), QStringLiteral("u:0")},
        QStringLiteral("done"));
    add(QStringLiteral("com.tavix.nfc.TagWriter"), {QStringLiteral("WriteNdef"), QStringLiteral("ay:junk")},
        QStringLiteral("com.tavix.nfc.Error.InvalidMessage"));
    add(QStringLiteral("com.tavix.nfc.TagWriter"), {QStringLiteral("Cancel")}, QStringLiteral("done"));
}

// The policy lets everybody call: polkit says who is at the device.
void TestBusPolicy::daemonDecidesAboutItsCallers()
{
    QFETCH(QStringList, call);
    QFETCH(QString, outcome);
    QDBusConnection bus(QStringLiteral("daemon"));
    QVERIFY(bus.unregisterService(daemonName));
    const auto takeNameBack = qScopeGuard([&bus] { bus.registerService(daemonName); });
    const auto isRegistered = [&bus](const QString &name) {
        return bus.interface()->isServiceRegistered(name);
    };
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), address);
    Program daemon(environment, QStringLiteral(NFCD_SIM), {});
    QTRY_VERIFY(isRegistered(daemonName));

    const QString adapter = QStringLiteral("/com/tavix/nfc/adapter0");
    const QStringList action = QStringList{QStringLiteral("call"), daemonName, adapter} + call;
    const QStringList reading = {QStringLiteral("call"), daemonName, adapter,
                                 QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("GetProperties")};
    QCOMPARE(callAs(ordinary, reading), QStringLiteral("done"));
    QCOMPARE(callAs(ordinary, action), refused);
    QCOMPARE(callAs(root, action), outcome);

    Program polkit(environment, QStringLiteral("/usr/bin/python3"),
                   {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"),
                    QStringLiteral("--template"), QStringLiteral("polkitd")});
    QTRY_VERIFY(isRegistered(QStringLiteral("org.freedesktop.PolicyKit1")));
    QCOMPARE(callAs(ordinary, action), refused);
    QDBusMessage allow = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.PolicyKit1"), QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
        QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("SetAllowed"));
    allow.setArguments({QStringList{QStringLiteral("com.tavix.nfc.manage")}});
    QCOMPARE(bus.call(allow).errorMessage(), QString());
    QCOMPARE(callAs(ordinary, action), outcome);
}

QTEST_GUILESS_MAIN(TestBusPolicy)

#include "tst_buspolicy.moc"
