// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include "agentprocess.h"
#include "daemon/handler.h"
#include "foreigncard.h"
#include "heldtag.h"
#include "introspection.h"
#include "otherprogram.h"
#include "pcscdaemon.h"
#include "readers.h"
#include "virtualtype2.h"
#include "virtualtype4.h"

using namespace std::chrono_literals;

namespace {

const QString delivery = QStringLiteral("RequestNDEFDataDelivery");
const QString touch = QStringLiteral("NotifyTouch");
const QByteArray webLink = QByteArray::fromHex("d1010455036f7267");
const QByteArray text = QByteArray::fromHex("d10105540265654869");

// The daemon has let go of the tag before: no hand is as quick as a program, nor does pcscd expect one to be.
VirtualTag &unhurried(VirtualTag &tag)
{
    constexpr int watching = 1;
    if (!QTest::qWaitFor([] { return Readers::connectionsToPcscd() <= watching; }, 20000))
        qFatal("the daemon does not let go of a tag");
    return tag;
}

std::unique_ptr<VirtualTag> tagHolding(bool isType4, const QByteArray &message)
{
    if (isType4)
        return std::make_unique<VirtualType4>(VirtualType4::holding(message));
    return std::make_unique<VirtualType2>(VirtualType2::sticker(message));
}

void addTypes()
{
    QTest::addColumn<bool>("isType4");
    QTest::newRow("type 2") << false;
    QTest::newRow("type 4") << true;
}

} // namespace

class TestNfcdPcsc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void interfacesAreAsPublished_data();
    void interfacesAreAsPublished();
    void secondDaemonLeaves();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void helpIsPrinted();
    void readersAreShown();

    void messageIsDelivered_data();
    void messageIsDelivered();
    void handlersAreOffered();
    void emptyTagIsDeliveredWithoutBytes();
    void faultyTagIsAnnounced_data();
    void faultyTagIsAnnounced();
    void foreignCardGetsNoCommand_data();
    void foreignCardGetsNoCommand();
    void tagGetsNoCommandWhenNobodyCanBeAsked();

    void flappingTagIsAskedAboutOnce();
    void tagThatIsOnlyGlimpsedIsNotAskedAboutAgain();
    void tagWithARandomUidIsKnownByItsMessage();
    void undecidedTouchGoesOn();
    void tagThatComesLaterIsAskedAboutAgain();
    void otherMessageIsAskedAboutAtOnce();
    void touchThatNobodyDecidedIsAskedAboutAgain();
    void questionsAreLimited();
    void tagThatLeavesAtAnyExchangeIsReadNextTime_data();
    void tagThatLeavesAtAnyExchangeIsReadNextTime();

    void switchedOffDaemonHoldsNoReader();
    void switchingOffEndsTheReading();

    void writtenMessageIsReadBack_data();
    void writtenMessageIsReadBack();
    void tagThatCannotBeWrittenIsTold_data();
    void tagThatCannotBeWrittenIsTold();
    void tornTagIsEmptyAndTold();
    void messageWaitsWhenTheTagLeavesUntouched();
    void messageWaitsWhenAnotherProgramHasTheTag();
    void canceledMessageIsNotWrittenWhenAnotherProgramLetsGo_data();
    void canceledMessageIsNotWrittenWhenAnotherProgramLetsGo();
    void tagThatLeavesAtAnyExchangeIsWrittenNextTime_data();
    void tagThatLeavesAtAnyExchangeIsWrittenNextTime();
    void foreignCardDoesNotEndTheWriting();
    void hangingTagEndsTheWriting();

private:
    void startWithAgent();
    int calls(const QString &member) { return int(agent->calls(member).size()); }
    FakeReply answerOf(int call);
    int write(const QByteArray &message);

    PcscDaemon daemon;
    std::unique_ptr<AgentProcess> agent;
};

void TestNfcdPcsc::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
    qRegisterMetaType<QDBusVariant>();
}

