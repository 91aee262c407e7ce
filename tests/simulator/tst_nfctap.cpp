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

class TestNfcTap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void fileThatCannotBeATagIsNamed_data();
    void fileThatCannotBeATagIsNamed();
    void lineFeedDoesNotHideInAnArgument_data();
    void lineFeedDoesNotHideInAnArgument();
    void helpListsEveryCommand();
    void lostOutputIsAFailure();
    void missingDaemonIsReported();
    void missingAgentIsReported_data();
    void missingAgentIsReported();
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

    void tagIsWritten();
    void tagThatTakesNoMessageFailsTheWriting_data();
    void tagThatTakesNoMessageFailsTheWriting();
    void writingEndsWithNfctap();
    void writingNeedsNoSimulator();
    void writerThatRefusesIsReported_data();
    void writerThatRefusesIsReported();
    void outcomeOfAHandoverIsPrinted_data();
    void outcomeOfAHandoverIsPrinted();
    void outcomeOfATransferIsPrinted_data();
    void outcomeOfATransferIsPrinted();
    void everyStepOfATransferIsReported();
    void senderGivesUpAfterSoManyBytes_data();
    void senderGivesUpAfterSoManyBytes();
    void slowTransferTakesItsTime();
    void receivedFileIsNamed();
    void canceledTransferEnds();
    void switchingOffEndsTransfers();
    void deathOfTheDaemonIsReported();
    void releasedAgentIsNotAskedAgain();
    void hangingDaemonAnswersNothing();
    void daemonAnswersAfterItHung();
    void userMayTakeLongerThanTheBus();

private:
    QString file(const QString &name, const QByteArray &content) const;
    bool sees(AgentProcess &client, const QString &member);
    static bool ends(const QStringList &touch, const QString &output);

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
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
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
    QTest::newRow("unknown command") << QStringList{QStringLiteral("throw")};
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--tag")};
    QTest::newRow("uri without URI") << QStringList{QStringLiteral("uri")};
    QTest::newRow("empty URI") << QStringList{QStringLiteral("uri"), QString()};
    QTest::newRow("two URIs") << QStringList{QStringLiteral("uri"), QStringLiteral("a:b"),
                                             QStringLiteral("c:d")};
    QTest::newRow("no MIME type") << QStringList{QStringLiteral("mime"), QStringLiteral("text"),
                                                 QStringLiteral(NFCTAP)};
    QTest::newRow("missing file") << QStringList{QStringLiteral("mime"), QStringLiteral("text/plain"),
                                                 QStringLiteral("/missing")};
    QTest::newRow("endless file") << QStringList{QStringLiteral("mime"), QStringLiteral("text/plain"),
                                                 QStringLiteral("/dev/zero")};
    QTest::newRow("file that is larger than any tag") << QStringList{
        QStringLiteral("message"), file(QStringLiteral("large.ndef"), QByteArray((1 << 20) + 1, '\0'))};
    QTest::newRow("file that cannot be read")
        << QStringList{QStringLiteral("message"), QStringLiteral("/proc/self/mem")};
    QTest::newRow("folder") << QStringList{QStringLiteral("message"), folder.path()};
    QTest::newRow("missing message") << QStringList{QStringLiteral("message"),
                                                    QStringLiteral("/missing.ndef")};
    QTest::newRow("argument to select")
        << QStringList{QStringLiteral("share-selection"), QStringLiteral("x")};
    QTest::newRow("two messages") << QStringList{QStringLiteral("message"), QStringLiteral("/proc/self/comm"),
                                                 QStringLiteral("/proc/self/comm")};
    QTest::newRow("nothing to write") << QStringList{QStringLiteral("write")};
    QTest::newRow("device to write") << QStringList{QStringLiteral("write"), QStringLiteral("hang"),
                                                    QStringLiteral("1")};
    QTest::newRow("uri to write without URI") << QStringList{QStringLiteral("write"), QStringLiteral("uri")};
    QTest::newRow("writing to write") << QStringList{QStringLiteral("write"), QStringLiteral("write"),
                                                     QStringLiteral("uri"), QStringLiteral("tel:1")};
    QTest::newRow("no room") << QStringList{QStringLiteral("blank"), QStringLiteral("-1")};
    QTest::newRow("malformed with argument") << QStringList{QStringLiteral("malformed"), QStringLiteral("x")};
    QTest::newRow("no address") << QStringList{QStringLiteral("pair"), QStringLiteral("00:11"),
                                               QStringLiteral("Headset"), QStringLiteral("1")};
    QTest::newRow("no class") << QStringList{QStringLiteral("pair"), QStringLiteral("00:11:22:33:44:55"),
                                             QStringLiteral("Headset"), QStringLiteral("big")};
    QTest::newRow("connect with PIN")
        << QStringList{QStringLiteral("connect"), QStringLiteral("00:11:22:33:44:55"), QStringLiteral("H"),
                       QStringLiteral("1"), QStringLiteral("1234")};
    QTest::newRow("nothing to share") << QStringList{QStringLiteral("share-permission")};
    QTest::newRow("no carrier") << QStringList{QStringLiteral("handover")};
    QTest::newRow("no size") << QStringList{QStringLiteral("receive"), QStringLiteral("a"),
                                            QStringLiteral("big"), QStringLiteral("1")};
    QTest::newRow("negative size") << QStringList{QStringLiteral("receive"), QStringLiteral("a"),
                                                  QStringLiteral("-1"), QStringLiteral("1")};
    QTest::newRow("no rate") << QStringList{QStringLiteral("receive"), QStringLiteral("a"),
                                            QStringLiteral("1"), QStringLiteral("fast")};
    QTest::newRow("no bytes to cancel after")
        << QStringList{QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("1"),
                       QStringLiteral("1"), QStringLiteral("--cancel-after")};
    QTest::newRow("not to cancel after")
        << QStringList{QStringLiteral("receive"), QStringLiteral("a"),       QStringLiteral("1"),
                       QStringLiteral("1"),       QStringLiteral("--after"), QStringLiteral("1")};
    QTest::newRow("half power") << QStringList{QStringLiteral("power"), QStringLiteral("half")};
    QTest::newRow("no seconds") << QStringList{QStringLiteral("hang"), QStringLiteral("long")};
    QTest::newRow("negative seconds") << QStringList{QStringLiteral("hang"), QStringLiteral("-1")};
}

