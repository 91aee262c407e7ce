// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusVariant>
#include <QFile>
#include <QLoggingCategory>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <NdefMessageHandler>
#include <RadioState>

#include "catalogue.h"
#include "core/session.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "handlerlist.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::RadioState;
namespace {

const QDBusObjectPath target(QStringLiteral("/target"));

QByteArray textTag(const QString &text)
{
    QNdefNfcTextRecord record;
    record.setText(text);
    return QNdefMessage(record).toByteArray();
}

QByteArray notesTag()
{
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType("application/x-notes");
    record.setPayload("notes");
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

// The data of a handover to the peer.
QVariant handover(const QString &peer)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << QDBusObjectPath(QStringLiteral("/carrier")) << peer;
    argument.endStructure();
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(argument)));
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
    void contactsThatAnEndedClientLeftGo();
    void applicationInFrontIsFollowedOnce();
    void firstHandlerOfTheApplicationInFrontGetsIt();
    void lockedSessionShowsAndForwardsNothing();
    void choiceThatWasNotOfferedIsRejected_data();
    void choiceThatWasNotOfferedIsRejected();
    void requestsOfOneTargetGetTheirOwnAnswers_data();
    void requestsOfOneTargetGetTheirOwnAnswers();
    void eachPeerThatGetsAFileIsAskedAbout_data();
    void eachPeerThatGetsAFileIsAskedAbout();
    void samePeerIsAskedAboutOnce();

private:
    QString agentPath();
    int share(const QString &peer, const QString &file);
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
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    daemon.kill();
    // Nobody switches it off: daemons come and go quickly here.
    RadioState(RadioState::NFC).setEnabled(false);
    daemon.start();
}

QString TestSession::agentPath()
{
    return qdbus_cast<QDBusObjectPath>(
               daemon.calls(QStringLiteral("RegisterUIAgent")).constLast().arguments[0])
        .path();
}

void TestSession::contactsThatAnEndedClientLeftGo()
{
    const QTemporaryDir folder;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    const auto restore = qScopeGuard([&before] { qputenv("TMPDIR", before); });
    QProcess ended;
    ended.start(QStringLiteral("true"), {});
    const qint64 client = ended.processId();
    QVERIFY(ended.waitForFinished());
    QFile left(folder.filePath(QStringLiteral("contact-%1-ABCDEF.vcf").arg(client)));
    QVERIFY(left.open(QIODevice::WriteOnly));

    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(!left.exists());
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
    daemon.fail(QStringLiteral("RegisterUIAgent"), QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"),
                QStringLiteral("no"));
    const Session session(&face);
    QSignalSpy changed(&session, &Session::registeredChanged);
    QTest::ignoreMessage(QtWarningMsg,
                         "The NFC daemon does not take the agent: "
                         "org.freedesktop.DBus.Error.AccessDenied: no; trying again in 1000 ms");
    QTRY_COMPARE(daemon.calls(QStringLiteral("RegisterUIAgent")).size(), 1);
    daemon.reply(QStringLiteral("RegisterUIAgent"));
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
    const QString before = agentPath();
    // All of this is there before the client hears of any.
    daemon.callAgent(before, QStringLiteral("Release"));
    daemon.stop();
    daemon.start();
    QTRY_COMPARE(changed.size(), 3);
    QVERIFY(session.isRegistered());

    // And this only when the next daemon knows the next agent. It is dealt with before the question.
    daemon.callAgent(before, QStringLiteral("Release"));
    daemon.callAgent(
        agentPath(), QStringLiteral("RequestBTPairing"),
        {QVariant::fromValue(target), QStringLiteral("00:11"), QStringLiteral("Headset"), 0u, QString()});
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
    daemon.callAgent(agentPath(), QStringLiteral("Release"));
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
    QTRY_COMPARE(ohm.calls(QStringLiteral("Subscribe")).size(), 1);
    QCOMPARE(daemon.calls(QStringLiteral("RegisterUIAgent")).size(), 1);
    for (int i = 0; i < 3; ++i) {
        ask(QStringLiteral("unasked"), i);
        QTRY_COMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), i + 1);
    }
    QCOMPARE(ohm.calls(QStringLiteral("Subscribe")).size(), 1);
    QCOMPARE(ohm.calls(QStringLiteral("Unsubscribe")).size(), 0);
}

