// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "daemon/handlerfolder.h"

using namespace Qt::Literals::StringLiterals;

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
    void newFileIsSeenAtOnce();
    void kindDecides_data();
    void kindDecides();
    void uselessAnnouncementIsSkipped_data();
    void uselessAnnouncementIsSkipped();
    void otherFilesAreNotRead();
    void missingFolderHasNoHandlers();

private:
    void announce(const QString &file, const QByteArray &lines) const;
    QStringList applications(const QString &kind) const;

    std::unique_ptr<QTemporaryDir> folder;
};

void TestHandlerFolder::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
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
    const HandlerFolder folders({folder->path(), folder->filePath(u"system"_s)});
    for (const Handler &handler : folders.handlersFor(kind))
        ids.append(handler.applicationId);
    return ids;
}

void TestHandlerFolder::announcementIsRead()
{
    announce(u"a.handler"_s,
             "ApplicationId=viewer\nBus=system\nService=org.a.Viewer\nPath=/org/a/Viewer\nTakes=image/*\n");
    const QList<Handler> handlers = HandlerFolder({folder->path()}).handlersFor(u"image/png"_s);
    QCOMPARE(handlers.size(), 1);
    QCOMPARE(handlers[0].applicationId, u"viewer"_s);
    QCOMPARE(handlers[0].bus, u"system"_s);
    QCOMPARE(handlers[0].service, u"org.a.Viewer"_s);
    QCOMPARE(handlers[0].path.path(), u"/org/a/Viewer"_s);
}

void TestHandlerFolder::sessionIsTheUsualBus()
{
    announce(u"a.handler"_s, "ApplicationId=a\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(HandlerFolder({folder->path()}).handlersFor(u"unknown"_s)[0].bus, u"session"_s);
}

void TestHandlerFolder::everyValueIsText()
{
    // Some libraries make objects of it, of any size that it claims.
    const QString list = u"@Variant(ZZZZ)"_s;
    announce(u"a.handler"_s, "ApplicationId=" + list.toUtf8() + "\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(u"unknown"_s), QStringList{list});
}

void TestHandlerFolder::sampleHandlerAnnouncesItself()
{
    const QList<Handler> handlers =
        HandlerFolder({QStringLiteral(SAMPLE_HANDLER)}).handlersFor(u"uri:https://example.org"_s);
    QCOMPARE(handlers.size(), 1);
    QCOMPARE(handlers[0].applicationId, u"sample-handler"_s);
}

void TestHandlerFolder::handlersComeInTheOrderOfTheirFiles()
{
    announce(u"20.handler"_s, "ApplicationId=second\nService=a.b\nPath=/\nTakes=*\n");
    announce(u"10.handler"_s, "ApplicationId=first\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(u"unknown"_s), (QStringList{u"first"_s, u"second"_s}));
}

void TestHandlerFolder::foldersShareOneOrder()
{
    QVERIFY(QDir(folder->path()).mkdir(u"system"_s));
    announce(u"20.handler"_s, "ApplicationId=second\nService=a.b\nPath=/\nTakes=*\n");
    announce(u"system/10.handler"_s, "ApplicationId=first\nService=a.b\nPath=/\nTakes=*\n");
    announce(u"system/30.handler"_s, "ApplicationId=third\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(u"unknown"_s), (QStringList{u"first"_s, u"second"_s, u"third"_s}));
}

void TestHandlerFolder::fileReplacesThatOfALaterFolder()
{
    QVERIFY(QDir(folder->path()).mkdir(u"system"_s));
    announce(u"a.handler"_s, "ApplicationId=mine\nService=a.b\nPath=/\nTakes=text/*\n");
    announce(u"system/a.handler"_s, "ApplicationId=theirs\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(u"text/plain"_s), QStringList{u"mine"_s});
    QCOMPARE(applications(u"image/png"_s), QStringList());
}

void TestHandlerFolder::fallbackStandsBack()
{
    announce(u"10.handler"_s, "ApplicationId=viewer\nService=a.b\nPath=/\nTakes=*\nFallback=true\n");
    announce(u"20.handler"_s, "ApplicationId=notes\nService=a.b\nPath=/\nTakes=text/*\n");
    QCOMPARE(applications(u"text/plain"_s), QStringList{u"notes"_s});
    QCOMPARE(applications(u"image/png"_s), QStringList{u"viewer"_s});
}

void TestHandlerFolder::newFileIsSeenAtOnce()
{
    const HandlerFolder handlers({folder->path()});
    QCOMPARE(handlers.handlersFor(u"unknown"_s).size(), 0);
    announce(u"a.handler"_s, "ApplicationId=a\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(handlers.handlersFor(u"unknown"_s).size(), 1);
}

void TestHandlerFolder::kindDecides_data()
{
    QTest::addColumn<QByteArray>("takes");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("taken");
    QTest::newRow("exact") << QByteArray("text/plain") << u"text/plain"_s << true;
    QTest::newRow("other subtype") << QByteArray("text/plain") << u"text/vcard"_s << false;
    QTest::newRow("longer type") << QByteArray("text/plain") << u"text/plain2"_s << false;
    QTest::newRow("letter case") << QByteArray("text/plain") << u"TEXT/Plain"_s << true;
    QTest::newRow("any subtype") << QByteArray("text/*") << u"text/vcard"_s << true;
    QTest::newRow("any URI") << QByteArray("uri:*") << u"uri:tel:+1"_s << true;
    QTest::newRow("one scheme") << QByteArray("uri:tel:*") << u"uri:tel:+1"_s << true;
    QTest::newRow("other scheme") << QByteArray("uri:tel:*") << u"uri:https://a.org"_s << false;
    QTest::newRow("one of several") << QByteArray("uri:*, image/*") << u"image/png"_s << true;
    QTest::newRow("none of several") << QByteArray("uri:*, image/*") << u"text/plain"_s << false;
    QTest::newRow("anything") << QByteArray("*") << u"unknown"_s << true;
    QTest::newRow("nothing") << QByteArray("") << u"unknown"_s << false;
}

void TestHandlerFolder::kindDecides()
{
    QFETCH(QByteArray, takes);
    QFETCH(QString, kind);
    QFETCH(bool, taken);
    announce(u"a.handler"_s, "ApplicationId=a\nService=a.b\nPath=/\nTakes=" + takes + '\n');
    QCOMPARE(applications(kind), taken ? QStringList{u"a"_s} : QStringList());
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
    announce(u"a.handler"_s, lines);
    announce(u"b.handler"_s, "ApplicationId=b\nService=a.b\nPath=/\nTakes=*\n");
    const QString warning = u"%1 announces no handler"_s.arg(folder->filePath(u"a.handler"_s));
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(warning));
    QCOMPARE(applications(u"unknown"_s), QStringList{u"b"_s});
}

void TestHandlerFolder::otherFilesAreNotRead()
{
    announce(u"a.handler~"_s, "ApplicationId=a\nService=a.b\nPath=/\nTakes=*\n");
    QCOMPARE(applications(u"unknown"_s), QStringList());
}

void TestHandlerFolder::missingFolderHasNoHandlers()
{
    QCOMPARE(HandlerFolder({folder->filePath(u"missing"_s)}).handlersFor(u"unknown"_s).size(), 0);
}

QTEST_GUILESS_MAIN(TestHandlerFolder)
#include "tst_handlerfolder.moc"
