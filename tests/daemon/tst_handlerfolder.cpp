// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "daemon/handlerfolder.h"

class TestHandlerFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void announcementIsRead();
    void sessionIsTheUsualBus();
    void everyValueIsText();
    void sampleHandlerAnnouncesItself();
    void handlersComeInTheOrderOfTheirFiles();
    void foldersShareOneOrder();
    void fileReplacesThatOfALaterFolder();
    void fallbackStandsBack();
    void viewerTakesWhatNobodyElseTakes_data();
    void viewerTakesWhatNobodyElseTakes();
    void newFileIsSeenAtOnce();
    void kindDecides_data();
    void kindDecides();
    void uselessAnnouncementIsSkipped_data();
    void uselessAnnouncementIsSkipped();
    void otherFilesAreNotRead();
    void missingFolderHasNoHandlers();
    void pipeIsNotWaitedFor();
    void usersFolderComesFirst();
    void unknownUserHasTheSystemsFolders();

private:
    void announce(const QString &file, const QByteArray &lines) const;
    QStringList applications(const QString &kind) const;

    std::unique_ptr<QTemporaryDir> folder;
};

void TestHandlerFolder::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    folder = std::make_unique<QTemporaryDir>();
}

void TestHandlerFolder::announce(const QString &file, const QByteArray &lines) const
{
    QFile announcement(folder->filePath(file));
    if (!announcement.open(QFile::WriteOnly) || announcement.write("[Handler]\n" + lines) < 0)
        qFatal("cannot write %s", qUtf8Printable(announcement.fileName()));
}

QStringList TestHandlerFolder::applications(const QString &kind) const
{
    QStringList ids;
    const HandlerFolder folders({folder->path(), folder->filePath(QStringLiteral("system"))});
    for (const Handler &handler : folders.handlersFor(kind))
        ids.append(handler.applicationId);
    return ids;
}

void TestHandlerFolder::announcementIsRead()
{
    announce(QStringLiteral("a.handler"),
             "ApplicationId=viewer\nBus=system\nService=org.a.Viewer\nPath=/org/a/Viewer\nTakes=image/*\n");
    const QList<Handler> handlers = HandlerFolder({folder->path()}).handlersFor(QStringLiteral("image/png"));
    QCOMPARE(handlers.size(), 1);
    QCOMPARE(handlers[0].applicationId, QStringLiteral("viewer"));
    QCOMPARE(handlers[0].bus, QStringLiteral("system"));
    QCOMPARE(handlers[0].service, QStringLiteral("org.a.Viewer"));
    QCOMPARE(handlers[0].path.path(), QStringLiteral("/org/a/Viewer"));
}

void TestHandlerFolder::sessionIsTheUsualBus()
{
    announce(QStringLiteral("a.handler"), "ApplicationId=a\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(HandlerFolder({folder->path()}).handlersFor(QStringLiteral("unknown"))[0].bus,
             QStringLiteral("session"));
}

