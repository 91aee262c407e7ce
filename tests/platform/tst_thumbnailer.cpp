// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

#include <QCryptographicHash>
#include <QDir>
#include <QImage>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

#include <Thumbnailer>

#include "dbusmock.h"

using Thumbnails::Thumbnailer;

namespace {

const auto thumbnailService = QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
const auto servicePath = QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");

// Asks as the dialogs do.
void request(Thumbnailer &thumbnailer, QList<QUrl> uris, QStringList mimeTypes, bool sendPixmap = false)
{
    thumbnailer.request(uris, mimeTypes, sendPixmap, QString(), QString(), false, true);
}

// A service whose Queue has the given body, in place of the real one.
struct OddService : DBusMock
{
    explicit OddService(const QString &out, const QString &body)
        : DBusMock(thumbnailService, {thumbnailService, servicePath, thumbnailService},
                   QDBusConnection::SessionBus)
    {
        ready = waitForRegistered() && addMethod(servicePath, thumbnailService, QStringLiteral("Queue"),
                                                 QStringLiteral("asasssu"), out, body)
                                               .type() == QDBusMessage::ReplyMessage;
    }

    bool emitReady(const QStringList &uris) const
    {
        return emitSignal(QStringLiteral("Ready"), QStringLiteral("uas"), {1u, uris});
    }

    bool emitError(uint handle, const QStringList &uris) const
    {
        return emitSignal(QStringLiteral("Error"), QStringLiteral("uasis"),
                          {handle, uris, 0, QStringLiteral("broken")});
    }

    bool waitForQueued(int count) const
    {
        return QTest::qWaitFor([&] { return callCount(servicePath, QStringLiteral("Queue")) == count; });
    }

    bool ready;

private:
    bool emitSignal(const QString &name, const QString &signature, const QVariantList &arguments) const
    {
        return call(servicePath, QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("EmitSignal"),
                    {thumbnailService, name, signature, arguments})
                   .type() == QDBusMessage::ReplyMessage;
    }
};

// Gives each request a handle of its own, from 1.
const auto countingBody = QStringLiteral("self.count = getattr(self, 'count', 0) + 1; ret = self.count");

const auto defaultThumbnail = QUrl(QStringLiteral("file:///default.png"));

QString thumbnailPath(const QByteArray &uri, const QString &flavor)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/thumbnails/%1/%2.png")
               .arg(flavor,
                    QString::fromLatin1(QCryptographicHash::hash(uri, QCryptographicHash::Md5).toHex()));
}

// A thumbnail as if it were made.
bool makeThumbnail(const QString &uri, const QString &flavor = QStringLiteral("normal"))
{
    const QString path = thumbnailPath(uri.toUtf8(), flavor);
    return QDir().mkpath(QFileInfo(path).path()) && QFile(path).open(QIODevice::WriteOnly);
}

} // namespace

class TestThumbnailer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    // The real service keeps its name once it has started, so the stand-ins come first.
    void refusingServiceGivesOneWarning();
    void nonsenseGivesOneWarning();
    void missingServiceGivesOneWarning();
    void slowServiceDoesNotBlock();
    void canceledRequestIsForgotten();
    void slotMayCancelWhatIsBeingAnswered();
    void requestAfterACanceledOneIsAnswered();
    void eachSizeIsAnswered();
    void errorOfOneSizeLeavesTheOther();
    void errorBeforeTheHandleCounts();
    void errorsOfOthersAreIgnored();
    void fileHasTheThumbnailThatOthersFind_data();
    void fileHasTheThumbnailThatOthersFind();
    void serviceMakesThumbnails_data();
    void serviceMakesThumbnails();
    void pathWithoutSchemeIsALocalFile();
    void pixmapComesWhenAskedFor();
    void flavorIsTheSize();
    void failureIsSilentWithoutDefaults();
    void failureAnnouncesTheDefaults();
    void thumbnailsOfOthersAreIgnored();
    void deletionByTheReceiverIsFine();
    void signalCarriesItsSignature();

private:
    QString picture(const QString &name);

    QTemporaryDir folder;
};

void TestThumbnailer::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

QString TestThumbnailer::picture(const QString &name)
{
    const QString path = folder.filePath(name);
    QImage image(400, 200, QImage::Format_RGB32);
    image.fill(Qt::blue);
    return image.save(path, "PNG") ? path : QString();
}

