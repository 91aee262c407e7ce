// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QtTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

constexpr uint root = 0;
constexpr uint ordinary = 65534;

const QString daemonName = u"com.tavix.nfc"_s;
const QString agentPath = u"/com/tavix/nfcUIAgent/0"_s;
const QString refused = u"org.freedesktop.DBus.Error.AccessDenied"_s;

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
    QFile file(INTERFACES "/"_L1 + interface + ".xml"_L1);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("BusPolicy: unable to read %s", qUtf8Printable(file.fileName()));
    QStringList methods;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "method"_L1)
            methods.append(xml.attributes().value("name"_L1).toString());
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
    configuration.replace(u"@FOLDER@"_s, folder.path());
    configuration.replace(u"@POLICY@"_s, INTERFACES "/com.tavix.nfc.conf"_L1);
    QFile to(folder.filePath(u"bus.conf"_s));
    QVERIFY(to.open(QIODevice::WriteOnly) && to.write(configuration.toUtf8()) > 0);
    to.close();
    // Other users reach the socket in it.
    QVERIFY(QFile::setPermissions(folder.path(), QFile::Permissions(0x5755)));

    // It reports every refusal.
    bus.setStandardErrorFile(QProcess::nullDevice());
    bus.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s,
                                 u"--config-file=%1"_s.arg(to.fileName())});
    QVERIFY(bus.waitForReadyRead(-1));
    address = QString::fromUtf8(bus.readLine()).trimmed();

    QDBusConnection daemon = QDBusConnection::connectToBus(address, u"daemon"_s);
    QVERIFY(daemon.registerVirtualObject(u"/"_s, &anything, QDBusConnection::SubPath));
    QVERIFY(daemon.registerService(daemonName));
    QDBusConnection client = QDBusConnection::connectToBus(address, u"client"_s);
    QVERIFY(client.registerVirtualObject(u"/"_s, &anything, QDBusConnection::SubPath));
    this->client = client.baseService();
}

void TestBusPolicy::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(u"daemon"_s);
    QDBusConnection::disconnectFromBus(u"client"_s);
    bus.terminate();
    bus.waitForFinished(-1);
}

void TestBusPolicy::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
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
    return callAs(user, {u"call"_s, service, path, interface, method});
}

void TestBusPolicy::onlyTheDaemonCallsItsClients_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("method");
    addMethods(u"com.tavix.nfc.UIAgent"_s, agentPath);
    addMethods(u"com.tavix.nfc.HandoverRequestor"_s, u"/com/tavix/nfcHandoverRequestor"_s);
}

void TestBusPolicy::onlyTheDaemonCallsItsClients()
{
    QFETCH(QString, path);
    QFETCH(QString, interface);
    QFETCH(QString, method);
    QCOMPARE(call(ordinary, client, path, interface, method), refused);
    QCOMPARE(call(ordinary, client, path, QString(), method), refused);
    QCOMPARE(anything.calls, 0);
    QCOMPARE(call(root, client, path, interface, method), u"done"_s);
    QCOMPARE(anything.calls, 1);
}

void TestBusPolicy::everybodyCallsTheDaemon_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("method");
    addMethods(u"com.tavix.nfc.Manager"_s, u"/"_s);
    addMethods(u"com.tavix.nfc.Adapter"_s, u"/adapter"_s);
    QTest::newRow("Introspect") << u"/"_s << u"org.freedesktop.DBus.Introspectable"_s << u"Introspect"_s;
    QTest::newRow("Ping") << u"/"_s << u"org.freedesktop.DBus.Peer"_s << u"Ping"_s;
    QTest::newRow("Get") << u"/"_s << u"org.freedesktop.DBus.Properties"_s << u"Get"_s;
}

void TestBusPolicy::everybodyCallsTheDaemon()
{
    QFETCH(QString, path);
    QFETCH(QString, interface);
    QFETCH(QString, method);
    for (const uint user : {root, ordinary})
        QCOMPARE(call(user, daemonName, path, interface, method), u"done"_s);
    // And nobody takes a client for the daemon.
    QCOMPARE(call(ordinary, client, path, interface, method), refused);
}

void TestBusPolicy::onlyRootCallsTheRestOfTheDaemon_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("method");
    QTest::newRow("tag held against the simulator") << u"com.tavix.nfc.Simulator"_s << u"TouchTag"_s;
    QTest::newRow("unknown interface") << u"com.example.Other"_s << u"Do"_s;
    QTest::newRow("no interface") << QString() << u"DefaultAdapter"_s;
}

void TestBusPolicy::onlyRootCallsTheRestOfTheDaemon()
{
    QFETCH(QString, interface);
    QFETCH(QString, method);
    QCOMPARE(call(ordinary, daemonName, u"/"_s, interface, method), refused);
    QCOMPARE(anything.calls, 0);
    QCOMPARE(call(root, daemonName, u"/"_s, interface, method), u"done"_s);
}

void TestBusPolicy::onlyRootIsTheDaemon()
{
    QCOMPARE(callAs(ordinary, {u"own"_s, daemonName}), refused);
    QCOMPARE(callAs(root, {u"own"_s, daemonName}), u"done"_s);
    QCOMPARE(callAs(root, {u"own"_s, u"com.tavix.nfc.other"_s}), refused);
}

QTEST_GUILESS_MAIN(TestBusPolicy)

#include "tst_buspolicy.moc"