void TestNfcdPcsc::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    Readers::waitUntilEmpty();
}

void TestNfcdPcsc::cleanup()
{
    agent.reset();
    daemon.kill();
}

void TestNfcdPcsc::startWithAgent()
{
    daemon.startWithReaders();
    agent = std::make_unique<AgentProcess>();
    agent->hold(delivery);
    QCOMPARE(agent->registerAgent().error, QString());
}

FakeReply TestNfcdPcsc::answerOf(int call)
{
    FakeReply answer;
    const auto hasAnswer = [this, call, &answer] {
        for (const FakeReply &candidate : agent->replies())
            if (candidate.id == call)
                answer = candidate;
        return answer.id == call;
    };
    // PCSC lite may look at a reader only after a minute.
    if (!QTest::qWaitFor(hasAnswer, 2 * Readers::patience))
        answer.error = QStringLiteral("no answer");
    return answer;
}

// Returns the number of the call when the daemon has accepted it.
int TestNfcdPcsc::write(const QByteArray &message)
{
    const int call =
        agent->call(QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
                    QStringLiteral("com.tavix.nfc.TagWriter"), QStringLiteral("WriteNdef"), {message});
    // The calls of one caller are carried out in their order.
    agent->registerAgent();
    return call;
}

void TestNfcdPcsc::interfacesAreAsPublished_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("com.tavix.nfc.Manager") << QStringLiteral("/");
    QTest::newRow("com.tavix.nfc.Adapter") << QStringLiteral("/com/tavix/nfc/adapter0");
    QTest::newRow("com.tavix.nfc.TagWriter") << QStringLiteral("/com/tavix/nfc/adapter0");
}

void TestNfcdPcsc::interfacesAreAsPublished()
{
    QFETCH(QString, path);
    const QString interface = QString::fromLatin1(QTest::currentDataTag());
    daemon.start();
    const QStringList published = Introspection::publishedMembers(interface);
    QVERIFY(!published.isEmpty());
    QCOMPARE(Introspection::daemonMembers(path, interface), published);
}

void TestNfcdPcsc::secondDaemonLeaves()
{
    daemon.start();
    QProcess second;
    second.start(QStringLiteral(NFCD_PCSC), QStringList());
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 1);
    QVERIFY(second.readAllStandardError().contains("nfcd-pcsc: com.tavix.nfc belongs to another process\n"));
}

void TestNfcdPcsc::badArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--reader")};
    QTest::newRow("folder without a name") << QStringList{QStringLiteral("--handlers"), QString()};
    QTest::newRow("argument") << QStringList{QStringLiteral("reader")};
}

void TestNfcdPcsc::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    QProcess program;
    program.start(QStringLiteral(NFCD_PCSC), arguments);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 64);
    QVERIFY(program.readAllStandardError().startsWith("nfcd-pcsc: "));
}

