// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusArgument>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "agentprocess.h"
#include "simulateddaemon.h"
#include "tap.h"
#include "transfernews.h"

using namespace Qt::Literals::StringLiterals;

class TestNfcTap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void lineFeedDoesNotHideInAnArgument_data();
    void lineFeedDoesNotHideInAnArgument();
    void helpListsEveryCommand();
    void lostOutputIsAFailure();
    void noDaemonIsSaid();
    void noAgentIsSaid();
    void switchedOffAdapterNoticesNothing();

    void decisionIsTheExitCode_data();
    void decisionIsTheExitCode();
    void everyTouchAsksTheAgent_data();
    void everyTouchAsksTheAgent();
    void faultyTagsAreAnnounced_data();
    void faultyTagsAreAnnounced();
    void tagHoldsTheseBytes_data();
    void tagHoldsTheseBytes();
    void sameDeviceHasTheSamePath();
    void everyTagHasAPathOfItsOwn();
    void filesAreSharedByTheirFullPath();

    void handoverEndsAreTold_data();
    void handoverEndsAreTold();
    void transferEndsAreTold_data();
    void transferEndsAreTold();
    void transferIsToldFromStartToEnd();
    void slowTransferTakesItsTime();
    void receivedFileIsNamed();
    void canceledTransferEnds();
    void switchingOffEndsTransfers();
    void deathOfTheDaemonIsSaid();
    void releasedAgentIsNotAskedAgain();
    void hangingDaemonAnswersNothing();
    void daemonAnswersAfterItHung();
    void userMayTakeLongerThanTheBus();

private:
    QString file(const QString &name, const QByteArray &content) const;
    bool sees(AgentProcess &client, const QString &member);

    SimulatedDaemon daemon;
    QTemporaryDir folder;
};

void TestNfcTap::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
    qRegisterMetaType<QDBusVariant>();
}

void TestNfcTap::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void TestNfcTap::cleanup()
{
    daemon.kill();
}

QString TestNfcTap::file(const QString &name, const QByteArray &content) const
{
    QFile written(folder.filePath(name));
    if (!written.open(QFile::WriteOnly) || written.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(written.fileName()));
    return written.fileName();
}

bool TestNfcTap::sees(AgentProcess &client, const QString &member)
{
    return QTest::qWaitFor([&client, &member] { return client.members().contains(member); }, 30000);
}

void TestNfcTap::badArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("unknown command") << QStringList{u"throw"_s};
    QTest::newRow("unknown option") << QStringList{u"--tag"_s};
    QTest::newRow("uri without URI") << QStringList{u"uri"_s};
    QTest::newRow("two URIs") << QStringList{u"uri"_s, u"a:b"_s, u"c:d"_s};
    QTest::newRow("no MIME type") << QStringList{u"mime"_s, u"text"_s, QStringLiteral(NFCTAP)};
    QTest::newRow("missing file") << QStringList{u"mime"_s, u"text/plain"_s, u"/missing"_s};
    QTest::newRow("endless file") << QStringList{u"mime"_s, u"text/plain"_s, u"/dev/zero"_s};
    QTest::newRow("file that is larger than any tag")
        << QStringList{u"message"_s, file(u"large.ndef"_s, QByteArray((1 << 20) + 1, '\0'))};
    QTest::newRow("file that cannot be read") << QStringList{u"message"_s, u"/proc/self/mem"_s};
    QTest::newRow("folder") << QStringList{u"message"_s, folder.path()};
    QTest::newRow("missing message") << QStringList{u"message"_s, u"/missing.ndef"_s};
    QTest::newRow("malformed with argument") << QStringList{u"malformed"_s, u"x"_s};
    QTest::newRow("no address") << QStringList{u"pair"_s, u"00:11"_s, u"Headset"_s, u"1"_s};
    QTest::newRow("no class") << QStringList{u"pair"_s, u"00:11:22:33:44:55"_s, u"Headset"_s, u"big"_s};
    QTest::newRow("connect with PIN")
        << QStringList{u"connect"_s, u"00:11:22:33:44:55"_s, u"H"_s, u"1"_s, u"1234"_s};
    QTest::newRow("nothing to share") << QStringList{u"share-permission"_s};
    QTest::newRow("no carrier") << QStringList{u"handover"_s};
    QTest::newRow("no size") << QStringList{u"receive"_s, u"a"_s, u"big"_s, u"1"_s};
    QTest::newRow("negative size") << QStringList{u"receive"_s, u"a"_s, u"-1"_s, u"1"_s};
    QTest::newRow("no rate") << QStringList{u"receive"_s, u"a"_s, u"1"_s, u"fast"_s};
    QTest::newRow("no bytes to cancel after")
        << QStringList{u"receive"_s, u"a"_s, u"1"_s, u"1"_s, u"--cancel-after"_s};
    QTest::newRow("not to cancel after")
        << QStringList{u"receive"_s, u"a"_s, u"1"_s, u"1"_s, u"--after"_s, u"1"_s};
    QTest::newRow("half power") << QStringList{u"power"_s, u"half"_s};
    QTest::newRow("no seconds") << QStringList{u"hang"_s, u"long"_s};
    QTest::newRow("negative seconds") << QStringList{u"hang"_s, u"-1"_s};
}

