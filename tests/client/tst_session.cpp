// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusArgument>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QSignalSpy>
#include <QTest>

#include <RadioState>

#include "catalogue.h"
#include "core/session.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakehandler.h"
#include "fakeohm.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::RadioState;
using namespace Qt::Literals::StringLiterals;

namespace {

const QDBusObjectPath target(u"/target"_s);

QByteArray textTag(const QString &text)
{
    QNdefNfcTextRecord record;
    record.setText(text);
    return QNdefMessage(record).toByteArray();
}

QByteArray linkTag()
{
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::NfcRtd);
    record.setType("U");
    record.setPayload("\x02"
                      "example.org");
    return QNdefMessage(record).toByteArray();
}

// Handlers of the applications with these ids. Not the records themselves: those would die on the bus's own
// thread.
QVariant handlers(const QStringList &applications)
{
    QDBusArgument argument;
    argument.beginArray(QMetaType::fromType<NdefMessageHandler>());
    for (const QString &application : applications)
        argument << NdefMessageHandler(application, u"session"_s, u"org.example.Viewer"_s,
                                       QDBusObjectPath(u"/viewer"_s));
    argument.endArray();
    return QVariant::fromValue(argument);
}

} // namespace

class TestSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void agentIsRegistered();
    void refusedAgentIsNotRegistered();
    void lateReleaseTakesOnlyItsOwnAgent();
    void releaseTakesTheAgent();
    void applicationInFrontIsFollowedOnce();
    void requestsOfOneTargetGetTheirOwnAnswers_data();
    void requestsOfOneTargetGetTheirOwnAnswers();

private:
    QString agentPath();
    int ask(const QString &kind, int number);

    FakeDaemon daemon;
};

void TestSession::initTestCase()
{
    static const Catalogue catalogue;
    qDBusRegisterMetaType<NdefMessageHandler>();
    qDBusRegisterMetaType<NdefMessageHandlerList>();
}

void TestSession::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    daemon.kill();
    // Nobody switches it off: daemons come and go quickly here.
    RadioState(RadioState::NFC).setEnabled(false);
    daemon.start();
}

QString TestSession::agentPath()
{
    return qdbus_cast<QDBusObjectPath>(daemon.calls(u"RegisterUIAgent"_s).constLast().arguments[0]).path();
}

void TestSession::agentIsRegistered()
{
    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    const Session session(&face);
    QVERIFY(!session.isRegistered());
    QSignalSpy changed(&session, &Session::registeredChanged);
    QVERIFY(changed.wait());
    QCOMPARE(changed[0], QVariantList{true});
    QVERIFY(session.isRegistered());
    daemon.kill();
    QVERIFY(changed.wait());
    QCOMPARE(changed[1], QVariantList{false});
    QVERIFY(!session.isRegistered());
}

void TestSession::refusedAgentIsNotRegistered()
{
    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    daemon.fail(u"RegisterUIAgent"_s, u"org.freedesktop.DBus.Error.AccessDenied"_s, u"no"_s);
    const Session session(&face);
    QSignalSpy changed(&session, &Session::registeredChanged);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: "
                         "org.freedesktop.DBus.Error.AccessDenied: no; trying again in 1000 ms");
    QTRY_COMPARE(daemon.calls(u"RegisterUIAgent"_s).size(), 1);
    daemon.reply(u"RegisterUIAgent"_s);
    QVERIFY(!session.isRegistered());
    QVERIFY(changed.wait());
    QCOMPARE(changed[0], QVariantList{true});
}

void TestSession::lateReleaseTakesOnlyItsOwnAgent()
{
    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    const Session session(&face);
    QSignalSpy changed(&session, &Session::registeredChanged);
    QVERIFY(changed.wait());
    // All of this is there before the client hears of any.
    daemon.callAgent(agentPath(), u"Release"_s);
    daemon.stop();
    daemon.start();
    QTRY_COMPARE(changed.size(), 3);
    QVERIFY(session.isRegistered());

    daemon.callAgent(agentPath(), u"RequestBTPairing"_s,
                     {QVariant::fromValue(target), u"00:11"_s, u"Headset"_s, 0u, QString()});
    QTRY_VERIFY(face.shown);
    QVERIFY(session.isRegistered());
}