void TestNfcTap::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    Tap tap(arguments);
    QCOMPARE(tap.exitCode(), 64);
    const QString errors = tap.errors();
    QVERIFY2(errors.startsWith(QStringLiteral("nfctap: ")), qUtf8Printable(errors));
    QCOMPARE(errors.count(u'\n'), 1);
    QCOMPARE(tap.output(), QString());
}

void TestNfcTap::fileThatCannotBeATagIsNamed_data()
{
    QTest::addColumn<QString>("error");
    QTest::newRow("/dev/zero") << QStringLiteral("/dev/zero is too large: a tag holds at most 1048576 bytes");
    QTest::newRow("/proc/self/mem") << QStringLiteral("cannot read /proc/self/mem: Input/output error");
    QTest::newRow("/missing") << QStringLiteral("cannot read /missing: No such file or directory");
}

void TestNfcTap::fileThatCannotBeATagIsNamed()
{
    QFETCH(QString, error);
    Tap tap({QStringLiteral("message"), QString::fromLatin1(QTest::currentDataTag())});
    QCOMPARE(tap.exitCode(), 64);
    QCOMPARE(tap.errors(), QStringLiteral("nfctap: %1\n").arg(error));
}

void TestNfcTap::lineFeedDoesNotHideInAnArgument_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("MIME type") << QStringList{QStringLiteral("mime"), QStringLiteral("text/plain\n"),
                                              file(QStringLiteral("small"), "x")};
    QTest::newRow("address") << QStringList{QStringLiteral("pair"), QStringLiteral("00:11:22:33:44:55\n"),
                                            QStringLiteral("Headset"), QStringLiteral("1")};
}

void TestNfcTap::lineFeedDoesNotHideInAnArgument()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(Tap(arguments).exitCode(), 64);
}

void TestNfcTap::helpListsEveryCommand()
{
    Tap tap({QStringLiteral("--help")});
    QCOMPARE(tap.exitCode(), 0);
    const QString help = tap.output();
    const QStringList commands = {QStringLiteral("uri URI"),
                                  QStringLiteral("text TEXT"),
                                  QStringLiteral("mime TYPE FILE"),
                                  QStringLiteral("message FILE.ndef"),
                                  QStringLiteral("empty"),
                                  QStringLiteral("unsupported"),
                                  QStringLiteral("pair ADDR NAME COD [PIN]"),
                                  QStringLiteral("share-permission FILE..."),
                                  QStringLiteral("receive NAME SIZE RATE [--cancel-after BYTES]"),
                                  QStringLiteral("malformed"),
                                  QStringLiteral("connect ADDR"),
                                  QStringLiteral("disconnect ADDR"),
                                  QStringLiteral("share-selection"),
                                  QStringLiteral("crash"),
                                  QStringLiteral("hang SECONDS"),
                                  QStringLiteral("release"),
                                  QStringLiteral("power on|off"),
                                  QStringLiteral("handover CARRIER")};
    for (const QString &command : commands)
        QVERIFY2(help.contains(QStringLiteral("\n  ") + command), qUtf8Printable(command));
}