void TestNfcdPcsc::helpIsPrinted()
{
    QProcess program;
    program.start(QStringLiteral(NFCD_PCSC), {QStringLiteral("--help")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 0);
    const QByteArray help = program.readAllStandardOutput().simplified();
    QVERIFY(help.contains("--handlers <folder> "));
    QVERIFY(
        help.contains("Exit codes: 0 the bus disconnected, 1 no system bus, or the name belongs to another "
                      "process, 64 invalid arguments."));
}

void TestNfcdPcsc::readersAreShown()
{
    daemon.startWithReaders();
    QCOMPARE(daemon.readers(), (QStringList{QStringLiteral("Virtual reader 0 00 00"),
                                            QStringLiteral("Virtual reader 1 01 00")}));
    QCOMPARE(daemon.backend(), QStringLiteral("ready"));
}

void TestNfcdPcsc::messageIsDelivered_data()
{
    QTest::addColumn<bool>("isType4");
    QTest::addColumn<int>("reader");
    QTest::newRow("type 2") << false << 0;
    QTest::newRow("type 4") << true << 0;
    QTest::newRow("on the second reader") << false << 1;
}

void TestNfcdPcsc::messageIsDelivered()
{
    QFETCH(bool, isType4);
    QFETCH(int, reader);
    startWithAgent();
    VirtualType2 type2 = VirtualType2::sticker(webLink);
    VirtualType4 type4 = VirtualType4::holding(webLink);
    const HeldTag held(isType4 ? static_cast<VirtualTag &>(type4) : type2, reader);
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    const QVariantList told = agent->calls(touch).constFirst().arguments;
    const QVariantList asked = agent->calls(delivery).constFirst().arguments;
    QCOMPARE(told.at(1).toString(), QStringLiteral("ok"));
    QCOMPARE(told.at(0), asked.at(1));
    QCOMPARE(asked.at(2).toByteArray(), webLink);
    QCOMPARE(agent->members().filter(QRegularExpression(QStringLiteral("^(Request|Notify)"))),
             (QStringList{touch, delivery}));
}

void TestNfcdPcsc::handlersAreOffered()
{
    QDir folder(qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/connui-nfc/handlers"));
    QVERIFY(folder.mkpath(QStringLiteral(".")));
    const auto clean = qScopeGuard([&folder] { folder.removeRecursively(); });
    QFile file(folder.filePath(QStringLiteral("links.handler")));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("[Handler]\nApplicationId=links\nService=org.connui.Links\nPath=/links\nTakes=uri:*\n");
    file.close();
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    const auto offered =
        qdbus_cast<QList<Handler>>(agent->calls(delivery).constFirst().arguments.constFirst());
    QCOMPARE(offered.size(), 1);
    QCOMPARE(offered.constFirst().applicationId, QStringLiteral("links"));
}

void TestNfcdPcsc::emptyTagIsDeliveredWithoutBytes()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::formatted(QByteArray::fromHex("0300fe"));
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    QCOMPARE(agent->calls(delivery).constFirst().arguments.at(2).toByteArray(), QByteArray());
    QCOMPARE(agent->calls(touch).constFirst().arguments.at(1).toString(), QStringLiteral("ok"));
}

void TestNfcdPcsc::faultyTagIsAnnounced_data()
{
    QTest::addColumn<QByteArray>("memory");
    QTest::addColumn<QByteArray>("atr");
    QTest::addColumn<QString>("status");
    const QByteArray header = QByteArray::fromHex("04a1b29fc3d4e5f602480000");
    QTest::newRow("no message in it")
        << header + QByteArray::fromHex("e1100600030141fe") + QByteArray(44, '\0') << QByteArray()
        << QStringLiteral("malformed-content");
    QTest::newRow("not formatted") << header + QByteArray(52, '\0') << QByteArray()
                                   << QStringLiteral("unsupported-tag-type");
    QTest::newRow("Classic") << QByteArray()
                             << QByteArray::fromHex("3b8f8001804f0ca000000306030001000000006a")
                             << QStringLiteral("unsupported-tag-type");
}

void TestNfcdPcsc::faultyTagIsAnnounced()
{
    QFETCH(QByteArray, memory);
    QFETCH(QByteArray, atr);
    QFETCH(QString, status);
    startWithAgent();
    VirtualType2 tag(memory);
    ForeignCard card(atr);
    HeldTag held(atr.isEmpty() ? static_cast<VirtualTag &>(tag) : card);
    QTRY_COMPARE_WITH_TIMEOUT(calls(touch), 1, Readers::patience);
    QCOMPARE(agent->calls(touch).constFirst().arguments.at(1).toString(), status);
    QCOMPARE(calls(delivery), 0);
    if (!atr.isEmpty())
        QCOMPARE(held.commands(), 0);
}

void TestNfcdPcsc::foreignCardGetsNoCommand_data()
{
    QTest::addColumn<QByteArray>("atr");
    QTest::newRow("contact card") << QByteArray::fromHex("3b6500002063cb6800");
    QTest::newRow("security key") << QByteArray::fromHex("3b8d800180730021c057597562694b657940");
    QTest::newRow("bank card") << QByteArray::fromHex("3b8e800180318066b08412016e01830090002e");
    QTest::newRow("passport") << QByteArray::fromHex("3b88800100000000338181003a");
}

void TestNfcdPcsc::foreignCardGetsNoCommand()
{
    QFETCH(QByteArray, atr);
    startWithAgent();
    ForeignCard card(atr);
    // The other program is first.
    daemon.setStopped(true);
    const HeldTag held(card, 0);
    Readers::waitForCard(0);
    const OtherProgram other(OtherProgram::Sharing);
    daemon.setStopped(false);
    QTRY_VERIFY_WITH_TIMEOUT(
        daemon.log().contains(QStringLiteral("is left alone: ") + QString::fromLatin1(atr.toHex())),
        Readers::patience);
    // Time for a command: a tag that comes later has had its question.
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const HeldTag later(tag, 1);
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    QCOMPARE(held.commands(), 0);
    QVERIFY(!other.findsAReset());
    QCOMPARE(calls(touch), 1);
}

void TestNfcdPcsc::tagGetsNoCommandWhenNobodyCanBeAsked()
{
    daemon.startWithReaders();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    HeldTag held(unhurried(tag), 0);
    QTRY_VERIFY_WITH_TIMEOUT(daemon.log().contains(QStringLiteral(
                                 "no client can be asked about the tag on Virtual reader 0 00 00")),
                             Readers::patience);
    agent = std::make_unique<AgentProcess>();
    agent->hold(delivery);
    QCOMPARE(agent->registerAgent().error, QString());
    VirtualType2 other = VirtualType2::sticker(text);
    const HeldTag later(unhurried(other), 1);
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    QCOMPARE(held.commands(), 0);
}

void TestNfcdPcsc::flappingTagIsAskedAboutOnce()
{
    startWithAgent();
    agent->release(delivery);
    VirtualType2 tag = VirtualType2::sticker(webLink);
    for (int i = 0; i < 20; ++i) {
        HeldTag held(unhurried(tag), {i % 4 == 3 ? 2 : -1, -1, {}});
        QTRY_VERIFY_WITH_TIMEOUT(held.commands() >= 3, Readers::patience);
    }
    VirtualType2 other = VirtualType2::sticker(text);
    other.setUid(QByteArray::fromHex("04010203040506"));
    const HeldTag last(unhurried(other));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 2, Readers::patience);
    QCOMPARE(agent->calls(delivery).at(1).arguments.at(2).toByteArray(), text);
    QCOMPARE(calls(touch), 2);
}