void TestSession::releaseTakesTheAgent()
{
    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    const Session session(&face);
    QSignalSpy changed(&session, &Session::registeredChanged);
    QVERIFY(changed.wait());
    daemon.callAgent(agentPath(), u"Release"_s);
    QVERIFY(changed.wait());
    QVERIFY(!session.isRegistered());
}

void TestSession::applicationInFrontIsFollowedOnce()
{
    FakeFace face;
    FakeOhm ohm;
    FakeHandler viewer;
    viewer.start();
    ohm.start();
    const Session session(&face);
    QTRY_COMPARE(ohm.calls(u"Subscribe"_s).size(), 1);
    QCOMPARE(daemon.calls(u"RegisterUIAgent"_s).size(), 1);
    for (int i = 0; i < 3; ++i) {
        ask(u"unasked"_s, i);
        QTRY_COMPARE(viewer.calls(u"NDEFData"_s).size(), i + 1);
    }
    QCOMPARE(ohm.calls(u"Subscribe"_s).size(), 1);
    QCOMPARE(ohm.calls(u"Unsubscribe"_s).size(), 0);
}

int TestSession::ask(const QString &kind, int number)
{
    const QVariant path = QVariant::fromValue(target);
    if (kind == "pairing"_L1)
        return daemon.callAgent(agentPath(), u"RequestBTPairing"_s,
                                {path, u"00:11"_s, u"Headset %1"_s.arg(number), 0u, QString()});
    const auto deliver = [&](const QStringList &applications, const QByteArray &data) {
        return daemon.callAgent(agentPath(), u"RequestNDEFDataDelivery"_s,
                                {handlers(applications), path, data});
    };
    if (kind == "asked"_L1)
        return deliver({u"viewer"_s}, linkTag() + QByteArray());
    if (kind == "asked again"_L1)
        return deliver({u"viewer"_s, u"other"_s}, textTag(u"Hello"_s));
    if (kind == "unasked"_L1)
        return deliver({u"viewer"_s}, textTag(u"Hello %1"_s.arg(number)));
    if (kind == "unusable"_L1)
        return deliver({}, textTag(u"Hello %1"_s.arg(number)));
    return deliver({u"viewer"_s}, number == 0 ? QByteArray() : QByteArray("\xd0\x00\x00", 3));
}

void TestSession::requestsOfOneTargetGetTheirOwnAnswers_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const QStringList kinds{u"pairing"_s, u"asked"_s, u"unasked"_s, u"unusable"_s, u"empty"_s};
    for (const QString &first : kinds)
        for (const QString &second : kinds)
            QTest::addRow("%s, %s", qPrintable(first), qPrintable(second))
                << first << (first == "asked"_L1 && second == first ? u"asked again"_s : second);
}

void TestSession::requestsOfOneTargetGetTheirOwnAnswers()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    FakeFace face;
    FakeOhm ohm;
    FakeHandler viewer;
    viewer.start();
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    const QStringList kinds{first, second};
    const QList<int> calls{ask(first, 0), ask(second, 1)};

    // The user grants what comes first and refuses what comes second; notices are read away.
    const auto isAsked = [](const QString &kind) {
        return kind == "pairing"_L1 || kind.startsWith("asked"_L1);
    };
    QList<Answer::Choice> answers;
    for (int i = 0; i < 2; ++i)
        if (isAsked(kinds[i]))
            answers.append(i == 0 ? Answer::Yes : Answer::No);
    for (const Answer::Choice answer : std::as_const(answers)) {
        QTRY_VERIFY(face.shown && face.shown->kind != Question::EmptyTag &&
                    face.shown->kind != Question::UnreadableTag);
        face.answer(answer);
    }

    QTRY_COMPARE(daemon.replies().size(), 2);
    for (const FakeReply &reply : daemon.replies()) {
        const auto number = calls.indexOf(reply.id);
        const QString kind = kinds[number];
        const bool isGranted = isAsked(kind) ? number == 0 : kind != "unusable"_L1;
        QCOMPARE(reply.error, isGranted ? QString() : u"com.tavix.nfc.UIAgent.Rejected"_s);
    }
    QCOMPARE(daemon.replies()[0].id, calls[0]);
    QCOMPARE(viewer.calls(u"NDEFData"_s).size(),
             (first == "unasked"_L1 || first == "asked"_L1 ? 1 : 0) + (second == "unasked"_L1 ? 1 : 0));
}

QTEST_GUILESS_MAIN(TestSession)
#include "tst_session.moc"