void TestNfcTap::lostOutputIsAFailure()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    for (const QString &command : {QStringLiteral("--help"), QStringLiteral("empty")}) {
        QProcess tap;
        tap.setStandardOutputFile(QStringLiteral("/dev/full"));
        tap.start(QStringLiteral(NFCTAP), {command});
        QVERIFY(tap.waitForFinished());
        QCOMPARE(tap.exitCode(), 74);
        QVERIFY(tap.readAllStandardError().startsWith("nfctap: cannot write: "));
    }
}

void TestNfcTap::missingDaemonIsReported()
{
    daemon.makeActivatable();
    Tap tap({QStringLiteral("uri"), QStringLiteral("https://example.org")});
    QCOMPARE(tap.exitCode(), 3);
    QVERIFY(
        tap.errors().startsWith(QStringLiteral("nfctap: tag with https://example.org: no simulated daemon")));
    QVERIFY2(!daemon.isOnBus(), "a tag has started the daemon");
}

void TestNfcTap::missingAgentIsReported_data()
{
    QTest::addColumn<QStringList>("touch");
    QTest::addColumn<QString>("what");
    QTest::newRow("tag") << QStringList{QStringLiteral("empty")} << QStringLiteral("empty tag");
    QTest::newRow("phone") << QStringList{QStringLiteral("share-selection")}
                           << QStringLiteral("selection of what to share");
    QTest::newRow("file") << QStringList{QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("1"),
                                         QStringLiteral("1000")}
                          << QStringLiteral("file a of 1 bytes");
}

void TestNfcTap::missingAgentIsReported()
{
    QFETCH(QStringList, touch);
    QFETCH(QString, what);
    daemon.start();
    Tap tap(touch);
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), QStringLiteral("nfctap: %1: no agent is registered with the daemon\n").arg(what));
}

void TestNfcTap::switchedOffAdapterNoticesNothing()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({QStringLiteral("power"), QStringLiteral("off")}).exitCode(), 0);
    Tap tap({QStringLiteral("text"), QStringLiteral("Hello")});
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), QStringLiteral("nfctap: tag with text 'Hello': the adapter is switched off\n"));
    TransferNews news;
    Tap file({QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("1000")});
    QCOMPARE(file.exitCode(), 3);
    QCOMPARE(file.errors(), QStringLiteral("nfctap: file a of 1 bytes: the adapter is switched off\n"));
    QCOMPARE(news.lines, QStringList());
    QCOMPARE(client.members(), QStringList());
    QCOMPARE(Tap({QStringLiteral("power"), QStringLiteral("on")}).exitCode(), 0);
    QCOMPARE(Tap({QStringLiteral("text"), QStringLiteral("Hello")}).exitCode(), 0);
}

void TestNfcTap::decisionIsTheExitCode_data()
{
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    QTest::newRow("granted") << QString() << 0 << QStringLiteral("granted: selection of what to share\n");
    QTest::newRow("rejected") << QStringLiteral("com.tavix.nfc.UIAgent.Rejected") << 1
                              << QStringLiteral("rejected: selection of what to share\n");
    QTest::newRow("canceled") << QStringLiteral("com.tavix.nfc.UIAgent.Canceled") << 2
                              << QStringLiteral("canceled: selection of what to share\n");
    QTest::newRow("another error") << QStringLiteral("org.example.Busy") << 1
                                   << QStringLiteral("org.example.Busy: selection of what to share\n");
    QTest::newRow("no such agent") << QStringLiteral("org.freedesktop.DBus.Error.UnknownObject") << 3
                                   << QString();
}

void TestNfcTap::decisionIsTheExitCode()
{
    QFETCH(QString, error);
    QFETCH(int, code);
    QFETCH(QString, output);
    daemon.start();
    AgentProcess client;
    if (!error.isEmpty())
        client.fail(QStringLiteral("RequestSharingSelection"), error, QString());
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({QStringLiteral("share-selection")});
    QCOMPARE(tap.exitCode(), code);
    QCOMPARE(tap.output(), output);
}