void TestSession::firstHandlerOfTheApplicationInFrontGetsIt()
{
    FakeFace face;
    FakeOhm ohm;
    FakeHandler viewer;
    viewer.start();
    const uint process = QDBusConnection::sessionBus().interface()->servicePid(viewer.service());
    ohm.setActive(QStringLiteral("viewer"), QString(), QString(), process);
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    QTRY_COMPARE(ohm.calls(QStringLiteral("Subscribe")).size(), 1);
    const QStringList applications{QStringLiteral("first"), QStringLiteral("second"),
                                   QStringLiteral("third")};
    QLoggingCategory::setFilterRules(QStringLiteral("connui.nfc-ui.info=true"));
    const auto restore = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
    const QString forwarded = QStringLiteral("%1 goes to first unasked").arg(target.path());
    QTest::ignoreMessage(QtInfoMsg, qPrintable(forwarded));
    daemon.callAgent(agentPath(), QStringLiteral("RequestNDEFDataDelivery"),
                     {handlerList(applications), QVariant::fromValue(target), linkTag() + QByteArray()});
    QTRY_COMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 1);
    QVERIFY(!face.shown);
}

void TestSession::lockedSessionShowsAndForwardsNothing()
{
    FakeService saver(QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.ScreenSaver"));
    saver.reply(QStringLiteral("GetActive"), {true});
    saver.start();
    FakeFace face;
    FakeOhm ohm;
    FakeHandler viewer;
    viewer.start();
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    QTRY_COMPARE(saver.calls(QStringLiteral("GetActive")).size(), 1);
    ask(QStringLiteral("unasked"), 0);
    // The daemon notifies nobody else: when this has been dealt with, so has what came before.
    daemon.callAgent(agentPath(), QStringLiteral("NotifyTouch"),
                     {QVariant::fromValue(target), QStringLiteral("ok")});
    QTRY_COMPARE(daemon.replies().size(), 1);
    QVERIFY(!face.shown);
    QCOMPARE(face.touches, 0);

    saver.emitSignal(QStringLiteral("/org/freedesktop/ScreenSaver"), saver.service(),
                     QStringLiteral("ActiveChanged"), {false});
    // It came while nobody was there to see it, so it is asked about.
    QTRY_VERIFY(face.shown);
    QCOMPARE(face.shown->kind, Question::Text);
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 0);
    face.answer(Answer::Yes);
    QTRY_COMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 1);
    daemon.callAgent(agentPath(), QStringLiteral("NotifyTouch"),
                     {QVariant::fromValue(target), QStringLiteral("ok")});
    QTRY_COMPARE(face.touches, 1);
}

int TestSession::share(const QString &peer, const QString &file)
{
    return daemon.callAgent(agentPath(), QStringLiteral("RequestSharingPermission"),
                            {QStringLiteral("bluetooth"), handover(peer), QStringList{file}});
}

int TestSession::ask(const QString &kind, int number)
{
    const QVariant path = QVariant::fromValue(target);
    if (kind == QLatin1String("pairing"))
        return daemon.callAgent(
            agentPath(), QStringLiteral("RequestBTPairing"),
            {path, QStringLiteral("00:11"), QStringLiteral("Headset %1").arg(number), 0u, QString()});
    const auto deliver = [&](const QStringList &applications, const QByteArray &data) {
        return daemon.callAgent(agentPath(), QStringLiteral("RequestNDEFDataDelivery"),
                                {handlerList(applications), path, data});
    };
    if (kind == QLatin1String("asked"))
        return deliver({QStringLiteral("viewer")}, linkTag() + QByteArray());
    if (kind == QLatin1String("asked again"))
        return deliver({QStringLiteral("viewer"), QStringLiteral("other")}, textTag(QStringLiteral("Hello")));
    if (kind == QLatin1String("unasked"))
        return deliver({QStringLiteral("viewer")}, textTag(QStringLiteral("Hello %1").arg(number)));
    if (kind == QLatin1String("unusable"))
        return deliver({}, textTag(QStringLiteral("Hello %1").arg(number)));
    return deliver({QStringLiteral("viewer")}, number == 0 ? QByteArray() : QByteArray("\xd0\x00\x00", 3));
}

void TestSession::choiceThatWasNotOfferedIsRejected_data()
{
    QTest::addColumn<QString>("choice");
    QTest::newRow("another one") << QStringLiteral("stranger");
    QTest::newRow("in capitals") << QStringLiteral("VIEWER");
    QTest::newRow("none") << QString();
}