void TestNfcdPcsc::tagThatIsOnlyGlimpsedIsNotAskedAboutAgain()
{
    startWithAgent();
    agent->release(delivery);
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        const HeldTag held(tag);
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    }
    // For longer than a touch is remembered.
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 2500) {
        const HeldTag held(unhurried(tag), {2, -1, {}});
        QTRY_VERIFY_WITH_TIMEOUT(held.commands() >= 3, Readers::patience);
    }
    const HeldTag held(unhurried(tag));
    QTRY_VERIFY_WITH_TIMEOUT(held.commands() >= 3, Readers::patience);
    VirtualType2 other = VirtualType2::sticker(text);
    const HeldTag last(unhurried(other), 1);
    QTRY_COMPARE_WITH_TIMEOUT(calls(touch), 2, Readers::patience);
    QCOMPARE(agent->calls(delivery).at(1).arguments.at(2).toByteArray(), text);
}

void TestNfcdPcsc::tagWithARandomUidIsKnownByItsMessage()
{
    startWithAgent();
    agent->release(delivery);
    VirtualType2 tag = VirtualType2::sticker(webLink);
    for (int i = 0; i < 5; ++i) {
        tag.setUid(QByteArray::fromHex("080102") + char(i));
        HeldTag held(unhurried(tag));
        QTRY_VERIFY_WITH_TIMEOUT(held.commands() >= 3, Readers::patience);
    }
    VirtualType2 other = VirtualType2::sticker(text);
    other.setUid(QByteArray::fromHex("08010203"));
    const HeldTag last(unhurried(other));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 2, Readers::patience);
    QCOMPARE(agent->calls(delivery).at(1).arguments.at(2).toByteArray(), text);
}

