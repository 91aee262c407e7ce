// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <unistd.h>

#include <QDBusConnection>
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

QStringList methodsOf(const QString &interface)
{
    QFile file(QLatin1String(INTERFACES "/") + interface + QLatin1String(".xml"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("BusPolicy: unable to read %s", qUtf8Printable(file.fileName()));
    QStringList methods;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("method"))
            methods.append(xml.attributes().value(QLatin1String("name")).toString());
    return methods;
}

void addMethods(const QString &interface, const QString &path)
{
    for (const QString &method : methodsOf(interface))
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

private:
    QString callAs(uint user, const QStringList &action) const;
    QString call(uint user, const QString &service, const QString &path, const QString &interface,
                 const QString &method) const;

    QTemporaryDir folder;
    QProcess bus;
    QString address;
    Anything anything;
    QString client;
};

void TestBusPolicy::initTestCase()
{
    if (geteuid() != root)
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
}

// What became of the action: "done", or the name of an error.
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

QTEST_GUILESS_MAIN(TestBusPolicy)

#include "tst_buspolicy.moc"