void TestNfcTap::everyTouchAsksTheAgent_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("output");
    const QStringList headset = {QStringLiteral("00:11:22:33:44:55"), QStringLiteral("Headset"),
                                 QStringLiteral("0x240404")};
    const QString delivery = QStringLiteral("RequestNDEFDataDelivery");
    QTest::newRow("uri") << QStringList{QStringLiteral("uri"), QStringLiteral("a:b")} << delivery
                         << QStringLiteral("a(ssos)oay") << QStringLiteral("granted: tag with a:b\n");
    QTest::newRow("empty") << QStringList{QStringLiteral("empty")} << delivery << QStringLiteral("a(ssos)oay")
                           << QStringLiteral("granted: empty tag\n");
    QTest::newRow("pair") << QStringList{QStringLiteral("pair")} + headset
                          << QStringLiteral("RequestBTPairing") << QStringLiteral("ossus")
                          << QStringLiteral("granted: pairing with Headset (00:11:22:33:44:55)\n");
    QTest::newRow("connect") << QStringList{QStringLiteral("connect")} + headset
                             << QStringLiteral("RequestBTConnection") << QStringLiteral("ossu")
                             << QStringLiteral("granted: connection to Headset (00:11:22:33:44:55)\n");
    QTest::newRow("disconnect") << QStringList{QStringLiteral("disconnect")} + headset
                                << QStringLiteral("RequestBTDisconnection") << QStringLiteral("ossu")
                                << QStringLiteral(
                                       "granted: disconnection from Headset (00:11:22:33:44:55)\n");
    QTest::newRow("share-permission")
        << QStringList{QStringLiteral("share-permission"), QStringLiteral("contact:7")}
        << QStringLiteral("RequestSharingPermission") << QStringLiteral("svas")
        << QStringLiteral("granted: sharing contact:7\n");
    QTest::newRow("share-selection") << QStringList{QStringLiteral("share-selection")}
                                     << QStringLiteral("RequestSharingSelection") << QStringLiteral("sv")
                                     << QStringLiteral("granted: selection of what to share\n");
}

void TestNfcTap::everyTouchAsksTheAgent()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, member);
    QFETCH(QString, signature);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap(arguments);
    QCOMPARE(tap.exitCode(), 0);
    QTEST(tap.output(), "output");
    QCOMPARE(client.members(), (QStringList{QStringLiteral("NotifyTouch"), member}));
    QCOMPARE(client.calls(member).constFirst().signature, signature);
    QCOMPARE(client.calls(member).constFirst().path, AgentProcess::path());
}

void TestNfcTap::faultyTagsAreAnnounced_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("status");
    QTest::newRow("unsupported") << QStringLiteral("unsupported") << QStringLiteral("unsupported-tag-type");
    QTest::newRow("malformed") << QStringLiteral("malformed") << QStringLiteral("malformed-content");
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
    QVERIFY(tap.output().startsWith(QStringLiteral("announced: ")));
    QCOMPARE(client.members(), QStringList{QStringLiteral("NotifyTouch")});
    QCOMPARE(client.calls().constFirst().arguments.value(1).toString(), status);
}

void TestNfcTap::tagHoldsTheseBytes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("uri") << QStringList{QStringLiteral("uri"), QStringLiteral("https://www.a.org")}
                         << QByteArray::fromHex("d1010655") + "\x02"
                                                              "a.org";
    QTest::newRow("text") << QStringList{QStringLiteral("text"), QStringLiteral("Hé")}
                          << QByteArray::fromHex("d1010654") + "\x02"
                                                               "enH\xc3\xa9";
    QTest::newRow("mime") << QStringList{QStringLiteral("mime"), QStringLiteral("text/x"),
                                         file(QStringLiteral("x"), "12")}
                          << QByteArray::fromHex("d20602") + "text/x"
                                                             "12";
    const QByteArray dump = QByteArray::fromHex("910101540051010155030007ff");
    QTest::newRow("message") << QStringList{QStringLiteral("message"),
                                            file(QStringLiteral("dump.ndef"), dump)}
                             << dump;
    QTest::newRow("empty") << QStringList{QStringLiteral("empty")} << QByteArray::fromHex("d00000");
}

void TestNfcTap::tagHoldsTheseBytes()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, bytes);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap(arguments).exitCode(), 0);
    const FakeCall delivery = client.calls(QStringLiteral("RequestNDEFDataDelivery")).constFirst();
    QCOMPARE(delivery.arguments.value(2).toByteArray().toHex(), bytes.toHex());
}

