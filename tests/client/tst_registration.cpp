// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QSignalSpy>
#include <QTest>

#include "core/registration.h"
#include "fakedaemon.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const auto agent = u"/com/tavix/nfcUIAgent/0"_s;
const auto taken = u"com.tavix.nfc.Error.AlreadyExists"_s;

} // namespace

class TestRegistration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void registersWithTheDefaultAdapter();
    void takesTheRegistrationBack();
    void takesNothingBackThatWasRefused();
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
    const QList<FakeCall> calls = daemon.calls(u"RegisterUIAgent"_s);
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls[0].path, FakeDaemon::adapterPath());
    QCOMPARE(calls[0].signature, u"o"_s);
}

void TestRegistration::takesTheRegistrationBack()
{
    FakeDaemon daemon;
    daemon.start();
    auto registration = std::make_unique<Registration>(agent);
    QVERIFY(QSignalSpy(registration.get(), &Registration::succeeded).wait());
    registration.reset();
    QTRY_COMPARE(daemon.calls(u"UnregisterUIAgent"_s).size(), 1);
}

void TestRegistration::takesNothingBackThatWasRefused()
{
    FakeDaemon daemon;
    daemon.fail(u"RegisterUIAgent"_s, taken, u"Another one is there"_s);
    daemon.start();
    auto registration = std::make_unique<Registration>(agent);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: com.tavix.nfc.Error.AlreadyExists: "
                         "Another one is there; trying again in 1000 ms");
    QVERIFY(QSignalSpy(registration.get(), &Registration::failed).wait());
    registration.reset();
    daemon.reply(u"RegisterUIAgent"_s);
    QVERIFY(daemon.calls(u"UnregisterUIAgent"_s).isEmpty());
}

void TestRegistration::refusalIsSaidAndTriedAgain()
{
    FakeDaemon daemon;
    daemon.fail(u"RegisterUIAgent"_s, taken, u"Another one is there"_s);
    daemon.start();
    Registration registration(agent);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: com.tavix.nfc.Error.AlreadyExists: "
                         "Another one is there; trying again in 1000 ms");
    QVERIFY(QSignalSpy(&registration, &Registration::failed).wait());
    QVERIFY(!registration.isComplete());
    daemon.reply(u"RegisterUIAgent"_s);
    QVERIFY(QSignalSpy(&registration, &Registration::succeeded).wait());
    QVERIFY(registration.isComplete());
    QCOMPARE(daemon.calls(u"RegisterUIAgent"_s).size(), 2);
}

void TestRegistration::pausesGrow()
{
    FakeDaemon daemon;
    daemon.fail(u"RegisterUIAgent"_s, taken, u"no"_s);
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
    daemon.fail(u"DefaultAdapter"_s, u"com.tavix.nfc.Error.NoAdapter"_s, u"There is none"_s);
    daemon.start();
    Registration registration(agent);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: com.tavix.nfc.Error.NoAdapter: There "
                         "is none; trying again in 1000 ms");
    QVERIFY(QSignalSpy(&registration, &Registration::failed).wait());
    daemon.reply(u"DefaultAdapter"_s, {QVariant::fromValue(QDBusObjectPath(FakeDaemon::adapterPath()))});
    QVERIFY(QSignalSpy(&registration, &Registration::succeeded).wait());
}

QTEST_GUILESS_MAIN(TestRegistration)
#include "tst_registration.moc"
