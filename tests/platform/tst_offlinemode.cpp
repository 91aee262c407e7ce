// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QElapsedTimer>
#include <QtTest>

#include <OfflineMode>

#include "dbusmock.h"

using ConnUi::OfflineMode;

namespace {

const auto service = QStringLiteral("net.connman");
const auto managerInterface = QStringLiteral("net.connman.Manager");

// A connection manager whose GetProperties has the given body.
struct ConnectionManager : DBusMock
{
    explicit ConnectionManager(const QString &out, const QString &body)
        : DBusMock(service, {service, QStringLiteral("/"), managerInterface})
    {
        ready = waitForRegistered() && addMethod(QStringLiteral("/"), managerInterface,
                                                 QStringLiteral("GetProperties"), QString(), out, body)
                                               .type() == QDBusMessage::ReplyMessage;
    }

    bool ready;
};

const auto properties = QStringLiteral("a{sv}");

} // namespace

class TestOfflineMode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void noServiceIsNotOffline();
    void serviceIsNotStarted();
    void offlineIsZero();
    void onlineIsNotOffline();
    void everyCallAsksAnew();
    void slowAnswerIsNotOfflineInTime();
    void nonsenseIsNotOffline_data();
    void nonsenseIsNotOffline();
    void refusalIsNotOffline();
};

void TestOfflineMode::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestOfflineMode::noServiceIsNotOffline()
{
    QCOMPARE(OfflineMode().currentStatus(), 1);
}

void TestOfflineMode::serviceIsNotStarted()
{
    const ActivatableService manager(service);
    QVERIFY(manager.ready);
    QCOMPARE(OfflineMode().currentStatus(), 1);
    QVERIFY(!manager.isStarted());
}

void TestOfflineMode::offlineIsZero()
{
    ConnectionManager manager(properties, QStringLiteral("ret = {'State': 'offline', 'OfflineMode': True}"));
    QVERIFY(manager.ready);
    QCOMPARE(OfflineMode().currentStatus(), 0);
}

void TestOfflineMode::onlineIsNotOffline()
{
    ConnectionManager manager(properties, QStringLiteral("ret = {'State': 'online', 'OfflineMode': False}"));
    QVERIFY(manager.ready);
    QCOMPARE(OfflineMode().currentStatus(), 1);
}

void TestOfflineMode::everyCallAsksAnew()
{
    OfflineMode offline;
    {
        ConnectionManager manager(properties, QStringLiteral("ret = {'OfflineMode': True}"));
        QVERIFY(manager.ready);
        QCOMPARE(offline.currentStatus(), 0);
        QCOMPARE(offline.currentStatus(), 0);
        QCOMPARE(manager.callCount(QStringLiteral("/"), QStringLiteral("GetProperties")), 2);
    }
    QCOMPARE(offline.currentStatus(), 1);
}

void TestOfflineMode::slowAnswerIsNotOfflineInTime()
{
    ConnectionManager manager(properties,
                              QStringLiteral("import time; time.sleep(5); ret = {'OfflineMode': True}"));
    QVERIFY(manager.ready);
    // A loaded machine may wake us late, but hardly every time.
    qint64 shortest = 5000;
    for (int i = 0; i < 5; ++i) {
        QTest::ignoreMessage(
            QtWarningMsg,
            "OfflineMode: GetProperties returned error 'org.freedesktop.DBus.Error.NoReply': Did not receive "
            "a "
            "reply. Possible causes include: the remote application did not send a reply, the message bus "
            "security policy blocked the reply, the reply timeout expired, or the network connection was "
            "broken.");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(OfflineMode().currentStatus(), 1);
        shortest = qMin(shortest, timer.elapsed());
    }
    QVERIFY2(shortest <= 100, qPrintable(QString::number(shortest)));
}

void TestOfflineMode::nonsenseIsNotOffline_data()
{
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("body");
    QTest::addColumn<QByteArray>("warning");
    const QByteArray notBoolean("OfflineMode: the connection manager's OfflineMode is not a boolean");
    QTest::newRow("property missing")
        << properties << QStringLiteral("ret = {'State': 'idle'}") << notBoolean;
    QTest::newRow("a string") << properties << QStringLiteral("ret = {'OfflineMode': 'true'}") << notBoolean;
    QTest::newRow("a number") << properties << QStringLiteral("ret = {'OfflineMode': 1}") << notBoolean;
    QTest::newRow("no properties") << QStringLiteral("s") << QStringLiteral("ret = 'offline'")
                                   << QByteArray(
                                          "OfflineMode: GetProperties returned error "
                                          "'org.freedesktop.DBus.Error.InvalidSignature': Unexpected reply "
                                          "signature: got \"s\", expected \"a{sv}\"");
}

void TestOfflineMode::nonsenseIsNotOffline()
{
    QFETCH(QString, signature);
    QFETCH(QString, body);
    QFETCH(QByteArray, warning);
    ConnectionManager manager(signature, body);
    QVERIFY(manager.ready);
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    QCOMPARE(OfflineMode().currentStatus(), 1);
}

void TestOfflineMode::refusalIsNotOffline()
{
    ConnectionManager manager(
        properties,
        QStringLiteral(
            "raise dbus.exceptions.DBusException('not for you', name='net.connman.Error.Denied')"));
    QVERIFY(manager.ready);
    QTest::ignoreMessage(QtWarningMsg,
                         "OfflineMode: GetProperties returned error 'net.connman.Error.Denied': not for you");
    QCOMPARE(OfflineMode().currentStatus(), 1);
}

QTEST_GUILESS_MAIN(TestOfflineMode)
#include "tst_offlinemode.moc"