void TestNfcTap::sameDeviceHasTheSamePath()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({QStringLiteral("pair"), QStringLiteral("00:11:22:33:44:5f"), QStringLiteral("A"),
                  QStringLiteral("1"), QStringLiteral("0000")})
                 .exitCode(),
             0);
    QCOMPARE(Tap({QStringLiteral("connect"), QStringLiteral("00:11:22:33:44:5f"), QStringLiteral("A"),
                  QStringLiteral("1")})
                 .exitCode(),
             0);
    const QVariantList pairing = client.calls(QStringLiteral("RequestBTPairing")).constFirst().arguments;
    const QVariantList connection =
        client.calls(QStringLiteral("RequestBTConnection")).constFirst().arguments;
    QCOMPARE(pairing.at(0).value<QDBusObjectPath>().path(),
             QStringLiteral("/com/tavix/nfc/device/dev_00_11_22_33_44_5f"));
    QCOMPARE(pairing.mid(1), (QVariantList{QStringLiteral("00:11:22:33:44:5f"), QStringLiteral("A"), 1u,
                                           QStringLiteral("0000")}));
    QCOMPARE(connection.at(0).value<QDBusObjectPath>(), pairing.at(0).value<QDBusObjectPath>());
}

void TestNfcTap::everyTagHasAPathOfItsOwn()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({QStringLiteral("empty")}).exitCode(), 0);
    QCOMPARE(Tap({QStringLiteral("empty")}).exitCode(), 0);
    const QList<FakeCall> deliveries = client.calls(QStringLiteral("RequestNDEFDataDelivery"));
    QCOMPARE(deliveries.size(), 2);
    QVERIFY(deliveries[0].arguments.at(1).value<QDBusObjectPath>() !=
            deliveries[1].arguments.at(1).value<QDBusObjectPath>());
}

void TestNfcTap::filesAreSharedByTheirFullPath()
{
    const QString picture = file(QStringLiteral("beach.jpg"), "\xff\xd8");
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    const QString relative = QDir::current().relativeFilePath(picture);
    QCOMPARE(Tap({QStringLiteral("share-permission"), relative, QStringLiteral("contact:7")}).exitCode(), 0);
    const FakeCall request = client.calls(QStringLiteral("RequestSharingPermission")).constFirst();
    QCOMPARE(request.arguments.at(0).toString(), QStringLiteral("bluetooth"));
    QCOMPARE(request.arguments.at(2).toStringList(), (QStringList{picture, QStringLiteral("contact:7")}));
}

// Touches until a message has been waiting for the tag; before that the adapter has nobody to ask.
bool TestNfcTap::ends(const QStringList &touch, const QString &output)
{
    return QTest::qWaitFor(
        [touch, output] {
            Tap tap(touch);
            return tap.exitCode() != 3 && tap.output() == output;
        },
        30000);
}

void TestNfcTap::tagIsWritten()
{
    daemon.start();
    Tap writing({QStringLiteral("write"), QStringLiteral("uri"), QStringLiteral("https://a.org")});
    QVERIFY(ends({QStringLiteral("blank"), QStringLiteral("100")},
                 QStringLiteral("written: blank tag of 100 bytes\n")));
    QCOMPARE(writing.exitCode(), 0);
    QCOMPARE(writing.output(), QStringLiteral("written: tag with https://a.org\n"));
}

void TestNfcTap::tagThatTakesNoMessageFailsTheWriting_data()
{
    QTest::addColumn<QStringList>("touch");
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("error");
    QTest::newRow("small") << QStringList{QStringLiteral("blank"), QStringLiteral("4")}
                           << QStringLiteral("blank tag of 4 bytes")
                           << QStringLiteral("com.tavix.nfc.Error.TooSmall");
    QTest::newRow("printed") << QStringList{QStringLiteral("uri"), QStringLiteral("tel:1")}
                             << QStringLiteral("tag with tel:1")
                             << QStringLiteral("com.tavix.nfc.Error.ReadOnly");
    QTest::newRow("unsupported") << QStringList{QStringLiteral("unsupported")}
                                 << QStringLiteral("unsupported tag")
                                 << QStringLiteral("com.tavix.nfc.Error.Unsupported");
}