void TestNfcTap::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    Tap tap(arguments);
    QCOMPARE(tap.exitCode(), 64);
    const QString errors = tap.errors();
    QVERIFY2(errors.startsWith(u"nfctap: "_s), qUtf8Printable(errors));
    QCOMPARE(errors.count(u'\n'), 1);
    QCOMPARE(tap.output(), QString());
}

void TestNfcTap::lineFeedDoesNotHideInAnArgument_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("MIME type") << QStringList{u"mime"_s, u"text/plain\n"_s, file(u"small"_s, "x")};
    QTest::newRow("address") << QStringList{u"pair"_s, u"00:11:22:33:44:55\n"_s, u"Headset"_s, u"1"_s};
}

void TestNfcTap::lineFeedDoesNotHideInAnArgument()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(Tap(arguments).exitCode(), 64);
}

void TestNfcTap::helpListsEveryCommand()
{
    Tap tap({u"--help"_s});
    QCOMPARE(tap.exitCode(), 0);
    const QString help = tap.output();
    const QStringList commands = {u"uri URI"_s,
                                  u"text TEXT"_s,
                                  u"mime TYPE FILE"_s,
                                  u"message FILE.ndef"_s,
                                  u"empty"_s,
                                  u"unsupported"_s,
                                  u"pair ADDR NAME COD [PIN]"_s,
                                  u"share-permission FILE..."_s,
                                  u"receive NAME SIZE RATE [--cancel-after BYTES]"_s,
                                  u"malformed"_s,
                                  u"connect ADDR"_s,
                                  u"disconnect ADDR"_s,
                                  u"share-selection"_s,
                                  u"crash"_s,
                                  u"hang SECONDS"_s,
                                  u"release"_s,
                                  u"power on|off"_s,
                                  u"handover CARRIER"_s};
    for (const QString &command : commands)
        QVERIFY2(help.contains(u"\n  "_s + command), qUtf8Printable(command));
}

void TestNfcTap::lostOutputIsAFailure()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    for (const QString &command : {u"--help"_s, u"empty"_s}) {
        QProcess tap;
        tap.setStandardOutputFile(u"/dev/full"_s);
        tap.start(QStringLiteral(NFCTAP), {command});
        QVERIFY(tap.waitForFinished());
        QCOMPARE(tap.exitCode(), 74);
        QVERIFY(tap.readAllStandardError().startsWith("nfctap: cannot write: "));
    }
}

void TestNfcTap::noDaemonIsSaid()
{
    daemon.makeActivatable();
    Tap tap({u"uri"_s, u"https://example.org"_s});
    QCOMPARE(tap.exitCode(), 3);
    QVERIFY(tap.errors().startsWith(u"nfctap: tag with https://example.org: no simulated daemon"_s));
    QVERIFY2(!daemon.isOnBus(), "a tag has started the daemon");
}