// Neither face lets the user choose such an application; should one ever do so, no other application gets
// the data instead.
void TestSession::choiceThatWasNotOfferedIsRejected()
{
    QFETCH(QString, choice);
    FakeFace face;
    FakeOhm ohm;
    FakeHandler viewer;
    viewer.start();
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    const QStringList offered{QStringLiteral("viewer"), QStringLiteral("other")};
    daemon.callAgent(agentPath(), QStringLiteral("RequestNDEFDataDelivery"),
                     {handlerList(offered), QVariant::fromValue(target), notesTag()});
    QTRY_VERIFY(face.shown);
    QCOMPARE(face.shown->applications, offered);

    const QString warning = QStringLiteral("No application '%1' was offered").arg(choice);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    face.answer(Answer::Yes, choice);
    QTRY_COMPARE(daemon.replies().size(), 1);
    QCOMPARE(daemon.replies()[0].error, QStringLiteral("com.tavix.nfc.UIAgent.Rejected"));
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 0);
    QVERIFY(!face.shown);
}

void TestSession::requestsOfOneTargetGetTheirOwnAnswers_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const QStringList kinds{QStringLiteral("pairing"), QStringLiteral("asked"), QStringLiteral("unasked"),
                            QStringLiteral("unusable"), QStringLiteral("empty")};
    for (const QString &first : kinds)
        for (const QString &second : kinds)
            QTest::addRow("%s, %s", qPrintable(first), qPrintable(second))
                << first
                << (first == QLatin1String("asked") && second == first ? QStringLiteral("asked again")
                                                                       : second);
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
        return kind == QLatin1String("pairing") || kind.startsWith(QLatin1String("asked"));
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
        const bool isGranted = isAsked(kind) ? number == 0 : kind != QLatin1String("unusable");
        QCOMPARE(reply.error, isGranted ? QString() : QStringLiteral("com.tavix.nfc.UIAgent.Rejected"));
    }
    QCOMPARE(daemon.replies()[0].id, calls[0]);
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(),
             (first == QLatin1String("unasked") || first == QLatin1String("asked") ? 1 : 0) +
                 (second == QLatin1String("unasked") ? 1 : 0));
}

void TestSession::eachPeerThatGetsAFileIsAskedAbout_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("two addresses") << QStringLiteral("00:11:22:33:44:55")
                                   << QStringLiteral("66:77:88:99:AA:BB");
    QTest::newRow("without addresses") << QString() << QString();
}

void TestSession::eachPeerThatGetsAFileIsAskedAbout()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QTemporaryFile file;
    QVERIFY(file.open());
    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    const QList<int> calls{share(first, file.fileName()), share(second, file.fileName())};
    const auto note = [](const QString &peer) {
        return QStringLiteral("To %1").arg(peer.isEmpty() ? QStringLiteral("unnamed device") : peer);
    };

    QTRY_COMPARE(face.waiting, 1);
    QTRY_VERIFY(face.shown);
    QCOMPARE(face.shown->notes, QStringList{note(first)});
    face.answer(Answer::Yes);
    QTRY_VERIFY(face.shown);
    QCOMPARE(face.shown->notes, QStringList{note(second)});
    QTRY_COMPARE(daemon.replies().size(), 1);
    face.answer(Answer::No);
    QTRY_COMPARE(daemon.replies().size(), 2);
    QCOMPARE(daemon.replies()[0].id, calls[0]);
    QCOMPARE(daemon.replies()[0].error, QString());
    QCOMPARE(daemon.replies()[1].id, calls[1]);
    QCOMPARE(daemon.replies()[1].error, QStringLiteral("com.tavix.nfc.UIAgent.Rejected"));
}

void TestSession::samePeerIsAskedAboutOnce()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    FakeFace face;
    FakeOhm ohm;
    ohm.start();
    const Session session(&face);
    QTRY_VERIFY(session.isRegistered());
    share(QStringLiteral("66:77:88:99:AA:BB"), file.fileName());
    share(QStringLiteral("66:77:88:99:aa:bb"), file.fileName());
    // The calls before this one have been dealt with when it has its reply.
    daemon.callAgent(agentPath(), QStringLiteral("NotifyTouch"),
                     {QVariant::fromValue(target), QStringLiteral("ok")});
    QTRY_COMPARE(daemon.replies().size(), 1);
    QTRY_VERIFY(face.shown);
    QCOMPARE(face.waiting, 0);
    face.answer(Answer::Yes);
    QTRY_COMPARE(daemon.replies().size(), 3);
    QCOMPARE(daemon.replies()[1].error, QString());
    QCOMPARE(daemon.replies()[2].error, QString());
    QVERIFY(!face.shown);
}

QTEST_GUILESS_MAIN(TestSession)
#include "tst_session.moc"