void TestHandlerFolder::everyValueIsText()
{
    // Some libraries make objects of it, of any size that it claims.
    const QString list = QStringLiteral("@Variant(ZZZZ)");
    announce(QStringLiteral("a.handler"),
             "ApplicationId=" + list.toUtf8() + "\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(QStringLiteral("unknown")), QStringList{list});
}

void TestHandlerFolder::sampleHandlerAnnouncesItself()
{
    const QList<Handler> handlers = HandlerFolder({QStringLiteral(SAMPLE_HANDLER)})
                                        .handlersFor(QStringLiteral("uri:https://example.org"));
    QCOMPARE(handlers.size(), 1);
    QCOMPARE(handlers[0].applicationId, QStringLiteral("sample-handler"));
}

void TestHandlerFolder::handlersComeInTheOrderOfTheirFiles()
{
    announce(QStringLiteral("20.handler"), "ApplicationId=second\nService=a.b\nPath=/\nTakes=*\n");
    announce(QStringLiteral("10.handler"), "ApplicationId=first\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(QStringLiteral("unknown")),
             (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void TestHandlerFolder::foldersShareOneOrder()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("system")));
    announce(QStringLiteral("20.handler"), "ApplicationId=second\nService=a.b\nPath=/\nTakes=*\n");
    announce(QStringLiteral("system/10.handler"), "ApplicationId=first\nService=a.b\nPath=/\nTakes=*\n");
    announce(QStringLiteral("system/30.handler"), "ApplicationId=third\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(QStringLiteral("unknown")),
             (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
}

void TestHandlerFolder::fileReplacesThatOfALaterFolder()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("system")));
    announce(QStringLiteral("a.handler"), "ApplicationId=mine\nService=a.b\nPath=/\nTakes=text/*\n");
    announce(QStringLiteral("system/a.handler"), "ApplicationId=theirs\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(QStringLiteral("text/plain")), QStringList{QStringLiteral("mine")});
    QCOMPARE(applications(QStringLiteral("image/png")), QStringList());
}

void TestHandlerFolder::fallbackStandsBack()
{
    announce(QStringLiteral("10.handler"),
             "ApplicationId=viewer\nService=a.b\nPath=/\nTakes=*\nFallback=true\n");
    announce(QStringLiteral("20.handler"), "ApplicationId=notes\nService=a.b\nPath=/\nTakes=text/*\n");
    QCOMPARE(applications(QStringLiteral("text/plain")), QStringList{QStringLiteral("notes")});
    QCOMPARE(applications(QStringLiteral("image/png")), QStringList{QStringLiteral("viewer")});
}

void TestHandlerFolder::viewerTakesWhatNobodyElseTakes_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("text") << QStringLiteral("text/plain") << true;
    QTest::newRow("contact card") << QStringLiteral("text/x-vcard") << true;
    QTest::newRow("number") << QStringLiteral("uri:tel:+1") << true;
    QTest::newRow("message") << QStringLiteral("uri:sms:+1") << true;
    QTest::newRow("data") << QStringLiteral("application/x-notes") << true;
    QTest::newRow("external type") << QStringLiteral("urn:nfc:ext:a.org:x") << true;
    QTest::newRow("unknown type") << QStringLiteral("unknown") << true;
    // The desktop has applications for them, and an empty tag holds nothing to show.
    QTest::newRow("web link") << QStringLiteral("uri:https://a.org") << false;
    QTest::newRow("address") << QStringLiteral("uri:mailto:a@b.org") << false;
    QTest::newRow("empty tag") << QStringLiteral("empty") << false;
}

void TestHandlerFolder::viewerTakesWhatNobodyElseTakes()
{
    QFETCH(QString, kind);
    QFETCH(bool, isTaken);
    const QString viewer = QStringLiteral(VIEWER);
    const QList<Handler> alone = HandlerFolder({viewer}).handlersFor(kind);
    QCOMPARE(alone.size(), isTaken ? 1 : 0);
    QVERIFY(!isTaken || alone[0].applicationId == QStringLiteral("nfc-viewer"));
    announce(QStringLiteral("zz.handler"), "ApplicationId=other\nService=a.b\nPath=/\nTakes=*\n");
    const QList<Handler> beside = HandlerFolder({viewer, folder->path()}).handlersFor(kind);
    QCOMPARE(beside.size(), 1);
    QCOMPARE(beside[0].applicationId, QStringLiteral("other"));
}