void TestNfcdPcsc::undecidedTouchGoesOn()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        const HeldTag held(unhurried(tag));
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    }
    QTest::qWait(2500);
    {
        HeldTag held(unhurried(tag));
        QTRY_VERIFY_WITH_TIMEOUT(held.commands() >= 3, Readers::patience);
    }
    VirtualType2 other = VirtualType2::sticker(text);
    const HeldTag last(unhurried(other));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 2, Readers::patience);
    QCOMPARE(agent->calls(delivery).at(1).arguments.at(2).toByteArray(), text);
}

void TestNfcdPcsc::tagThatComesLaterIsAskedAboutAgain()
{
    startWithAgent();
    agent->release(delivery);
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        const HeldTag held(unhurried(tag));
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    }
    QTest::qWait(2500);
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 2, Readers::patience);
}

void TestNfcdPcsc::otherMessageIsAskedAboutAtOnce()
{
    startWithAgent();
    agent->release(delivery);
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        const HeldTag held(unhurried(tag));
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    }
    tag.memory = VirtualType2::sticker(text).memory;
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 2, Readers::patience);
}

void TestNfcdPcsc::touchThatNobodyDecidedIsAskedAboutAgain()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        const HeldTag held(unhurried(tag));
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    }
    agent = std::make_unique<AgentProcess>(QStringLiteral("org.connui.test.NextClient"));
    QTRY_COMPARE_WITH_TIMEOUT(agent->registerAgent().error, QString(), Readers::patience);
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
}

void TestNfcdPcsc::questionsAreLimited()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    for (int i = 0; i < 20; ++i) {
        tag.setUid(QByteArray::fromHex("040102030405") + char(i));
        HeldTag held(unhurried(tag));
        QTRY_VERIFY_WITH_TIMEOUT(held.commands() >= 3, Readers::patience);
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), std::min(i + 1, 16), Readers::patience);
    }
    agent->release(delivery);
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 16, Readers::patience);
    tag.setUid(QByteArray::fromHex("04aaaaaaaaaaaa"));
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 17, Readers::patience);
}

void TestNfcdPcsc::tagThatLeavesAtAnyExchangeIsReadNextTime_data()
{
    addTypes();
}

void TestNfcdPcsc::tagThatLeavesAtAnyExchangeIsReadNextTime()
{
    QFETCH(bool, isType4);
    startWithAgent();
    agent->release(delivery);
    int exchanges = 1;
    for (int i = 0; i < exchanges; ++i) {
        const QByteArray message = text.chopped(1) + char('a' + i);
        const std::unique_ptr<VirtualTag> tag = tagHolding(isType4, message);
        {
            HeldTag torn(unhurried(*tag), {i, -1, {}});
            QTRY_COMPARE_WITH_TIMEOUT(torn.commands(), i + 1, Readers::patience);
        }
        HeldTag held(unhurried(*tag));
        QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), i + 1, Readers::patience);
        QCOMPARE(agent->calls(delivery).constLast().arguments.at(2).toByteArray(), message);
        exchanges = held.commands();
    }
    QVERIFY(exchanges >= 3);
    QCOMPARE(calls(touch), exchanges);
}