void TestNfcTap::noAgentIsSaid()
{
    daemon.start();
    Tap tap({u"empty"_s});
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), u"nfctap: empty tag: no agent is registered with the daemon\n"_s);
}

void TestNfcTap::switchedOffAdapterNoticesNothing()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({u"power"_s, u"off"_s}).exitCode(), 0);
    Tap tap({u"text"_s, u"Hello"_s});
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), u"nfctap: tag with text 'Hello': the adapter is switched off\n"_s);
    QCOMPARE(client.members(), QStringList());
    QCOMPARE(Tap({u"power"_s, u"on"_s}).exitCode(), 0);
    QCOMPARE(Tap({u"text"_s, u"Hello"_s}).exitCode(), 0);
}

void TestNfcTap::decisionIsTheExitCode_data()
{
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    QTest::newRow("granted") << QString() << 0 << u"granted: selection of what to share\n"_s;
    QTest::newRow("rejected") << u"com.tavix.nfc.UIAgent.Rejected"_s << 1
                              << u"rejected: selection of what to share\n"_s;
    QTest::newRow("canceled") << u"com.tavix.nfc.UIAgent.Canceled"_s << 2
                              << u"canceled: selection of what to share\n"_s;
    QTest::newRow("another error") << u"org.example.Busy"_s << 1
                                   << u"org.example.Busy: selection of what to share\n"_s;
    QTest::newRow("no such agent") << u"org.freedesktop.DBus.Error.UnknownObject"_s << 3 << QString();
}

void TestNfcTap::decisionIsTheExitCode()
{
    QFETCH(QString, error);
    QFETCH(int, code);
    QFETCH(QString, output);
    daemon.start();
    AgentProcess client;
    if (!error.isEmpty())
        client.fail(u"RequestSharingSelection"_s, error, QString());
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({u"share-selection"_s});
    QCOMPARE(tap.exitCode(), code);
    QCOMPARE(tap.output(), output);
}

void TestNfcTap::everyTouchAsksTheAgent_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QString>("signature");
    const QStringList headset = {u"00:11:22:33:44:55"_s, u"Headset"_s, u"0x240404"_s};
    const QString delivery = u"RequestNDEFDataDelivery"_s;
    QTest::newRow("uri") << QStringList{u"uri"_s, u"a:b"_s} << delivery << u"a(ssos)oay"_s;
    QTest::newRow("empty") << QStringList{u"empty"_s} << delivery << u"a(ssos)oay"_s;
    QTest::newRow("pair") << QStringList{u"pair"_s} + headset << u"RequestBTPairing"_s << u"ossus"_s;
    QTest::newRow("connect") << QStringList{u"connect"_s} + headset << u"RequestBTConnection"_s << u"ossu"_s;
    QTest::newRow("disconnect") << QStringList{u"disconnect"_s} + headset << u"RequestBTDisconnection"_s
                                << u"ossu"_s;
    QTest::newRow("share-permission")
        << QStringList{u"share-permission"_s, u"contact:7"_s} << u"RequestSharingPermission"_s << u"svas"_s;
    QTest::newRow("share-selection") << QStringList{u"share-selection"_s} << u"RequestSharingSelection"_s
                                     << u"sv"_s;
}

void TestNfcTap::everyTouchAsksTheAgent()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, member);
    QFETCH(QString, signature);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap(arguments).exitCode(), 0);
    QCOMPARE(client.members(), (QStringList{u"NotifyTouch"_s, member}));
    QCOMPARE(client.calls(member).constFirst().signature, signature);
    QCOMPARE(client.calls(member).constFirst().path, AgentProcess::path());
}

void TestNfcTap::faultyTagsAreAnnounced_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("status");
    QTest::newRow("unsupported") << u"unsupported"_s << u"unsupported-tag-type"_s;
    QTest::newRow("malformed") << u"malformed"_s << u"malformed-content"_s;
}