void TestNfcTap::tagThatTakesNoMessageFailsTheWriting()
{
    QFETCH(QStringList, touch);
    QFETCH(QString, what);
    QFETCH(QString, error);
    daemon.start();
    Tap writing({QStringLiteral("write"), QStringLiteral("text"), QStringLiteral("Hello")});
    QVERIFY(ends(touch, QStringLiteral("failed: %1\n").arg(what)));
    QCOMPARE(writing.exitCode(), 1);
    QCOMPARE(writing.output(), error + QStringLiteral(": tag with text 'Hello'\n"));
}

void TestNfcTap::writingEndsWithNfctap()
{
    daemon.start();
    const QStringList write = {QStringLiteral("write"), QStringLiteral("uri"), QStringLiteral("tel:1")};
    {
        const Tap first(write);
        const Tap second(write);
        // One of them waits, and the other one is refused.
        QTRY_VERIFY(!first.isRunning() || !second.isRunning());
    }
    const auto isWritten = [write] {
        Tap writing(write);
        const auto isDecided = [&writing] {
            return !writing.isRunning() ||
                   Tap({QStringLiteral("blank"), QStringLiteral("100")}).exitCode() == 0;
        };
        return QTest::qWaitFor(isDecided, 30000) && writing.exitCode() == 0;
    };
    QVERIFY(QTest::qWaitFor(isWritten, 30000));
}

void TestNfcTap::writingNeedsNoSimulator()
{
    FakeService other(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    other.start();
    Tap writing({QStringLiteral("write"), QStringLiteral("uri"), QStringLiteral("tel:1")});
    QCOMPARE(writing.exitCode(), 0);
    QCOMPARE(other.calls(QStringLiteral("WriteNdef")).constFirst().interface,
             QStringLiteral("com.tavix.nfc.TagWriter"));
    Tap empty({QStringLiteral("write"), QStringLiteral("empty")});
    QCOMPARE(empty.exitCode(), 0);
    QCOMPARE(empty.output(), QStringLiteral("written: empty tag\n"));
}

void TestNfcTap::writerThatRefusesIsReported_data()
{
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("errors");
    const QString none;
    QTest::newRow("canceled") << QStringLiteral("com.tavix.nfc.Error.Canceled") << 2
                              << QStringLiteral("canceled: tag with tel:1\n") << none;
    QTest::newRow("off") << QStringLiteral("com.tavix.nfc.Error.Off") << 3 << none
                         << QStringLiteral("nfctap: tag with tel:1: the adapter is switched off\n");
    const QString noWriter = QStringLiteral("nfctap: tag with tel:1: the daemon writes no tags\n");
    QTest::newRow("no method") << QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod") << 3 << none
                               << noWriter;
    QTest::newRow("no interface") << QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface") << 3
                                  << none << noWriter;
    QTest::newRow("anything else") << QStringLiteral("org.example.Error") << 1
                                   << QStringLiteral("org.example.Error: tag with tel:1\n") << none;
}

void TestNfcTap::writerThatRefusesIsReported()
{
    QFETCH(QString, error);
    FakeService other(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    other.fail(QStringLiteral("WriteNdef"), error, QString());
    other.start();
    Tap writing({QStringLiteral("write"), QStringLiteral("uri"), QStringLiteral("tel:1")});
    QTEST(writing.exitCode(), "code");
    QTEST(writing.output(), "output");
    QTEST(writing.errors(), "errors");
}

void TestNfcTap::outcomeOfAHandoverIsPrinted_data()
{
    QTest::addColumn<QString>("carrier");
    QTest::addColumn<QString>("step");
    QTest::addColumn<bool>("canceled");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    QTest::newRow("completed") << QStringLiteral("bluetooth") << QStringLiteral("1") << false << 0
                               << QStringLiteral("completed: handover to bluetooth\n");
    QTest::newRow("impossible") << QStringLiteral("pigeon") << QStringLiteral("1") << false << 1
                                << QStringLiteral("failed: handover to pigeon\n");
    QTest::newRow("canceled") << QStringLiteral("bluetooth") << QStringLiteral("3600000") << true << 2
                              << QStringLiteral("canceled: handover to bluetooth\n");
}

void TestNfcTap::outcomeOfAHandoverIsPrinted()
{
    QFETCH(QString, carrier);
    QFETCH(QString, step);
    QFETCH(bool, canceled);
    QFETCH(int, code);
    daemon.start({QStringLiteral("--handover-step"), step});
    Tap tap({QStringLiteral("handover"), carrier});
    const auto cancel = [this, carrier] {
        // Refused until nfctap has come through.
        return daemon.callAdapter(QStringLiteral("CancelHandoverRequest"), {carrier}).type() ==
               QDBusMessage::ReplyMessage;
    };
    QVERIFY(!canceled || QTest::qWaitFor(cancel, 30000));
    QCOMPARE(tap.exitCode(), code);
    QTEST(tap.output(), "output");
}

void TestNfcTap::outcomeOfATransferIsPrinted_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    const QString what = QStringLiteral(": file a of %1 bytes\n");
    QTest::newRow("arrives") << QStringList{QStringLiteral("100"), QStringLiteral("1000")} << 0
                             << QStringLiteral("completed") + what.arg(100);
    QTest::newRow("empty") << QStringList{QStringLiteral("0"), QStringLiteral("1000")} << 0
                           << QStringLiteral("completed") + what.arg(0);
    QTest::newRow("faster than any phone")
        << QStringList{QStringLiteral("18446744073709551615"), QStringLiteral("18446744073709551615"),
                       QStringLiteral("--cancel-after"), QStringLiteral("1")}
        << 2 << QStringLiteral("canceled") + what.arg(QStringLiteral("18446744073709551615"));
    QTest::newRow("sender gives up") << QStringList{QStringLiteral("1000"), QStringLiteral("1000"),
                                                    QStringLiteral("--cancel-after"), QStringLiteral("100")}
                                     << 2 << QStringLiteral("canceled") + what.arg(1000);
    QTest::newRow("sender gives up before it begins")
        << QStringList{QStringLiteral("1000"), QStringLiteral("1000"), QStringLiteral("--cancel-after"),
                       QStringLiteral("0")}
        << 2 << QStringLiteral("canceled") + what.arg(1000);
}

void TestNfcTap::outcomeOfATransferIsPrinted()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const int, code);
    QFETCH(const QString, output);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap(QStringList{QStringLiteral("receive"), QStringLiteral("a")} + arguments);
    QCOMPARE(tap.exitCode(), code);
    QCOMPARE(tap.output(), output);
}