void TestNfcdPcsc::switchedOffDaemonHoldsNoReader()
{
    startWithAgent();
    daemon.setPowered(false);
    QCOMPARE(daemon.readers(), QStringList());
    QCOMPARE(daemon.backend(), QStringLiteral("off"));
    QCOMPARE(daemon.properties().value(QStringLiteral("State")).toString(), QStringLiteral("off"));
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        HeldTag held(unhurried(tag));
        Readers::waitForCard(0);
        QCOMPARE(held.commands(), 0);
    }
    QTRY_COMPARE_WITH_TIMEOUT(Readers::connectionsToPcscd(), 0, Readers::patience);
    daemon.setPowered(true);
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, Readers::patience);
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
}

void TestNfcdPcsc::switchingOffEndsTheReading()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    {
        HeldTag held(unhurried(tag), {-1, 1, 1s});
        QTRY_COMPARE_WITH_TIMEOUT(held.commands(), 2, Readers::patience);
        daemon.setPowered(false);
        QTRY_COMPARE_WITH_TIMEOUT(Readers::connectionsToPcscd(), 0, Readers::patience);
        QCOMPARE(held.commands(), 2);
    }
    daemon.setPowered(true);
    QTRY_COMPARE_WITH_TIMEOUT(daemon.readers().size(), 2, Readers::patience);
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    QCOMPARE(calls(touch), 1);
}

void TestNfcdPcsc::writtenMessageIsReadBack_data()
{
    QTest::addColumn<bool>("isType4");
    QTest::newRow("type 2") << false;
    QTest::newRow("type 4") << true;
}

void TestNfcdPcsc::writtenMessageIsReadBack()
{
    QFETCH(bool, isType4);
    startWithAgent();
    VirtualType2 type2 = VirtualType2::sticker(webLink);
    VirtualType4 type4 = VirtualType4::holding(webLink);
    VirtualTag &tag = isType4 ? static_cast<VirtualTag &>(type4) : type2;
    const int call = write(text);
    {
        const HeldTag held(unhurried(tag));
        const FakeReply answer = answerOf(call);
        QCOMPARE(answer.error, QString());
    }
    const QByteArray memory = isType4 ? type4.files.value(VirtualType4::messageFile) : type2.memory;
    QVERIFY(memory.contains(text));
    // It is announced, but nobody needs to be asked; not even when it flaps.
    QTRY_COMPARE_WITH_TIMEOUT(calls(touch), 1, Readers::patience);
    QCOMPARE(agent->calls(touch).constFirst().arguments.at(1).toString(), QStringLiteral("ok"));
    {
        HeldTag again(unhurried(tag));
        QTRY_VERIFY_WITH_TIMEOUT(again.commands() >= 3, Readers::patience);
    }
    VirtualType2 other = VirtualType2::sticker(webLink);
    const HeldTag last(unhurried(other));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    QCOMPARE(agent->calls(delivery).constFirst().arguments.at(2).toByteArray(), webLink);
}

void TestNfcdPcsc::tagThatCannotBeWrittenIsTold_data()
{
    QTest::addColumn<QByteArray>("capabilities");
    QTest::addColumn<QString>("atr");
    QTest::addColumn<QString>("error");
    QTest::newRow("read-only") << QByteArray::fromHex("e110120f") << QString() << QStringLiteral("ReadOnly");
    QTest::newRow("too small") << QByteArray::fromHex("e1100100") << QString() << QStringLiteral("TooSmall");
    QTest::newRow("not formatted") << QByteArray::fromHex("00000000") << QString()
                                   << QStringLiteral("NotFormatted");
    QTest::newRow("other version") << QByteArray::fromHex("e1501200") << QString()
                                   << QStringLiteral("Unsupported");
    QTest::newRow("Classic") << QByteArray() << QStringLiteral("3b8f8001804f0ca000000306030001000000006a")
                             << QStringLiteral("Unsupported");
}