void TestNfcTap::faultyTagsAreAnnounced()
{
    QFETCH(QString, command);
    QFETCH(QString, status);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({command});
    QCOMPARE(tap.exitCode(), 0);
    QVERIFY(tap.output().startsWith(u"announced: "_s));
    QCOMPARE(client.members(), QStringList{u"NotifyTouch"_s});
    QCOMPARE(client.calls().constFirst().arguments.value(1).toString(), status);
}

void TestNfcTap::tagHoldsTheseBytes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("uri") << QStringList{u"uri"_s, u"https://www.a.org"_s}
                         << QByteArray::fromHex("d1010655") + "\x02"
                                                              "a.org";
    QTest::newRow("text") << QStringList{u"text"_s, u"Hé"_s}
                          << QByteArray::fromHex("d1010654") + "\x02"
                                                               "enH\xc3\xa9";
    QTest::newRow("mime") << QStringList{u"mime"_s, u"text/x"_s, file(u"x"_s, "12")}
                          << QByteArray::fromHex("d20602") + "text/x"
                                                             "12";
    const QByteArray dump = QByteArray::fromHex("910101540051010155030007ff");
    QTest::newRow("message") << QStringList{u"message"_s, file(u"dump.ndef"_s, dump)} << dump;
    QTest::newRow("empty") << QStringList{u"empty"_s} << QByteArray::fromHex("d00000");
}

void TestNfcTap::tagHoldsTheseBytes()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, bytes);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap(arguments).exitCode(), 0);
    const FakeCall delivery = client.calls(u"RequestNDEFDataDelivery"_s).constFirst();
    QCOMPARE(delivery.arguments.value(2).toByteArray().toHex(), bytes.toHex());
}

void TestNfcTap::sameDeviceHasTheSamePath()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({u"pair"_s, u"00:11:22:33:44:5f"_s, u"A"_s, u"1"_s, u"0000"_s}).exitCode(), 0);
    QCOMPARE(Tap({u"connect"_s, u"00:11:22:33:44:5f"_s, u"A"_s, u"1"_s}).exitCode(), 0);
    const QVariantList pairing = client.calls(u"RequestBTPairing"_s).constFirst().arguments;
    const QVariantList connection = client.calls(u"RequestBTConnection"_s).constFirst().arguments;
    QCOMPARE(pairing.at(0).value<QDBusObjectPath>().path(), u"/com/tavix/nfc/device/dev_00_11_22_33_44_5f"_s);
    QCOMPARE(pairing.mid(1), (QVariantList{u"00:11:22:33:44:5f"_s, u"A"_s, 1u, u"0000"_s}));
    QCOMPARE(connection.at(0).value<QDBusObjectPath>(), pairing.at(0).value<QDBusObjectPath>());
}

void TestNfcTap::everyTagHasAPathOfItsOwn()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({u"empty"_s}).exitCode(), 0);
    QCOMPARE(Tap({u"empty"_s}).exitCode(), 0);
    const QList<FakeCall> deliveries = client.calls(u"RequestNDEFDataDelivery"_s);
    QCOMPARE(deliveries.size(), 2);
    QVERIFY(deliveries[0].arguments.at(1).value<QDBusObjectPath>() !=
            deliveries[1].arguments.at(1).value<QDBusObjectPath>());
}

void TestNfcTap::filesAreSharedByTheirFullPath()
{
    const QString picture = file(u"beach.jpg"_s, "\xff\xd8");
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    const QString relative = QDir::current().relativeFilePath(picture);
    QCOMPARE(Tap({u"share-permission"_s, relative, u"contact:7"_s}).exitCode(), 0);
    const FakeCall request = client.calls(u"RequestSharingPermission"_s).constFirst();
    QCOMPARE(request.arguments.at(0).toString(), u"bluetooth"_s);
    QCOMPARE(request.arguments.at(2).toStringList(), (QStringList{picture, u"contact:7"_s}));
}