void TestNfcTap::everyStepOfATransferIsReported()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap({QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("250"), QStringLiteral("1000")});
    QCOMPARE(tap.exitCode(), 0);
    const QStringList all = {QStringLiteral("0 a of 250 from Ada's phone"), QStringLiteral("0 at 100 of 250"),
                             QStringLiteral("0 at 200 of 250"), QStringLiteral("0 at 250 of 250"),
                             QStringLiteral("0 completed ''")};
    QTRY_COMPARE(news.lines, all);
}

void TestNfcTap::senderGivesUpAfterSoManyBytes_data()
{
    QTest::addColumn<QString>("bytes");
    QTest::addColumn<QStringList>("progress");
    QTest::newRow("at once") << QStringLiteral("0") << QStringList{QStringLiteral("0 at 0 of 1000")};
    QTest::newRow("within a step") << QStringLiteral("150")
                                   << QStringList{QStringLiteral("0 at 100 of 1000"),
                                                  QStringLiteral("0 at 150 of 1000")};
}

void TestNfcTap::senderGivesUpAfterSoManyBytes()
{
    QFETCH(QString, bytes);
    QFETCH(QStringList, progress);
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap({QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("1000"), QStringLiteral("1000"),
             QStringLiteral("--cancel-after"), bytes});
    QCOMPARE(tap.exitCode(), 2);
    const QStringList all = QStringList{QStringLiteral("0 a of 1000 from Ada's phone")} + progress +
                            QStringList{QStringLiteral("0 canceled ''")};
    QTRY_COMPARE(news.lines, all);
}

// A tenth of a second for a step: five bytes a second are one in every other step.
void TestNfcTap::slowTransferTakesItsTime()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap({QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("2"), QStringLiteral("5")});
    QCOMPARE(tap.exitCode(), 0);
    const QStringList all = {QStringLiteral("0 a of 2 from Ada's phone"),
                             QStringLiteral("0 at 0 of 2"),
                             QStringLiteral("0 at 1 of 2"),
                             QStringLiteral("0 at 1 of 2"),
                             QStringLiteral("0 at 2 of 2"),
                             QStringLiteral("0 completed ''")};
    QTRY_COMPARE(news.lines, all);
}

void TestNfcTap::receivedFileIsNamed()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    const QString kept = file(QStringLiteral("beach.jpg"), "sand");
    Tap tap({QStringLiteral("receive"), kept, QStringLiteral("4"), QStringLiteral("1000")});
    QCOMPARE(tap.exitCode(), 0);
    QTRY_VERIFY(news.lines.contains(QStringLiteral("0 completed '%1'").arg(kept)));
    QCOMPARE(news.lines.constFirst(), QStringLiteral("0 beach.jpg of 4 from Ada's phone"));
}