void TestNfcdPcsc::tagThatCannotBeWrittenIsTold()
{
    QFETCH(QByteArray, capabilities);
    QFETCH(QString, atr);
    QFETCH(QString, error);
    startWithAgent();
    VirtualType2 tag = VirtualType2::formatted(QByteArray::fromHex("0300fe"));
    tag.memory.replace(12, capabilities.size(), capabilities);
    const QByteArray memory = tag.memory;
    ForeignCard card(QByteArray::fromHex(atr.toLatin1()));
    const int call = write(text);
    {
        const HeldTag held(atr.isEmpty() ? static_cast<VirtualTag &>(tag) : card);
        QCOMPARE(answerOf(call).error, QStringLiteral("com.tavix.nfc.Error.") + error);
    }
    QCOMPARE(tag.memory, memory);
    QCOMPARE(calls(delivery), 0);
}

void TestNfcdPcsc::tornTagIsEmptyAndTold()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const int call = write(text);
    {
        // Commands 0 and 1 read; the next clears the length, and the one after that is the first of the
        // value.
        const HeldTag held(unhurried(tag), {4, -1, {}});
        QCOMPARE(answerOf(call).error, QStringLiteral("com.tavix.nfc.Error.Removed"));
    }
    const HeldTag held(unhurried(tag));
    QTRY_COMPARE_WITH_TIMEOUT(calls(delivery), 1, Readers::patience);
    QCOMPARE(agent->calls(delivery).constFirst().arguments.at(2).toByteArray(), QByteArray());
}

void TestNfcdPcsc::messageWaitsWhenTheTagLeavesUntouched()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const int call = write(text);
    for (int i = 0; i < 2; ++i) {
        HeldTag held(unhurried(tag), {i, -1, {}});
        QTRY_COMPARE_WITH_TIMEOUT(held.commands(), i + 1, Readers::patience);
        held.leave();
        QVERIFY(tag.memory.contains(webLink));
    }
    const HeldTag held(unhurried(tag));
    QCOMPARE(answerOf(call).error, QString());
}

void TestNfcdPcsc::messageWaitsWhenAnotherProgramHasTheTag()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const int call = write(text);
    {
        // The other program is first.
        unhurried(tag);
        daemon.setStopped(true);
        HeldTag held(tag);
        Readers::waitForCard(0);
        const OtherProgram other(OtherProgram::InTransaction);
        daemon.setStopped(false);
        // The daemon's second one is for the card. It was stopped, and PCSC lite may look again only after a
        // minute.
        QTRY_COMPARE_WITH_TIMEOUT(Readers::connectionsToPcscd(), 3, 2 * Readers::patience);
        QCOMPARE(held.commands(), 0);
        // Before the other program lets go.
        held.leave();
    }
    const HeldTag held(unhurried(tag));
    QCOMPARE(answerOf(call).error, QString());
    QVERIFY(tag.memory.contains(text));
}

void TestNfcdPcsc::canceledMessageIsNotWrittenWhenAnotherProgramLetsGo_data()
{
    QTest::addColumn<bool>("callerLeaves");
    QTest::newRow("Cancel") << false;
    QTest::newRow("the caller leaves") << true;
}

void TestNfcdPcsc::canceledMessageIsNotWrittenWhenAnotherProgramLetsGo()
{
    QFETCH(bool, callerLeaves);
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const int call = write(text);
    unhurried(tag);
    // The other program is first.
    daemon.setStopped(true);
    HeldTag held(tag);
    Readers::waitForCard(0);
    // Until pcscd has closed ours, it is counted too.
    QTRY_COMPARE_WITH_TIMEOUT(Readers::connectionsToPcscd(), 1, Readers::patience);
    {
        const OtherProgram other(OtherProgram::InTransaction);
        daemon.setStopped(false);
        QTRY_COMPARE_WITH_TIMEOUT(Readers::connectionsToPcscd(), 3, 2 * Readers::patience);
        if (callerLeaves) {
            agent = std::make_unique<AgentProcess>(QStringLiteral("org.connui.test.NextClient"));
            QTRY_COMPARE_WITH_TIMEOUT(agent->registerAgent().error, QString(), Readers::patience);
        } else {
            agent->call(QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
                        QStringLiteral("com.tavix.nfc.TagWriter"), QStringLiteral("Cancel"));
            QCOMPARE(answerOf(call).error, QStringLiteral("com.tavix.nfc.Error.Canceled"));
        }
    }
    // Time for a command: a tag that comes later is written.
    VirtualType2 other = VirtualType2::sticker(webLink);
    const int next = write(text);
    const HeldTag later(other, 1);
    QCOMPARE(answerOf(next).error, QString());
    QCOMPARE(held.commands(), 0);
    held.leave();
    QVERIFY(tag.memory.contains(webLink));
}