void TestNfcTap::handoverEndsAreTold_data()
{
    QTest::addColumn<QString>("carrier");
    QTest::addColumn<QString>("step");
    QTest::addColumn<bool>("canceled");
    QTest::addColumn<int>("code");
    QTest::newRow("completed") << u"bluetooth"_s << u"1"_s << false << 0;
    QTest::newRow("impossible") << u"pigeon"_s << u"1"_s << false << 1;
    QTest::newRow("canceled") << u"bluetooth"_s << u"3600000"_s << true << 2;
}

void TestNfcTap::handoverEndsAreTold()
{
    QFETCH(QString, carrier);
    QFETCH(QString, step);
    QFETCH(bool, canceled);
    QFETCH(int, code);
    daemon.start({u"--handover-step"_s, step});
    Tap tap({u"handover"_s, carrier});
    const auto cancel = [this, carrier] {
        // Refused until nfctap has come through.
        return daemon.callAdapter(u"CancelHandoverRequest"_s, {carrier}).type() == QDBusMessage::ReplyMessage;
    };
    QVERIFY(!canceled || QTest::qWaitFor(cancel, 30000));
    QCOMPARE(tap.exitCode(), code);
}

void TestNfcTap::transferEndsAreTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    const QString what = u": file a of %1 bytes\n"_s;
    QTest::newRow("arrives") << QStringList{u"100"_s, u"1000"_s} << 0 << u"completed"_s + what.arg(100);
    QTest::newRow("empty") << QStringList{u"0"_s, u"1000"_s} << 0 << u"completed"_s + what.arg(0);
    QTest::newRow("faster than any phone")
        << QStringList{u"18446744073709551615"_s, u"18446744073709551615"_s, u"--cancel-after"_s, u"1"_s} << 2
        << u"canceled"_s + what.arg(u"18446744073709551615"_s);
    QTest::newRow("sender gives up") << QStringList{u"1000"_s, u"1000"_s, u"--cancel-after"_s, u"100"_s} << 2
                                     << u"canceled"_s + what.arg(1000);
    QTest::newRow("sender gives up before it begins")
        << QStringList{u"1000"_s, u"1000"_s, u"--cancel-after"_s, u"0"_s} << 2
        << u"canceled"_s + what.arg(1000);
}

void TestNfcTap::transferEndsAreTold()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const int, code);
    QFETCH(const QString, output);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap(QStringList{u"receive"_s, u"a"_s} + arguments);
    QCOMPARE(tap.exitCode(), code);
    QCOMPARE(tap.output(), output);
}

void TestNfcTap::transferIsToldFromStartToEnd()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap({u"receive"_s, u"a"_s, u"250"_s, u"1000"_s});
    QCOMPARE(tap.exitCode(), 0);
    const QStringList all = {u"0 a of 250 from Ada's phone"_s, u"0 at 100 of 250"_s, u"0 at 200 of 250"_s,
                             u"0 at 250 of 250"_s, u"0 completed ''"_s};
    QTRY_COMPARE(news.lines, all);
}

// A tenth of a second for a step: five bytes a second are one in every other step.
void TestNfcTap::slowTransferTakesItsTime()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap({u"receive"_s, u"a"_s, u"2"_s, u"5"_s});
    QCOMPARE(tap.exitCode(), 0);
    const QStringList all = {u"0 a of 2 from Ada's phone"_s,
                             u"0 at 0 of 2"_s,
                             u"0 at 1 of 2"_s,
                             u"0 at 1 of 2"_s,
                             u"0 at 2 of 2"_s,
                             u"0 completed ''"_s};
    QTRY_COMPARE(news.lines, all);
}

void TestNfcTap::receivedFileIsNamed()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    const QString kept = file(u"beach.jpg"_s, "sand");
    Tap tap({u"receive"_s, kept, u"4"_s, u"1000"_s});
    QCOMPARE(tap.exitCode(), 0);
    QTRY_VERIFY(news.lines.contains(u"0 completed '%1'"_s.arg(kept)));
    QCOMPARE(news.lines.constFirst(), u"0 beach.jpg of 4 from Ada's phone"_s);
}