void TestNfcTap::switchingOffEndsTransfers()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap first({QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("0")});
    Tap second({QStringLiteral("receive"), QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("0")});
    const auto bothAreUnderWay = [&news] { return news.lines.filter(QStringLiteral(" from ")).size() == 2; };
    QVERIFY(QTest::qWaitFor(bothAreUnderWay, 30000));
    QCOMPARE(Tap({QStringLiteral("power"), QStringLiteral("off")}).exitCode(), 0);
    QCOMPARE(first.exitCode(), 2);
    QCOMPARE(second.exitCode(), 2);
}

void TestNfcTap::canceledTransferEnds()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(client.registerAgent().error, QString());
    TransferNews news;
    Tap tap(
        {QStringLiteral("receive"), QStringLiteral("a"), QStringLiteral("1000000"), QStringLiteral("10")});
    QTRY_VERIFY(!news.lines.isEmpty());
    // Another one that is not under way is not there to be canceled.
    for (const uint transfer : {7U, 0U}) {
        QDBusMessage cancel = QDBusMessage::createMethodCall(
            QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
            QStringLiteral("com.tavix.nfc.Transfers"), QStringLiteral("CancelTransfer"));
        cancel.setArguments({transfer});
        QCOMPARE(QDBusConnection::systemBus().call(cancel).type(), QDBusMessage::ReplyMessage);
    }
    QCOMPARE(tap.exitCode(), 2);
    QTRY_COMPARE(news.lines.constLast(), QStringLiteral("0 canceled ''"));
}

void TestNfcTap::deathOfTheDaemonIsReported()
{
    daemon.start();
    AgentProcess client;
    client.hold(QStringLiteral("RequestSharingSelection"));
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({QStringLiteral("share-selection")});
    QVERIFY(sees(client, QStringLiteral("RequestSharingSelection")));
    Tap crash({QStringLiteral("crash")});
    QCOMPARE(crash.exitCode(), 0);
    QCOMPARE(crash.output(), QStringLiteral("done: crash of the daemon\n"));
    QCOMPARE(tap.exitCode(), 3);
    QCOMPARE(tap.errors(), QStringLiteral("nfctap: selection of what to share: the daemon has died\n"));
    QTRY_VERIFY(!daemon.isOnBus());
}

void TestNfcTap::releasedAgentIsNotAskedAgain()
{
    daemon.start();
    AgentProcess client;
    QCOMPARE(Tap({QStringLiteral("release")}).exitCode(), 3);
    QCOMPARE(client.registerAgent().error, QString());
    QCOMPARE(Tap({QStringLiteral("release")}).exitCode(), 0);
    QCOMPARE(client.members(), QStringList{QStringLiteral("Release")});
    QCOMPARE(Tap({QStringLiteral("empty")}).exitCode(), 3);
    QCOMPARE(client.members(), QStringList{QStringLiteral("Release")});
    QCOMPARE(client.unregisterAgent().error, QString());
}

void TestNfcTap::hangingDaemonAnswersNothing()
{
    daemon.start();
    QCOMPARE(Tap({QStringLiteral("hang"), QStringLiteral("3600")}).exitCode(), 0);
    const QDBusMessage reply = daemon.callAdapter(QStringLiteral("GetProperties"), {}, 200);
    QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.NoReply"));
    QVERIFY(daemon.isOnBus());
}

void TestNfcTap::daemonAnswersAfterItHung()
{
    daemon.start();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Tap({QStringLiteral("hang"), QStringLiteral("1")}).exitCode(), 0);
    QCOMPARE(daemon.callAdapter(QStringLiteral("GetProperties")).type(), QDBusMessage::ReplyMessage);
    QVERIFY(timer.elapsed() >= 1000);
}

// QtDBus gives up a call after 25 seconds by default.
void TestNfcTap::userMayTakeLongerThanTheBus()
{
    daemon.start();
    AgentProcess client;
    client.hold(QStringLiteral("RequestSharingSelection"));
    QCOMPARE(client.registerAgent().error, QString());
    Tap tap({QStringLiteral("share-selection")});
    QVERIFY(sees(client, QStringLiteral("RequestSharingSelection")));
    QTest::qWait(26000);
    QVERIFY(tap.isRunning());
    client.release(QStringLiteral("RequestSharingSelection"));
    QCOMPARE(tap.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestNfcTap)
#include "tst_nfctap.moc"