void TestThumbnailer::serviceMakesThumbnails_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("plain.png");
    QTest::newRow("blanks") << QStringLiteral("two words.png");
    QTest::newRow("umlauts") << QStringLiteral(u"\u00e4\u00f6\u00fc.png");
    QTest::newRow("marks") << QStringLiteral("a'b(c)#d%20e?f&g.png");
}

void TestThumbnailer::serviceMakesThumbnails()
{
    QFETCH(QString, name);
    const QUrl uri = QUrl::fromLocalFile(picture(name));
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {uri}, {QStringLiteral("image/png")});
    QVERIFY(spy.isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(spy[0][0].toUrl(), uri);
    QVERIFY(spy[0][1].toUrl().isLocalFile());
    const QImage made(spy[0][1].toUrl().toLocalFile());
    QCOMPARE(made.size(), QSize(128, 64));
    QCOMPARE(made.pixelColor(64, 32), QColor(Qt::blue));
    QVERIFY(spy[0][2].value<QPixmap>().isNull());
    QCOMPARE(spy[0][3].toString(), QStringLiteral("normal"));
}

void TestThumbnailer::pathWithoutSchemeIsALocalFile()
{
    const QUrl uri(picture(QStringLiteral("path.png")));
    QVERIFY(uri.isRelative());
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {uri}, {QStringLiteral("image/png")});
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(spy[0][0].toUrl(), uri);
}

void TestThumbnailer::pixmapComesWhenAskedFor()
{
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {QUrl::fromLocalFile(picture(QStringLiteral("pixels.png")))},
            {QStringLiteral("image/png")}, true);
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(spy[0][2].value<QPixmap>().size(), QSize(128, 64));
}

void TestThumbnailer::flavorIsTheSize()
{
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QList<QUrl> uris = {QUrl::fromLocalFile(picture(QStringLiteral("large.png")))};
    QStringList types = {QStringLiteral("image/png")};
    thumbnailer.request(uris, types, false, QStringLiteral("large"), QStringLiteral("foreground"), false,
                        true);
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(QImage(spy[0][1].toUrl().toLocalFile()).size(), QSize(256, 128));
    QCOMPARE(spy[0][3].toString(), QStringLiteral("large"));
}

void TestThumbnailer::failureIsSilentWithoutDefaults()
{
    const QUrl good = QUrl::fromLocalFile(picture(QStringLiteral("good.png")));
    const QUrl missing = QUrl::fromLocalFile(folder.filePath(QStringLiteral("missing.png")));
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    // In one request: tumbler mixes up what it works on at the same time.
    request(thumbnailer, {missing, good}, {QStringLiteral("image/png"), QStringLiteral("image/png")});
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(spy[0][0].toUrl(), good);
}

void TestThumbnailer::failureAnnouncesTheDefaults()
{
    const QUrl missing = QUrl::fromLocalFile(folder.filePath(QStringLiteral("missing.png")));
    const QUrl defaultThumbnail(QStringLiteral("file:///default.png"));
    Thumbnailer thumbnailer(defaultThumbnail, QPixmap(3, 3));
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {missing}, {QStringLiteral("image/png")});
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(spy[0][0].toUrl(), missing);
    QCOMPARE(spy[0][1].toUrl(), defaultThumbnail);
    QCOMPARE(spy[0][2].value<QPixmap>().size(), QSize(3, 3));
}