void TestHandlerFolder::newFileIsSeenAtOnce()
{
    const HandlerFolder handlers({folder->path()});
    QCOMPARE(handlers.handlersFor(QStringLiteral("unknown")).size(), 0);
    announce(QStringLiteral("a.handler"), "ApplicationId=a\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(handlers.handlersFor(QStringLiteral("unknown")).size(), 1);
}

void TestHandlerFolder::kindDecides_data()
{
    QTest::addColumn<QByteArray>("takes");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("taken");
    QTest::newRow("exact") << QByteArray("text/plain") << QStringLiteral("text/plain") << true;
    QTest::newRow("other subtype") << QByteArray("text/plain") << QStringLiteral("text/vcard") << false;
    QTest::newRow("longer type") << QByteArray("text/plain") << QStringLiteral("text/plain2") << false;
    QTest::newRow("letter case") << QByteArray("text/plain") << QStringLiteral("TEXT/Plain") << true;
    QTest::newRow("any subtype") << QByteArray("text/*") << QStringLiteral("text/vcard") << true;
    QTest::newRow("any URI") << QByteArray("uri:*") << QStringLiteral("uri:tel:+1") << true;
    QTest::newRow("one scheme") << QByteArray("uri:tel:*") << QStringLiteral("uri:tel:+1") << true;
    QTest::newRow("other scheme") << QByteArray("uri:tel:*") << QStringLiteral("uri:https://a.org") << false;
    QTest::newRow("one of several") << QByteArray("uri:*, image/*") << QStringLiteral("image/png") << true;
    QTest::newRow("none of several") << QByteArray("uri:*, image/*") << QStringLiteral("text/plain") << false;
    QTest::newRow("anything") << QByteArray("*") << QStringLiteral("unknown") << true;
    QTest::newRow("nothing") << QByteArray("") << QStringLiteral("unknown") << false;
}

void TestHandlerFolder::kindDecides()
{
    QFETCH(QByteArray, takes);
    QFETCH(QString, kind);
    QFETCH(bool, taken);
    announce(QStringLiteral("a.handler"), "ApplicationId=a\nService=a.b\nPath=/\nTakes=" + takes + '\n');
    QCOMPARE(applications(kind), taken ? QStringList{QStringLiteral("a")} : QStringList());
}

void TestHandlerFolder::uselessAnnouncementIsSkipped_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("nothing") << QByteArray();
    const QByteArray others = "Takes=*\nApplicationId=a\n";
    QTest::newRow("no service") << others + "Path=/a\n";
    QTest::newRow("service without a dot") << others + "Service=a\nPath=/a\n";
    QTest::newRow("unique name as service") << others + "Service=:1.5\nPath=/a\n";
    QTest::newRow("service with a line feed") << others + "Service=a.b\\n\nPath=/a\n";
    QTest::newRow("service that is too long") << others + "Service=a." + QByteArray(254, 'b') + "\nPath=/a\n";
    QTest::newRow("no path") << others + "Service=a.b\n";
    QTest::newRow("no object path") << others + "Service=a.b\nPath=/a/\n";
    QTest::newRow("path with a line feed") << others + "Service=a.b\nPath=/a\\n\n";
    QTest::newRow("unknown bus") << others + "Service=a.b\nPath=/a\nBus=nonsense\n";
    const QByteArray nameless = "Takes=*\nService=a.b\nPath=/a\n";
    QTest::newRow("no application") << nameless;
    QTest::newRow("application without a name") << nameless + "ApplicationId=\n";
    QTest::newRow("application in another folder") << nameless + "ApplicationId=../a\n";
    QTest::newRow("application with a line feed") << nameless + "ApplicationId=a\\n\n";
    QTest::newRow("huge") << nameless + "ApplicationId=a\n" + QByteArray(1 << 20, '#');
}

void TestHandlerFolder::uselessAnnouncementIsSkipped()
{
    QFETCH(QByteArray, lines);
    announce(QStringLiteral("a.handler"), lines);
    announce(QStringLiteral("b.handler"), "ApplicationId=b\nService=a.b\nPath=/\nTakes=*\n");
    const QString warning =
        QStringLiteral("%1 announces no handler").arg(folder->filePath(QStringLiteral("a.handler")));
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(warning));
    QCOMPARE(applications(QStringLiteral("unknown")), QStringList{QStringLiteral("b")});
}

void TestHandlerFolder::otherFilesAreNotRead()
{
    announce(QStringLiteral("a.handler~"), "ApplicationId=a\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(QStringLiteral("unknown")), QStringList());
}

void TestHandlerFolder::missingFolderHasNoHandlers()
{
    QCOMPARE(HandlerFolder({folder->filePath(QStringLiteral("missing"))})
                 .handlersFor(QStringLiteral("unknown"))
                 .size(),
             0);
}

void TestHandlerFolder::pipeIsNotWaitedFor()
{
    announce(QStringLiteral("b.handler"), "ApplicationId=b\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(mkfifo(QFile::encodeName(folder->filePath(QStringLiteral("a.handler"))).constData(), 0600), 0);
    QCOMPARE(applications(QStringLiteral("unknown")), QStringList{QStringLiteral("b")});
}

void TestHandlerFolder::usersFolderComesFirst()
{
    qputenv("XDG_DATA_HOME", "/mine");
    qputenv("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    const QStringList ofTheSystem = {QStringLiteral("/usr/local/share/connui-nfc/handlers"),
                                     QStringLiteral("/usr/share/connui-nfc/handlers")};
    QCOMPARE(HandlerFolder::standardFolders(geteuid()),
             QStringList{QStringLiteral("/mine/connui-nfc/handlers")} + ofTheSystem);
    // The daemon's own environment says nothing about another user.
    const uint other = geteuid() == 0 ? 1 : 0;
    const QString home = QFile::decodeName(getpwuid(other)->pw_dir);
    QCOMPARE(HandlerFolder::standardFolders(other),
             QStringList{home + QStringLiteral("/.local/share/connui-nfc/handlers")} + ofTheSystem);
}

void TestHandlerFolder::unknownUserHasTheSystemsFolders()
{
    qputenv("XDG_DATA_DIRS", "/usr/share");
    QCOMPARE(HandlerFolder::standardFolders(0x7FFFFFF0),
             QStringList{QStringLiteral("/usr/share/connui-nfc/handlers")});
}

QTEST_GUILESS_MAIN(TestHandlerFolder)
#include "tst_handlerfolder.moc"
