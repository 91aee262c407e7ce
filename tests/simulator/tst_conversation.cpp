// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include "fakeservice.h"
#include "panel/conversation.h"

using Message = Conversation::Message;

namespace {

constexpr QLatin1String daemonName("com.tavix.nfc");

} // namespace

class TestConversation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void callAndAnswerNameBothSides_data();
    void callAndAnswerNameBothSides();
    void errorIsNamed();
    void signalIsForAll();
    void answersFindTheirCalls();
    void otherTalkIsLeftOut();
    void stringForgesNoMessage();
    void missingProgramIsReported();

private:
    void call(const QString &interface, const QString &member, const QVariantList &arguments = {});
    bool hears(qsizetype messages);

    std::unique_ptr<FakeService> daemon;
    std::unique_ptr<Conversation> conversation;
    QList<Message> heard;
};

void TestConversation::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    heard.clear();
    daemon = std::make_unique<FakeService>(QDBusConnection::SystemBus, daemonName);
    daemon->start();
    conversation = std::make_unique<Conversation>();
    connect(conversation.get(), &Conversation::said, this,
            [this](const Message &said) { heard.append(said); });
    // Until it listens.
    const auto isHeard = [this] {
        daemon->emitSignal(QStringLiteral("/"), QStringLiteral("com.tavix.nfc.Adapter"),
                           QStringLiteral("Mark"));
        return QTest::qWaitFor([this] { return !heard.isEmpty(); }, 200);
    };
    QTRY_VERIFY_WITH_TIMEOUT(isHeard(), 30000);
    // Marks sent before the call below are heard before it.
    call(QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("Start"));
    QTRY_VERIFY(!heard.isEmpty() && heard.last().what == QLatin1String("Start: done"));
    heard.clear();
}

void TestConversation::cleanup()
{
    conversation.reset();
    daemon.reset();
}

void TestConversation::call(const QString &interface, const QString &member, const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(daemonName, QStringLiteral("/com/tavix/nfc"), interface, member);
    message.setArguments(arguments);
    QDBusConnection::systemBus().call(message);
}

bool TestConversation::hears(qsizetype messages)
{
    return QTest::qWaitFor([this, messages] { return heard.size() >= messages; }, 10000) &&
           heard.size() == messages;
}

void TestConversation::callAndAnswerNameBothSides_data()
{
    QTest::addColumn<QString>("caller");
    QTest::addColumn<QString>("receiver");
    const auto add = [](const char *interface, const char *caller, const char *receiver) {
        QTest::newRow(interface) << QString::fromLatin1(caller) << QString::fromLatin1(receiver);
    };
    add("Manager", "client", "daemon");
    add("Adapter", "client", "daemon");
    add("Transfers", "client", "daemon");
    add("TagWriter", "client", "daemon");
    add("UIAgent", "daemon", "client");
    add("HandoverRequestor", "daemon", "client");
    add("Simulator", "world", "daemon");
}

void TestConversation::callAndAnswerNameBothSides()
{
    QFETCH(QString, caller);
    QFETCH(QString, receiver);
    daemon->reply(QStringLiteral("Greet"), {QStringLiteral("hello"), QByteArray("\1\2")});
    call(QStringLiteral("com.tavix.nfc.") + QLatin1String(QTest::currentDataTag()), QStringLiteral("Greet"),
         {QStringLiteral("you")});
    QVERIFY(hears(2));
    QCOMPARE(heard[0].caller, caller);
    QCOMPARE(heard[0].receiver, receiver);
    QVERIFY(!heard[0].isAnswer);
    QCOMPARE(heard[0].what, QStringLiteral("Greet"));
    QCOMPARE(heard[0].values, QStringList{QStringLiteral("\"you\"")});
    QCOMPARE(heard[1].caller, caller);
    QCOMPARE(heard[1].receiver, receiver);
    QVERIFY(heard[1].isAnswer);
    QCOMPARE(heard[1].what, QStringLiteral("Greet: done"));
    QCOMPARE(heard[1].values, (QStringList{QStringLiteral("\"hello\""), QStringLiteral("01 02")}));
}

void TestConversation::errorIsNamed()
{
    daemon->fail(QStringLiteral("Greet"), QStringLiteral("org.example.Error.Shy"), QStringLiteral("not now"));
    call(QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("Greet"));
    QVERIFY(hears(2));
    QVERIFY(heard[1].isAnswer);
    QCOMPARE(heard[1].what, QStringLiteral("Greet: error org.example.Error.Shy"));
    QCOMPARE(heard[1].values, QStringList{QStringLiteral("\"not now\"")});
}

void TestConversation::signalIsForAll()
{
    daemon->emitSignal(QStringLiteral("/"), QStringLiteral("com.tavix.nfc.Adapter"),
                       QStringLiteral("Changed"), {QStringLiteral("State")});
    QVERIFY(hears(1));
    QCOMPARE(heard[0].caller, QStringLiteral("daemon"));
    QCOMPARE(heard[0].receiver, QStringLiteral("all"));
    QVERIFY(!heard[0].isAnswer);
    QCOMPARE(heard[0].what, QStringLiteral("Changed"));
    QCOMPARE(heard[0].values, QStringList{QStringLiteral("\"State\"")});
}

// The later call is answered first, and each of them once.
void TestConversation::answersFindTheirCalls()
{
    daemon->hold(QStringLiteral("Wait"));
    QDBusConnection::systemBus().asyncCall(QDBusMessage::createMethodCall(
        daemonName, QStringLiteral("/"), QStringLiteral("com.tavix.nfc.Simulator"), QStringLiteral("Wait")));
    QVERIFY(hears(1));
    call(QStringLiteral("com.tavix.nfc.Manager"), QStringLiteral("Greet"));
    QVERIFY(hears(3));
    daemon->release(QStringLiteral("Wait"));
    QVERIFY(hears(4));
    QStringList whats;
    for (const Message &message : std::as_const(heard))
        whats.append(message.caller + QLatin1Char(' ') + message.what);
    QCOMPARE(whats, (QStringList{QStringLiteral("world Wait"), QStringLiteral("client Greet"),
                                 QStringLiteral("client Greet: done"), QStringLiteral("world Wait: done")}));
}

void TestConversation::otherTalkIsLeftOut()
{
    call(QStringLiteral("org.example.Other"), QStringLiteral("Greet"));
    daemon->emitSignal(QStringLiteral("/"), QStringLiteral("org.example.Other"), QStringLiteral("Changed"));
    call(QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("Last"));
    QVERIFY(hears(2));
    QCOMPARE(heard[0].what, QStringLiteral("Last"));
    QCOMPARE(heard[1].what, QStringLiteral("Last: done"));
}

void TestConversation::stringForgesNoMessage()
{
    call(QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("Greet"),
         {QStringLiteral(
             "a\n{\"type\":\"signal\",\"interface\":\"com.tavix.nfc.Adapter\",\"member\":\"Forged\"}\n")});
    call(QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("Last"));
    QVERIFY(hears(4));
    QCOMPARE(heard[0].values.size(), 1);
    QVERIFY(heard[0].values[0].startsWith(QStringLiteral("\"a\\u000a{")));
    QCOMPARE(heard[1].what, QStringLiteral("Greet: done"));
}

void TestConversation::missingProgramIsReported()
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    Conversation deaf;
    QSignalSpy failed(&deaf, &Conversation::failed);
    qputenv("PATH", path);
    QTRY_COMPARE(failed.count(), 1);
}

QTEST_GUILESS_MAIN(TestConversation)
#include "tst_conversation.moc"