void TestNfcTap::switchingOffEndsTransfers()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap first({u"receive"_s, u"a"_s, u"1"_s, u"0"_s});
    Tap second({u"receive"_s, u"b"_s, u"1"_s, u"0"_s});
    const auto bothAreUnderWay = [&news] { return news.lines.filter(u" from "_s).size() == 2; };
    QVERIFY(QTest::qWaitFor(bothAreUnderWay, 30000));
    QCOMPARE(Tap({u"power"_s, u"off"_s}).exitCode(), 0);
    QCOMPARE(first.exitCode(), 2);
    QCOMPARE(second.exitCode(), 2);
}

void TestNfcTap::canceledTransferEnds()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap({u"receive"_s, u"a"_s, u"1000000"_s, u"10"_s});
    QTRY_VERIFY(!news.lines.isEmpty());
    // Another one that is not under way is not there to be canceled.
    for (const uint transfer : {7U, 0U}) {
        QDBusMessage cancel =
            QDBusMessage::createMethodCall(u"com.tavix.nfc"_s, u"/com/tavix/nfc/adapter0"_s,
                                           u"com.tavix.nfc.Transfers"_s, u"CancelTransfer"_s);
        cancel.setArguments({transfer});
        QCOMPARE(QDBusConnection::systemBus().call(cancel).type(), QDBusMessage::ReplyMessage);
    }
    QCOMPARE(tap.exitCode(), 2);
    QTRY_COMPARE(news.lines.constLast(), u"0 canceled ''"_s);
}

void TestNfcTap::deathOfTheDaemonIsSaid()
{
    daemon.start();
    AgentProcess client;
    client.hold(u"RequestSharingSelection"_s);
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({u"share-selection"_s});
    QVERIFY(sees(client, u"RequestSharingSelection"_s));
    Tap crash({u"crash"_s});
    QCOMPARE(crash.exitCode(), 0);
    QCOMPARE(crash.output(), u"done: crash of the daemon\n"_s);
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), u"nfctap: selection of what to share: the daemon has died\n"_s);
    QTRY_VERIFY(!daemon.isOnBus());
}

void TestNfcTap::releasedAgentIsNotAskedAgain()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(Tap({u"release"_s}).exitCode(), 3);
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({u"release"_s}).exitCode(), 0);
    QCOMPARE(client.members(), QStringList{u"Release"_s});
    QCOMPARE(Tap({u"empty"_s}).exitCode(), 3);
    QCOMPARE(client.members(), QStringList{u"Release"_s});
    QCOMPARE(client.unregisterAgent().error, QString());
}

void TestNfcTap::hangingDaemonAnswersNothing()
{
    daemon.start();
    QCOMPARE(Tap({u"hang"_s, u"3600"_s}).exitCode(), 0);
    const QDBusMessage reply = daemon.callAdapter(u"GetProperties"_s, {}, 200);
    QCOMPARE(reply.errorName(), u"org.freedesktop.DBus.Error.NoReply"_s);
    QVERIFY(daemon.isOnBus());
}

void TestNfcTap::daemonAnswersAfterItHung()
{
    daemon.start();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Tap({u"hang"_s, u"1"_s}).exitCode(), 0);
    QCOMPARE(daemon.callAdapter(u"GetProperties"_s).type(), QDBusMessage::ReplyMessage);
    QVERIFY(timer.elapsed() >= 1000);
}

// The bus library gives up a call after 25 seconds unless it is told otherwise.
void TestNfcTap::userMayTakeLongerThanTheBus()
{
    daemon.start();
    AgentProcess client;
    client.hold(u"RequestSharingSelection"_s);
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({u"share-selection"_s});
    QVERIFY(sees(client, u"RequestSharingSelection"_s));
    QTest::qWait(26000);
    QVERIFY(tap.isRunning());
    client.release(u"RequestSharingSelection"_s);
    QCOMPARE(tap.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestNfcTap)
#include "tst_nfctap.moc"
