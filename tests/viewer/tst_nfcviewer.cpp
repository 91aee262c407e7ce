// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QProcess>
#include <QTest>

#include "privatebus.h"

class TestNfcViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void viewerTakesDataAndComesToTheFront();
    void secondViewerLeaves();
    void viewerEndsWithItsSession();
    void missingDisplayIsReported();
    void versionIsPrinted();

private:
    static bool isOnBus();
    static QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                             const QVariantList &arguments = {});
};

namespace {

// The program, for as long as the object lives.
class Viewer : public QProcess
{
public:
    explicit Viewer(const QStringList &arguments = {},
                    const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
    {
        setProcessEnvironment(environment);
        start(QStringLiteral(NFC_VIEWER), arguments);
    }

    ~Viewer() override
    {
        kill();
        waitForFinished();
    }
};

} // namespace

void TestNfcViewer::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QTRY_VERIFY(!isOnBus());
}

bool TestNfcViewer::isOnBus()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(
        QStringLiteral("org.connui.NfcViewer"));
}

QDBusMessage TestNfcViewer::call(const QString &path, const QString &interface, const QString &method,
                                 const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.connui.NfcViewer"), path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

void TestNfcViewer::viewerTakesDataAndComesToTheFront()
{
    const Viewer viewer;
    QTRY_VERIFY(isOnBus());
    const QVariant target = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/tag/0")));
    QCOMPARE(call(QStringLiteral("/org/connui/NfcViewer"), QStringLiteral("com.tavix.nfc.NDEFHandler"),
                  QStringLiteral("NDEFData"), {target, QByteArray::fromHex("d101065402656e4869")})
                 .type(),
             QDBusMessage::ReplyMessage);
    QCOMPARE(call(QStringLiteral("/org/orvik/m"), QStringLiteral("com.tavix.MApplicationIf"),
                  QStringLiteral("launch"))
                 .type(),
             QDBusMessage::ReplyMessage);
    QCOMPARE(viewer.state(), QProcess::Running);
}

void TestNfcViewer::secondViewerLeaves()
{
    const Viewer first;
    QTRY_VERIFY(isOnBus());
    Viewer second;
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 1);
    QCOMPARE(second.readAllStandardError(), "nfc-viewer: no session bus, or another one is running\n");
}

void TestNfcViewer::viewerEndsWithItsSession()
{
    PrivateBus bus;
    Viewer viewer({}, bus.environment(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")));
    const QDBusConnection session = QDBusConnection::connectToBus(bus.address(), QStringLiteral("session"));
    QTRY_VERIFY(session.interface()->isServiceRegistered(QStringLiteral("org.connui.NfcViewer")));
    bus.end();
    QVERIFY(viewer.waitForFinished());
    QCOMPARE(viewer.exitStatus(), QProcess::NormalExit);
    QCOMPARE(viewer.exitCode(), 0);
    QDBusConnection::disconnectFromBus(QStringLiteral("session"));
}

void TestNfcViewer::missingDisplayIsReported()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    Viewer viewer({}, environment);
    QVERIFY(viewer.waitForFinished());
    QCOMPARE(viewer.exitCode(), 3);
    QVERIFY(viewer.readAllStandardError().contains("nfc-viewer: no display: "));
}

void TestNfcViewer::versionIsPrinted()
{
    Viewer viewer({QStringLiteral("--version")});
    QVERIFY(viewer.waitForFinished());
    QCOMPARE(viewer.exitCode(), 0);
    QVERIFY(viewer.readAllStandardOutput().startsWith("nfc-viewer "));
}

QTEST_GUILESS_MAIN(TestNfcViewer)
#include "tst_nfcviewer.moc"