void TestThumbnailer::thumbnailsOfOthersAreIgnored()
{
    const QUrl mine = QUrl::fromLocalFile(picture(QStringLiteral("mine.png")));
    const QUrl theirs = QUrl::fromLocalFile(picture(QStringLiteral("theirs.png")));
    Thumbnailer thumbnailer({}, {});
    Thumbnailer other({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QSignalSpy otherSpy(&other, &Thumbnailer::thumbnail);
    // Theirs comes first, and mine in their size as well.
    QList<QUrl> uris = {theirs, mine};
    QStringList types = {QStringLiteral("image/png"), QStringLiteral("image/png")};
    other.request(uris, types, false, QStringLiteral("large"), QString(), false, true);
    QTRY_COMPARE_WITH_TIMEOUT(otherSpy.size(), 2, 30000);
    request(thumbnailer, {mine}, {QStringLiteral("image/png")});
    QTRY_COMPARE_WITH_TIMEOUT(spy.size(), 1, 30000);
    QCOMPARE(spy[0][0].toUrl(), mine);
    QCOMPARE(otherSpy.size(), 2);
}

void TestThumbnailer::deletionByTheReceiverIsFine()
{
    auto *thumbnailer = new Thumbnailer({}, {});
    int announced = 0;
    connect(thumbnailer, &Thumbnailer::thumbnail, this, [&] {
        ++announced;
        delete thumbnailer;
    });
    request(*thumbnailer,
            {QUrl::fromLocalFile(picture(QStringLiteral("one.png"))),
             QUrl::fromLocalFile(picture(QStringLiteral("two.png")))},
            {QStringLiteral("image/png"), QStringLiteral("image/png")});
    QTRY_COMPARE_WITH_TIMEOUT(announced, 1, 30000);
}

void TestThumbnailer::refusingServiceGivesOneWarning()
{
    OddService service(
        QStringLiteral("u"),
        QStringLiteral("raise dbus.exceptions.DBusException('full', name='org.example.Full')"));
    QVERIFY(service.ready);
    Thumbnailer thumbnailer(QUrl(QStringLiteral("file:///default.png")), QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QTest::ignoreMessage(QtWarningMsg, "Thumbnailer: Queue returned error 'org.example.Full': full");
    request(thumbnailer, {QUrl(QStringLiteral("file:///a.png"))}, {QStringLiteral("image/png")});
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][1].toUrl(), QUrl(QStringLiteral("file:///default.png")));
}

void TestThumbnailer::nonsenseGivesOneWarning()
{
    OddService service(QStringLiteral("s"), QStringLiteral("ret = 'yes'"));
    QVERIFY(service.ready);
    Thumbnailer thumbnailer(QUrl(QStringLiteral("file:///default.png")), QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QTest::ignoreMessage(
        QtWarningMsg,
        "Thumbnailer: Queue returned error 'org.freedesktop.DBus.Error.InvalidSignature': Unexpected reply "
        "signature: got \"s\", expected \"u\"");
    request(thumbnailer, {QUrl(QStringLiteral("file:///a.png"))}, {QStringLiteral("image/png")});
    QTRY_COMPARE(spy.size(), 1);
}

void TestThumbnailer::slowServiceDoesNotBlock()
{
    OddService service(QStringLiteral("u"), QStringLiteral("import time; time.sleep(20); ret = 1"));
    QVERIFY(service.ready);
    Thumbnailer thumbnailer({}, {});
    QElapsedTimer timer;
    timer.start();
    request(thumbnailer, {QUrl(QStringLiteral("file:///a.png"))}, {QStringLiteral("image/png")});
    QVERIFY(timer.elapsed() < 10000);
}

void TestThumbnailer::canceledRequestIsForgotten()
{
    OddService service(QStringLiteral("u"), QStringLiteral("ret = 7"));
    QVERIFY(service.ready);
    const auto first = QStringLiteral("file:///first.png");
    const auto second = QStringLiteral("file:///second.png");
    QVERIFY(makeThumbnail(first) && makeThumbnail(second));

    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QList<QUrl> uris = {QUrl(first)};
    QStringList types = {QStringLiteral("image/png")};
    thumbnailer.request(uris, types, false, QString(), QString(), false, true);
    QVERIFY(service.waitForQueued(1));
    uris = {QUrl(second)};
    thumbnailer.request(uris, types, false, QString(), QString(), true, false);
    QVERIFY(service.waitForQueued(2));
    QVERIFY(service.emitReady({first, second}));
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toUrl(), QUrl(second));
}

void TestThumbnailer::slotMayCancelWhatIsBeingAnswered()
{
    OddService service(QStringLiteral("u"), countingBody);
    QVERIFY(service.ready);
    const QStringList files{QStringLiteral("file:///a.png"), QStringLiteral("file:///b.png")};
    Thumbnailer thumbnailer(defaultThumbnail, QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    connect(&thumbnailer, &Thumbnailer::thumbnail, this, [&thumbnailer] {
        QList<QUrl> none;
        QStringList noTypes;
        thumbnailer.request(none, noTypes, false, QString(), QString(), true, false);
    });
    QList<QUrl> uris{QUrl(files[0]), QUrl(files[1])};
    QStringList types{QStringLiteral("image/png"), QStringLiteral("image/png")};
    thumbnailer.request(uris, types, false, QString(), QString(), false, true);
    QVERIFY(service.waitForQueued(1));
    QVERIFY(service.emitError(1, files));
    QTRY_COMPARE(spy.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(spy.size(), 1);
}

void TestThumbnailer::requestAfterACanceledOneIsAnswered()
{
    OddService service(QStringLiteral("u"), countingBody);
    QVERIFY(service.ready);
    const auto uri = QStringLiteral("file:///again.png");
    QVERIFY(makeThumbnail(uri));
    Thumbnailer thumbnailer(defaultThumbnail, QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QList<QUrl> uris = {QUrl(uri)};
    QStringList types = {QStringLiteral("image/png")};
    thumbnailer.request(uris, types, false, QString(), QString(), false, true);
    QVERIFY(service.waitForQueued(1));
    thumbnailer.request(uris, types, false, QString(), QString(), true, false);
    QVERIFY(service.waitForQueued(2));
    QVERIFY(service.emitError(1, {uri}) && service.emitReady({uri}));
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][1].toUrl(), QUrl::fromLocalFile(thumbnailPath(uri.toUtf8(), QStringLiteral("normal"))));
}

void TestThumbnailer::eachSizeIsAnswered()
{
    OddService service(QStringLiteral("u"), countingBody);
    QVERIFY(service.ready);
    const auto uri = QStringLiteral("file:///sizes.png");
    QVERIFY(makeThumbnail(uri));
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QList<QUrl> uris = {QUrl(uri)};
    QStringList types = {QStringLiteral("image/png")};
    thumbnailer.request(uris, types, false, QStringLiteral("normal"), QString(), false, true);
    thumbnailer.request(uris, types, false, QStringLiteral("large"), QString(), false, true);
    QVERIFY(service.waitForQueued(2));
    QVERIFY(service.emitReady({uri}));
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][3].toString(), QStringLiteral("normal"));
    QVERIFY(makeThumbnail(uri, QStringLiteral("large")));
    QVERIFY(service.emitReady({uri}));
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(spy[1][3].toString(), QStringLiteral("large"));
}

