// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <OfflineMode>
#include <PendingAnswer>

#include "dbusmock.h"

using ConnUi::OfflineMode;
using ConnUi::PendingAnswer;

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
    void answerComesFromTheEventLoop_data();
    void answerComesFromTheEventLoop();
    void serviceIsNotStartedForAnAnswer();
    void refusalIsTheAnswersError();
    void slowManagerIsGivenUpInTheEnd();
    void answerEndsWithItsMaker();
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
    // A loaded machine wakes us late, but not by the seconds that the manager takes.
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
    QVERIFY2(shortest < 1000, qPrintable(QString::number(shortest)));
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

void TestOfflineMode::answerComesFromTheEventLoop_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<int>("status");
    QTest::newRow("offline") << QStringLiteral("ret = {'OfflineMode': True}") << 0;
    QTest::newRow("online") << QStringLiteral("ret = {'OfflineMode': False}") << 1;
    QTest::newRow("no manager") << QString() << 1;
}

void TestOfflineMode::answerComesFromTheEventLoop()
{
    QFETCH(QString, body);
    QFETCH(int, status);
    std::unique_ptr<ConnectionManager> manager;
    if (!body.isEmpty())
        manager = std::make_unique<ConnectionManager>(properties, body);
    QVERIFY(!manager || manager->ready);

    OfflineMode offline;
    const QPointer<PendingAnswer> answer = offline.currentStatusAsync();
    QCOMPARE(answer->parent(), &offline);
    QVERIFY(!answer->isFinished());
    int answers = 0;
    QObject::connect(answer, &PendingAnswer::finished, &offline, [&](const PendingAnswer *finished) {
        ++answers;
        QCOMPARE(finished, answer.data());
        QVERIFY(finished->isFinished());
        QVERIFY(!finished->isError());
        QCOMPARE(finished->value(), QVariant(status));
    });
    QTRY_VERIFY(!answer);
    QCOMPARE(answers, 1);
}

void TestOfflineMode::serviceIsNotStartedForAnAnswer()
{
    const ActivatableService manager(service);
    QVERIFY(manager.ready);
    OfflineMode offline;
    QSignalSpy finished(offline.currentStatusAsync(), &PendingAnswer::finished);
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!manager.isStarted());
}

void TestOfflineMode::refusalIsTheAnswersError()
{
    ConnectionManager manager(
        properties,
        QStringLiteral(
            "raise dbus.exceptions.DBusException('not for you', name='net.connman.Error.Denied')"));
    QVERIFY(manager.ready);
    QTest::ignoreMessage(QtWarningMsg,
                         "OfflineMode: GetProperties returned error 'net.connman.Error.Denied': not for you");
    OfflineMode offline;
    QStringList error;
    QObject::connect(offline.currentStatusAsync(), &PendingAnswer::finished, &offline,
                     [&](const PendingAnswer *answer) {
                         error = {answer->errorName(), answer->errorText(), answer->value().toString()};
                         QVERIFY(answer->isError());
                     });
    QTRY_COMPARE(error, QStringList({QStringLiteral("net.connman.Error.Denied"),
                                     QStringLiteral("not for you"), QStringLiteral("1")}));
}

void TestOfflineMode::slowManagerIsGivenUpInTheEnd()
{
    ConnectionManager manager(properties,
                              QStringLiteral("import time; time.sleep(30); ret = {'OfflineMode': True}"));
    QVERIFY(manager.ready);
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(QStringLiteral(
            "^OfflineMode: GetProperties returned error 'org\\.freedesktop\\.DBus\\.Error\\.NoReply': ")));
    OfflineMode offline;
    QVariant status;
    QObject::connect(offline.currentStatusAsync(), &PendingAnswer::finished, &offline,
                     [&](const PendingAnswer *answer) { status = answer->value(); });
    QTRY_COMPARE_WITH_TIMEOUT(status, QVariant(1), 20000);
}

void TestOfflineMode::answerEndsWithItsMaker()
{
    ConnectionManager manager(properties, QStringLiteral("ret = {'OfflineMode': True}"));
    QVERIFY(manager.ready);
    auto offline = std::make_unique<OfflineMode>();
    const QPointer<PendingAnswer> answer = offline->currentStatusAsync();
    offline.reset();
    QVERIFY(!answer);
    // The answer to this comes behind the one that nobody waits for.
    QCOMPARE(OfflineMode().currentStatus(), 0);
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(TestOfflineMode)
#include "tst_offlinemode.moc"