void TestNfcdPcsc::tagThatLeavesAtAnyExchangeIsWrittenNextTime_data()
{
    addTypes();
}

// Until it is touched it keeps what it has; from then on it is empty until it is written.
void TestNfcdPcsc::tagThatLeavesAtAnyExchangeIsWrittenNextTime()
{
    QFETCH(bool, isType4);
    startWithAgent();
    agent->release(delivery);
    int exchanges = 0;
    {
        const std::unique_ptr<VirtualTag> tag = tagHolding(isType4, webLink);
        const int call = write(text);
        const HeldTag held(*tag);
        QCOMPARE(answerOf(call).error, QString());
        unhurried(*tag);
        exchanges = held.commands();
    }
    for (int i = 0; i < exchanges; ++i) {
        const std::unique_ptr<VirtualTag> tag = tagHolding(isType4, webLink);
        const int call = write(text);
        {
            HeldTag torn(unhurried(*tag), {i, -1, {}});
            QTRY_COMPARE_WITH_TIMEOUT(torn.commands(), i + 1, Readers::patience);
        }
        QString error;
        {
            const HeldTag held(unhurried(*tag));
            error = answerOf(call).error;
            unhurried(*tag);
        }
        if (error.isEmpty())
            continue;
        QCOMPARE(error, QStringLiteral("com.tavix.nfc.Error.Removed"));
        const int again = write(text);
        const HeldTag held(unhurried(*tag));
        QCOMPARE(answerOf(again).error, QString());
    }
    QVERIFY(exchanges > 6);
    // Half a message would be malformed.
    const QList<FakeCall> touches = agent->calls(touch);
    for (const FakeCall &told : touches)
        QCOMPARE(told.arguments.at(1).toString(), QStringLiteral("ok"));
    const QList<FakeCall> deliveries = agent->calls(delivery);
    for (const FakeCall &asked : deliveries) {
        const QByteArray bytes = asked.arguments.at(2).toByteArray();
        QVERIFY2(bytes.isEmpty() || bytes == webLink || bytes == text, bytes.toHex().constData());
    }
}

void TestNfcdPcsc::foreignCardDoesNotEndTheWriting()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const int call = write(text);
    {
        ForeignCard card(QByteArray::fromHex("3b6500002063cb6800"));
        HeldTag held(unhurried(card));
        QTRY_VERIFY_WITH_TIMEOUT(daemon.log().contains(QStringLiteral("is left alone")), Readers::patience);
        QCOMPARE(held.commands(), 0);
    }
    const HeldTag held(unhurried(tag));
    QCOMPARE(answerOf(call).error, QString());
}

void TestNfcdPcsc::hangingTagEndsTheWriting()
{
    startWithAgent();
    VirtualType2 tag = VirtualType2::sticker(webLink);
    const int call = write(text);
    const HeldTag held(unhurried(tag), {-1, 2, 8s});
    QCOMPARE(answerOf(call).error, QStringLiteral("com.tavix.nfc.Error.WriteFailed"));
}

QTEST_GUILESS_MAIN(TestNfcdPcsc)

#include "tst_nfcdpcsc.moc"