void TestThumbnailer::errorOfOneSizeLeavesTheOther()
{
    OddService service(QStringLiteral("u"), countingBody);
    QVERIFY(service.ready);
    const auto uri = QStringLiteral("file:///error.png");
    QVERIFY(makeThumbnail(uri, QStringLiteral("large")));
    Thumbnailer thumbnailer(defaultThumbnail, QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QList<QUrl> uris = {QUrl(uri)};
    QStringList types = {QStringLiteral("image/png")};
    thumbnailer.request(uris, types, false, QStringLiteral("normal"), QString(), false, true);
    thumbnailer.request(uris, types, false, QStringLiteral("large"), QString(), false, true);
    QVERIFY(service.waitForQueued(2));
    QVERIFY(service.emitError(1, {uri}));
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][1].toUrl(), defaultThumbnail);
    QCOMPARE(spy[0][3].toString(), QStringLiteral("normal"));
    QVERIFY(service.emitReady({uri}));
    QTRY_COMPARE(spy.size(), 2);
    QVERIFY(spy[1][1].toUrl() != defaultThumbnail);
    QCOMPARE(spy[1][3].toString(), QStringLiteral("large"));
}

void TestThumbnailer::errorBeforeTheHandleCounts()
{
    OddService service(
        QStringLiteral("u"),
        QStringLiteral("self.EmitSignal('org.freedesktop.thumbnails.Thumbnailer1', 'Error', 'uasis',\n"
                       "                [dbus.UInt32(9), args[0], dbus.Int32(0), 'broken'])\n"
                       "ret = 9"));
    QVERIFY(service.ready);
    Thumbnailer thumbnailer(defaultThumbnail, QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {QUrl(QStringLiteral("file:///early.png"))}, {QStringLiteral("image/png")});
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][1].toUrl(), defaultThumbnail);
}

void TestThumbnailer::errorsOfOthersAreIgnored()
{
    OddService service(QStringLiteral("u"), countingBody);
    QVERIFY(service.ready);
    const auto uri = QStringLiteral("file:///theirs.png");
    QVERIFY(makeThumbnail(uri));
    Thumbnailer thumbnailer(defaultThumbnail, QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {QUrl(uri)}, {QStringLiteral("image/png")});
    QVERIFY(service.waitForQueued(1));
    QVERIFY(service.emitError(77, {uri}) && service.emitReady({uri}));
    QTRY_COMPARE(spy.size(), 1);
    QVERIFY(spy[0][1].toUrl() != defaultThumbnail);
}

