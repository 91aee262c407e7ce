// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QSignalSpy>
#include <QTest>

#include "core/registration.h"
#include "fakedaemon.h"

namespace {

const auto agent = QStringLiteral("/com/tavix/nfcUIAgent/0");
const auto taken = QStringLiteral("com.tavix.nfc.Error.AlreadyExists");

} // namespace

class TestRegistration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void registersWithTheDefaultAdapter();
    void takesTheRegistrationBack();
    void refusedRegistrationIsNotTakenBack();
    void daemonThatHasLeftIsNotStarted();
    void refusalIsSaidAndTriedAgain();
    void pausesGrow();
    void daemonWithoutAdapterIsAskedAgain();
};

void TestRegistration::registersWithTheDefaultAdapter()
{
    FakeDaemon daemon;
    daemon.start();
    Registration registration(agent);
    QVERIFY(!registration.isComplete());
    QSignalSpy succeeded(&registration, &Registration::succeeded);
    QVERIFY(succeeded.wait());
    QCOMPARE(succeeded[0], QVariantList{FakeDaemon::adapterPath()});
    QVERIFY(registration.isComplete());
    const QList<FakeCall> calls = daemon.calls(QStringLiteral("RegisterUIAgent"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls[0].path, FakeDaemon::adapterPath());
    QCOMPARE(calls[0].signature, QStringLiteral("o"));
}

void TestRegistration::takesTheRegistrationBack()
{
    FakeDaemon daemon;
    daemon.start();
    auto registration = std::make_unique<Registration>(agent);
    QVERIFY(QSignalSpy(registration.get(), &Registration::succeeded).wait());
    registration.reset();
    QTRY_COMPARE(daemon.calls(QStringLiteral("UnregisterUIAgent")).size(), 1);
}

void TestRegistration::refusedRegistrationIsNotTakenBack()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("RegisterUIAgent"), taken, QStringLiteral("Another one is there"));
    daemon.start();
    auto registration = std::make_unique<Registration>(agent);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: com.tavix.nfc.Error.AlreadyExists: "
                         "Another one is there; trying again in 1000 ms");
    QVERIFY(QSignalSpy(registration.get(), &Registration::failed).wait());
    registration.reset();
    daemon.reply(QStringLiteral("RegisterUIAgent"));
    QVERIFY(daemon.calls(QStringLiteral("UnregisterUIAgent")).isEmpty());
}

void TestRegistration::daemonThatHasLeftIsNotStarted()
{
    FakeDaemon daemon;
    // The bus keeps a message that starts a daemon until there is one: this command is none.
    daemon.makeActivatable(QStringLiteral("/bin/sleep 60"));
    daemon.start();
    auto registration = std::make_unique<Registration>(agent);
    QVERIFY(QSignalSpy(registration.get(), &Registration::succeeded).wait());
    daemon.kill();
    registration.reset();
    // The bus has taken the message when it has answered.
    QVERIFY(!QDBusConnection::systemBus().interface()->isServiceRegistered(daemon.service()));
    daemon.start();
    // Comes behind all messages that the bus has kept.
    Registration next(agent);
    QVERIFY(QSignalSpy(&next, &Registration::succeeded).wait());
    QVERIFY(daemon.calls(QStringLiteral("UnregisterUIAgent")).isEmpty());
}

void TestRegistration::refusalIsSaidAndTriedAgain()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("RegisterUIAgent"), taken, QStringLiteral("Another one is there"));
    daemon.start();
    Registration registration(agent);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: com.tavix.nfc.Error.AlreadyExists: "
                         "Another one is there; trying again in 1000 ms");
    QVERIFY(QSignalSpy(&registration, &Registration::failed).wait());
    QVERIFY(!registration.isComplete());
    daemon.reply(QStringLiteral("RegisterUIAgent"));
    QVERIFY(QSignalSpy(&registration, &Registration::succeeded).wait());
    QVERIFY(registration.isComplete());
    QCOMPARE(daemon.calls(QStringLiteral("RegisterUIAgent")).size(), 2);
}

void TestRegistration::pausesGrow()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("RegisterUIAgent"), taken, QStringLiteral("no"));
    daemon.start();
    Registration registration(agent, 10);
    QSignalSpy failed(&registration, &Registration::failed);
    for (const int pause : {10, 20, 40, 80, 160, 300, 300}) {
        const QByteArray words =
            "The NFC daemon does not take the agent: com.tavix.nfc.Error.AlreadyExists: no; trying "
            "again in " +
            QByteArray::number(pause) + " ms";
        QTest::ignoreMessage(QtWarningMsg, words.constData());
        QVERIFY(failed.wait());
    }
}

void TestRegistration::daemonWithoutAdapterIsAskedAgain()
{
    FakeDaemon daemon;
    daemon.fail(QStringLiteral("DefaultAdapter"), QStringLiteral("com.tavix.nfc.Error.NoAdapter"),
                QStringLiteral("There is none"));
    daemon.start();
    Registration registration(agent);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: com.tavix.nfc.Error.NoAdapter: There "
                         "is none; trying again in 1000 ms");
    QVERIFY(QSignalSpy(&registration, &Registration::failed).wait());
    daemon.reply(QStringLiteral("DefaultAdapter"),
                 {QVariant::fromValue(QDBusObjectPath(FakeDaemon::adapterPath()))});
    QVERIFY(QSignalSpy(&registration, &Registration::succeeded).wait());
}

QTEST_GUILESS_MAIN(TestRegistration)
#include "tst_registration.moc"