// As GIO writes the URI of a file, and so file managers and image viewers do.
void TestThumbnailer::fileHasTheThumbnailThatOthersFind_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("uri");
    QTest::newRow("plain") << QStringLiteral("/t/plain.png") << QByteArray("file:///t/plain.png");
    QTest::newRow("blank") << QStringLiteral("/t/two words.png") << QByteArray("file:///t/two%20words.png");
    QTest::newRow("semicolon") << QStringLiteral("/t/a;b.png") << QByteArray("file:///t/a%3Bb.png");
    QTest::newRow("brackets") << QStringLiteral("/t/a[1].png") << QByteArray("file:///t/a%5B1%5D.png");
    QTest::newRow("hash") << QStringLiteral("/t/a#b.png") << QByteArray("file:///t/a%23b.png");
    QTest::newRow("question mark") << QStringLiteral("/t/a?b.png") << QByteArray("file:///t/a%3Fb.png");
    QTest::newRow("percent") << QStringLiteral("/t/a%20b.png") << QByteArray("file:///t/a%2520b.png");
    QTest::newRow("not escaped") << QStringLiteral("/t/a&b+c,d=e@f:g!h~i*j'k(l)m$n.png")
                                 << QByteArray("file:///t/a&b+c,d=e@f:g!h~i*j'k(l)m$n.png");
    QTest::newRow("escaped") << QStringLiteral("/t/a\"b<c>d|e^f`g{h}i\\j.png")
                             << QByteArray("file:///t/a%22b%3Cc%3Ed%7Ce%5Ef%60g%7Bh%7Di%5Cj.png");
    QTest::newRow("umlaut") << QStringLiteral(u"/t/\u00e4.png") << QByteArray("file:///t/%C3%A4.png");
    QTest::newRow("roundabout path") << QStringLiteral("/t/./u/..//a.png") << QByteArray("file:///t/a.png");
}

void TestThumbnailer::fileHasTheThumbnailThatOthersFind()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, uri);
    OddService service(QStringLiteral("u"), countingBody);
    QVERIFY(service.ready);
    QVERIFY(makeThumbnail(QString::fromUtf8(uri)));
    Thumbnailer thumbnailer({}, {});
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    request(thumbnailer, {QUrl::fromLocalFile(path)}, {QStringLiteral("image/png")});
    QVERIFY(service.waitForQueued(1));
    QVERIFY(service.emitReady({QString::fromUtf8(uri)}));
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toUrl(), QUrl::fromLocalFile(path));
    QCOMPARE(spy[0][1].toUrl(), QUrl::fromLocalFile(thumbnailPath(uri, QStringLiteral("normal"))));
}

void TestThumbnailer::missingServiceGivesOneWarning()
{
    // A service file of the user's own comes before the system's.
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                         QStringLiteral("/dbus-1/services/%1.service").arg(thumbnailService);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[D-BUS Service]\nName=org.freedesktop.thumbnails.Thumbnailer1\nExec=/bin/false\n");
    file.close();
    QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    QCOMPARE(bus->call(QStringLiteral("ReloadConfig")).type(), QDBusMessage::ReplyMessage);

    Thumbnailer thumbnailer(QUrl(QStringLiteral("file:///default.png")), QPixmap());
    QSignalSpy spy(&thumbnailer, &Thumbnailer::thumbnail);
    QTest::ignoreMessage(
        QtWarningMsg,
        "Thumbnailer: Queue returned error 'org.freedesktop.DBus.Error.Spawn.ChildExited': Process "
        "org.freedesktop.thumbnails.Thumbnailer1 exited with status 1");
    request(thumbnailer, {QUrl(QStringLiteral("file:///a.png"))}, {QStringLiteral("image/png")});
    QTRY_COMPARE(spy.size(), 1);
    QVERIFY(file.remove());
    QCOMPARE(bus->call(QStringLiteral("ReloadConfig")).type(), QDBusMessage::ReplyMessage);
}

// Others connect to the signal by this string.
void TestThumbnailer::signalCarriesItsSignature()
{
    QVERIFY(Thumbnailer::staticMetaObject.indexOfSignal("thumbnail(QUrl,QUrl,QPixmap,QString)") >= 0);
}

QTEST_MAIN(TestThumbnailer)
#include "tst_thumbnailer.moc"
