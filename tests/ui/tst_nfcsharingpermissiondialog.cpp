// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QBuffer>
#include <QCryptographicHash>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStyleOptionGraphicsItem>
#include <QTemporaryDir>
#include <QtTest>

#include <MButton>
#include <MButtonModel>
#include <MImageWidget>
#include <MLabel>
#include <MWindow>
#include <NfcSharingPermissionDialog>

#include "catalogue.h"
#include "fakeservice.h"
#include "shownwidgets.h"

using ConnUi::NfcSharingPermissionDialog;

namespace {

const auto thumbnailer = QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
const auto thumbnailerPath = QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");
const auto queue = QStringLiteral("Queue");
const auto title = QStringLiteral("Share by touch?");
const auto sentence = QStringLiteral("The device you touched gets %1.");

QString text(const char *text)
{
    return QString::fromLatin1(text);
}

void write(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray png(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data();
}

QString dataFile(const QString &name)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1Char('/') + name;
}

void writeContact(const QString &id, const QByteArray &lines)
{
    write(dataFile(QStringLiteral("contacts/%1.vcf").arg(id)),
          "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n");
}

// Where the thumbnail of a file is found, of the size that is usual.
QString thumbnailFile(const QUrl &file)
{
    const QByteArray hash = QCryptographicHash::hash(file.toEncoded(), QCryptographicHash::Md5).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/thumbnails/normal/%1.png").arg(QString::fromLatin1(hash));
}

// A dialog on the screen of a phone.
class Shown
{
public:
    explicit Shown(const QStringList &resources) : dialog(new NfcSharingPermissionDialog(resources))
    {
        window.show();
        dialog->appear(&window);
        ready = QTest::qWaitForWindowExposed(&window);
    }

    QStringList labels() const { return shownTexts<MLabel>(dialog.data()); }

    bool hasPicture() const { return picture(); }

    // The picture; null while the area for it is empty.
    QPixmap pixmap() const { return picture() ? picture()->pixmap() : QPixmap(); }

    MImageWidget *picture() const { return shownWidgets<MImageWidget>(dialog.data()).value(0); }

    bool ready;
    MWindow window;
    QScopedPointer<NfcSharingPermissionDialog> dialog;
};

QByteArray noPicture(const QString &file)
{
    return "NfcSharingPermissionDialog: No picture in thumbnail " +
           QUrl::fromLocalFile(file).toString().toUtf8();
}

} // namespace

class TestNfcSharingPermissionDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void severalThingsShowTheirNumber_data();
    void severalThingsShowTheirNumber();
    void emptyListShowsAnEmptyName_data();
    void emptyListShowsAnEmptyName();
    void contactShowsBothNamesAndTheAvatar();
    void contactWithoutAvatarIsLogged();
    void contactWithoutCardHasNoName();
    void contactIsSpelledInSmallLetters();
    void namesAreShownAsTheyAre();
    void cardFileIsPrivateAndGoneAfterwards();
    void fileShowsItsName_data();
    void fileShowsItsName();
    void contentsStandInTheirOrderAndStyles();
    void answerIsTheResult_data();
    void answerIsTheResult();
    // The real thumbnail service keeps its name once it has started, so the stand-ins come first.
    void thumbnailIsAskedForOnce_data();
    void thumbnailIsAskedForOnce();
    void otherFilesAskForNoThumbnail_data();
    void otherFilesAskForNoThumbnail();
    void silentServiceLeavesTheAreaEmpty();
    void dyingServiceLeavesTheAreaEmpty();
    void refusingServiceLeavesTheAreaEmpty();
    void lateThumbnailIsHarmless();
    void thumbnailFileThatIsNoPictureLeavesTheAreaEmpty();
    void missingThumbnailFileLeavesTheAreaEmpty();
    void thumbnailWithoutAreaIsHarmless();
    void pictureIsAsSharpAsTheScreen();
    void realServiceMakesTheThumbnail_data();
    void realServiceMakesTheThumbnail();
    void realServiceWithoutThumbnailLeavesTheAreaEmpty_data();
    void realServiceWithoutThumbnailLeavesTheAreaEmpty();

private:
    QString file(const QString &name, const QByteArray &content = {}) const;

    const Catalogue english;
    QTemporaryDir folder;
    bool finished = false;

public Q_SLOTS:
    void requestFinished() { finished = true; }
};

void TestNfcSharingPermissionDialog::initTestCase()
{
    QVERIFY(QDBusConnection::sessionBus().connect(thumbnailer, thumbnailerPath, thumbnailer, text("Finished"),
                                                  this, SLOT(requestFinished())));
    // A type that whoever described it has written with capitals. Known before the types are first looked up.
    write(dataFile(QStringLiteral("mime/packages/shouting.xml")),
          "<mime-info xmlns='http://www.freedesktop.org/standards/shared-mime-info'>"
          "<mime-type type='Image/JPEG'><glob pattern='*.shouted'/></mime-type>"
          "<mime-type type='VIDEO/MP4'><glob pattern='*.yelled'/></mime-type></mime-info>");
}

void TestNfcSharingPermissionDialog::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    finished = false;
}

QString TestNfcSharingPermissionDialog::file(const QString &name, const QByteArray &content) const
{
    const QString path = folder.filePath(name);
    write(path, content);
    return path;
}

void TestNfcSharingPermissionDialog::severalThingsShowTheirNumber_data()
{
    QTest::addColumn<QStringList>("resources");
    QTest::addColumn<QString>("number");
    QTest::newRow("two pictures") << QStringList{text("/a.png"), text("/b.png")} << text("2");
    QTest::newRow("two contacts") << QStringList{text("contact:1"), text("contact:2")} << text("2");
    QTest::newRow("three of all kinds")
        << QStringList{text("contact:1"), text("/a.txt"), text("file:///b.png")} << text("3");
    QTest::newRow("many") << QStringList(12345, text("/a.png")) << text("12345");
}

void TestNfcSharingPermissionDialog::severalThingsShowTheirNumber()
{
    QFETCH(QStringList, resources);
    QFETCH(QString, number);
    const Shown shown(resources);
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(number + text(" items"))}));
    QCOMPARE(shown.picture()->imageId(), text("icon-m-content-nfc-inverse"));
    QCOMPARE(shownWidgets<MImageWidget>(shown.dialog.data()).size(), 1);
}

void TestNfcSharingPermissionDialog::emptyListShowsAnEmptyName_data()
{
    QTest::addColumn<QStringList>("resources");
    QTest::newRow("no resources") << QStringList();
    QTest::newRow("an empty resource") << QStringList(QString());
}

void TestNfcSharingPermissionDialog::emptyListShowsAnEmptyName()
{
    QFETCH(QStringList, resources);
    const Shown shown(resources);
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(QString())}));
    QVERIFY(!shown.hasPicture());
}

void TestNfcSharingPermissionDialog::contactShowsBothNamesAndTheAvatar()
{
    const QByteArray avatar = png(QSize(40, 40), Qt::red);
    writeContact(text("1"), "N:Virtanen;Aino;;;\r\nPHOTO;ENCODING=b;TYPE=PNG:" + avatar.toBase64() + "\r\n");
    const Shown shown({text("contact:1")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(text("the contact Aino Virtanen"))}));
    QCOMPARE(shown.pixmap().size(), QSize(40, 40));
    QCOMPARE(shown.pixmap().toImage().pixelColor(20, 20), QColor(Qt::red));
}

void TestNfcSharingPermissionDialog::contactWithoutAvatarIsLogged()
{
    writeContact(text("2"), "N:Virtanen;Aino;;;\r\n");
    QTest::ignoreMessage(QtWarningMsg, "Avatar picture not found for contact:2");
    const Shown shown({text("contact:2")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(text("the contact Aino Virtanen"))}));
    QVERIFY(!shown.hasPicture());
}

void TestNfcSharingPermissionDialog::contactWithoutCardHasNoName()
{
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(QStringLiteral("ContactExporter: unable to read %1: No such file or directory")
                           .arg(dataFile(text("contacts/nobody.vcf")))));
    QTest::ignoreMessage(QtWarningMsg, "Avatar picture not found for contact:nobody");
    const Shown shown({text("contact:nobody")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(text("the contact  "))}));
    QVERIFY(!shown.hasPicture());
}

void TestNfcSharingPermissionDialog::contactIsSpelledInSmallLetters()
{
    writeContact(text("3"), "N:Virtanen;Aino;;;\r\n");
    const Shown shown({text("Contact:3")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(text("Contact:3"))}));
}

void TestNfcSharingPermissionDialog::namesAreShownAsTheyAre()
{
    writeContact(text("4"), "N:%1 <b>x</b>;%2;;;\r\n");
    QTest::ignoreMessage(QtWarningMsg, "Avatar picture not found for contact:4");
    const Shown contact({text("contact:4")});
    QVERIFY(contact.ready);
    QCOMPARE(contact.labels().value(1), text("The device you touched gets the contact %2 %1 <b>x</b>."));

    const Shown named({text("/tmp/%1 <i>.txt")});
    QVERIFY(named.ready);
    QCOMPARE(named.labels().value(1), text("The device you touched gets %1 <i>.txt."));
}

void TestNfcSharingPermissionDialog::cardFileIsPrivateAndGoneAfterwards()
{
    static QTemporaryDir folder;
    static QFileInfoList cards;
    static QtMessageHandler usual;
    writeContact(text("5"), "N:Virtanen;Aino;;;\r\n");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder.path().toLocal8Bit());
    // The card is there while the missing avatar is logged.
    usual =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &line) {
            cards = QDir(folder.path()).entryInfoList(QDir::Files);
            for (QFileInfo &card : cards)
                card.stat();
            usual(type, context, line);
        });
    QTest::ignoreMessage(QtWarningMsg, "Avatar picture not found for contact:5");
    const NfcSharingPermissionDialog dialog({text("contact:5")});
    qInstallMessageHandler(usual);
    if (before.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before);

    QCOMPARE(cards.size(), 1);
    QCOMPARE(cards[0].permissions() & ~(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
    QVERIFY(cards[0].size() > 0);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

void TestNfcSharingPermissionDialog::fileShowsItsName_data()
{
    QTest::addColumn<QString>("resource");
    QTest::addColumn<QString>("name");
    QTest::newRow("path") << text("/home/user/notes.txt") << text("notes.txt");
    QTest::newRow("URL") << text("file:///home/user/notes.txt") << text("notes.txt");
    QTest::newRow("relative path") << text("notes.txt") << text("notes.txt");
    QTest::newRow("blanks") << text("/home/user/two words.txt") << text("two words.txt");
    QTest::newRow("folder") << text("/home/user/") << QString();
    QTest::newRow("other letters") << QStringLiteral(u"/home/\u00e4\u4e2d.txt")
                                   << QStringLiteral(u"\u00e4\u4e2d.txt");
    QTest::newRow("long") << QString(QLatin1Char('/') + QString(3000, QLatin1Char('x')))
                          << QString(3000, QLatin1Char('x'));
}

void TestNfcSharingPermissionDialog::fileShowsItsName()
{
    QFETCH(QString, resource);
    QFETCH(QString, name);
    const Shown shown({resource});
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels(), QStringList({title, sentence.arg(name)}));
    QVERIFY(!shown.hasPicture());
}

void TestNfcSharingPermissionDialog::contentsStandInTheirOrderAndStyles()
{
    const Shown shown({text("/a"), text("/b")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.dialog->title(), QString());
    QStringList styles;
    for (const MWidgetController *widget : shownWidgets<MWidgetController>(shown.dialog->centralWidget()))
        styles.append(widget->styleName());
    QCOMPARE(styles, QStringList({text("CommonThumbnail"), text("CommonXLargeSpacer"),
                                  text("CommonQueryTitle"), text("CommonQueryText")}));

    const QList<MLabel *> labels = shownWidgets<MLabel>(shown.dialog.data());
    QCOMPARE(labels.size(), 2);
    QVERIFY(labels[1]->wordWrap());
    QCOMPARE(labels[1]->wrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    const qreal middle = shown.dialog->mapRectToScene(shown.dialog->rect()).center().x();
    QCOMPARE(shown.picture()->mapRectToScene(shown.picture()->rect()).center().x(), middle);
    for (const MLabel *label : labels) {
        QVERIFY(label->alignment().testFlag(Qt::AlignHCenter));
        QCOMPARE(label->mapRectToScene(label->rect()).center().x(), middle);
    }
}

void TestNfcSharingPermissionDialog::answerIsTheResult_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("yes") << text("Yes") << 0x4000;
    QTest::newRow("no") << text("No") << 0x10000;
    QTest::newRow("escape") << QString() << 0x400000;
}

void TestNfcSharingPermissionDialog::answerIsTheResult()
{
    QFETCH(QString, button);
    QFETCH(int, result);
    Shown shown({text("/a.txt")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.dialog->buttons().size(), 2);
    QCOMPARE(shown.dialog->buttons().value(0), shown.dialog->button(M::YesButton));
    QCOMPARE(shown.dialog->buttons().value(1), shown.dialog->button(M::NoButton));
    QSignalSpy finished(shown.dialog.data(), &MDialog::finished);
    const QList<MButton *> buttons = shownWidgets<MButton>(shown.dialog.data());
    QCOMPARE(buttons.size(), 2);
    if (button.isEmpty())
        QTest::keyClick(shown.window.viewport(), Qt::Key_Escape);
    else
        (buttons[0]->text() == button ? buttons[0] : buttons[1])->click();
    QCOMPARE(finished, QList<QVariantList>({{result}}));
}

void TestNfcSharingPermissionDialog::thumbnailIsAskedForOnce_data()
{
    QTest::addColumn<QString>("resource");
    QTest::addColumn<QString>("uri");
    QTest::addColumn<QString>("mimeType");
    const auto row = [](const char *resource, const char *uri, const char *mimeType) {
        QTest::newRow(resource) << text(resource) << text(uri) << text(mimeType);
    };
    row("/home/user/a.png", "file:///home/user/a.png", "image/png");
    row("file:///home/user/a.jpg", "file:///home/user/a.jpg", "image/jpeg");
    row("file:///home/user/two%20words.gif", "file:///home/user/two%20words.gif", "image/gif");
    row("/home/user/a.svg", "file:///home/user/a.svg", "image/svg+xml");
    row("/home/user/a.mp4", "file:///home/user/a.mp4", "video/mp4");
    row("/home/user/A.PNG", "file:///home/user/A.PNG", "image/png");
    row("/home/user/a.shouted", "file:///home/user/a.shouted", "Image/JPEG");
    row("/home/user/a.yelled", "file:///home/user/a.yelled", "VIDEO/MP4");
}

void TestNfcSharingPermissionDialog::thumbnailIsAskedForOnce()
{
    QFETCH(QString, resource);
    QFETCH(QString, uri);
    QFETCH(QString, mimeType);
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    QSignalSpy called(&service, &FakeService::called);
    const Shown shown({resource});
    QVERIFY(shown.ready);
    QCOMPARE(shown.labels().value(1), sentence.arg(resource.section(QLatin1Char('/'), -1)));
    QTRY_COMPARE(called.size(), 1);
    const QList<FakeCall> calls = service.calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls[0].member, queue);
    QCOMPARE(calls[0].arguments,
             QVariantList({QStringList(uri), QStringList(mimeType), text("normal"), text("default"), 0u}));
    // There is room for it from the start.
    QVERIFY(shown.hasPicture());
    QVERIFY(shown.pixmap().isNull());
    QCOMPARE(shown.picture()->imageId(), QString());
    QCOMPARE(shown.picture()->size(), QSizeF(128, 128));
}

void TestNfcSharingPermissionDialog::otherFilesAskForNoThumbnail_data()
{
    QTest::addColumn<QStringList>("resources");
    QTest::newRow("document") << QStringList(text("/home/user/a.pdf"));
    QTest::newRow("sound") << QStringList(text("/home/user/a.mp3"));
    QTest::newRow("unknown") << QStringList(text("/home/user/a.unheard-of"));
    QTest::newRow("name of a picture in a folder's name") << QStringList(text("/home/a.png/a"));
    QTest::newRow("two pictures") << QStringList({text("/home/user/a.png"), text("/home/user/b.png")});
    QTest::newRow("nothing") << QStringList();
}

void TestNfcSharingPermissionDialog::otherFilesAskForNoThumbnail()
{
    QFETCH(QStringList, resources);
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    const Shown shown(resources);
    QVERIFY(shown.ready);
    QCOMPARE(service.members(), QStringList());
}

void TestNfcSharingPermissionDialog::silentServiceLeavesTheAreaEmpty()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.hold(queue);
    service.start();
    QSignalSpy called(&service, &FakeService::called);
    Shown shown({text("/home/user/a.png")});
    QVERIFY(shown.ready);
    QTRY_COMPARE(called.size(), 1);
    QVERIFY(shown.hasPicture());
    QVERIFY(shown.pixmap().isNull());
    QSignalSpy finished(shown.dialog.data(), &MDialog::finished);
    shown.dialog->button(M::YesButton)->click();
    QCOMPARE(finished, QList<QVariantList>({{int(M::YesButton)}}));
    shown.dialog.reset();
    service.release(queue);
    QCoreApplication::processEvents();
}

void TestNfcSharingPermissionDialog::dyingServiceLeavesTheAreaEmpty()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.dieOn(queue);
    service.start();
    QTest::ignoreMessage(QtWarningMsg,
                         "Thumbnailer: Queue returned error 'org.freedesktop.DBus.Error.NoReply': Message "
                         "recipient disconnected from message bus without replying");
    const Shown shown({text("/home/user/a.png")});
    // Asked on the connection that hears of the death.
    QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(thumbnailer));
    QCoreApplication::processEvents();
    QVERIFY(shown.hasPicture());
    QVERIFY(shown.pixmap().isNull());
    QCOMPARE(shown.labels().value(1), sentence.arg(text("a.png")));
}

void TestNfcSharingPermissionDialog::refusingServiceLeavesTheAreaEmpty()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    QSignalSpy called(&service, &FakeService::called);
    const Shown shown({text("/home/user/a.png")});
    QTRY_COMPARE(called.size(), 1);
    service.emitSignal(thumbnailerPath, thumbnailer, text("Error"),
                       {1u, QStringList(text("file:///home/user/a.png")), 0, text("not today")});
    QCoreApplication::processEvents();
    QVERIFY(shown.hasPicture());
    QVERIFY(shown.pixmap().isNull());
}

void TestNfcSharingPermissionDialog::lateThumbnailIsHarmless()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    const auto uri = QUrl(text("file:///home/user/late.png"));
    write(thumbnailFile(uri), png(QSize(128, 64), Qt::green));
    const QVariantList ready{1u, QStringList(uri.toString())};

    QSignalSpy called(&service, &FakeService::called);
    Shown closed({uri.toString()});
    Shown deleted({uri.toString()});
    QTRY_COMPARE(called.size(), 2);
    closed.dialog->reject();
    deleted.dialog.reset();
    service.emitSignal(thumbnailerPath, thumbnailer, text("Ready"), ready);
    QCoreApplication::processEvents();
    QVERIFY(!closed.dialog->scene());
    QCOMPARE(closed.dialog->result(), int(M::CancelButton));

    // It is there when the dialog appears again.
    closed.dialog->appear(&closed.window);
    QTRY_COMPARE(closed.pixmap().size(), QSize(128, 64));
}

void TestNfcSharingPermissionDialog::thumbnailFileThatIsNoPictureLeavesTheAreaEmpty()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    const auto uri = QUrl(text("file:///home/user/broken.png"));
    write(thumbnailFile(uri), "not a picture");
    QSignalSpy called(&service, &FakeService::called);
    const Shown shown({uri.toString()});
    QVERIFY(shown.ready);
    QTRY_COMPARE(called.size(), 1);
    const QByteArray warning = noPicture(thumbnailFile(uri));
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    service.emitSignal(thumbnailerPath, thumbnailer, text("Ready"), {1u, QStringList(uri.toString())});
    QCoreApplication::processEvents();
    QVERIFY(shown.hasPicture());
    QVERIFY(shown.pixmap().isNull());
}

void TestNfcSharingPermissionDialog::missingThumbnailFileLeavesTheAreaEmpty()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    const Shown shown({text("/home/user/a.png")});
    QVERIFY(shown.ready);
    QTest::ignoreMessage(QtWarningMsg, noPicture(text("/nowhere/thumbnail.png")).constData());
    shown.dialog->thumbnail(QUrl(), QUrl::fromLocalFile(text("/nowhere/thumbnail.png")));
    QVERIFY(shown.pixmap().isNull());

    // A truncated picture, and a URL that is not a local file.
    const QString cut = file(text("cut.png"), png(QSize(128, 128), Qt::green).left(60));
    QTest::ignoreMessage(QtWarningMsg, noPicture(cut).constData());
    shown.dialog->thumbnail(QUrl(), QUrl::fromLocalFile(cut));
    QVERIFY(shown.pixmap().isNull());
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcSharingPermissionDialog: No picture in thumbnail http://example.com/a.png");
    shown.dialog->thumbnail(QUrl(), QUrl(text("http://example.com/a.png")));
    QVERIFY(shown.pixmap().isNull());

    // Which thing it shows does not matter.
    shown.dialog->thumbnail(QUrl(text("file:///other")),
                            QUrl::fromLocalFile(file(text("thumb.png"), png(QSize(20, 10), Qt::green))));
    QCOMPARE(shown.pixmap().size(), QSize(20, 10));

    // A picture that is there stays.
    QTest::ignoreMessage(QtWarningMsg, noPicture(cut).constData());
    shown.dialog->thumbnail(QUrl(), QUrl::fromLocalFile(cut));
    QCOMPARE(shown.pixmap().size(), QSize(20, 10));
}

void TestNfcSharingPermissionDialog::thumbnailWithoutAreaIsHarmless()
{
    const Shown shown({text("/home/user/a.txt")});
    QVERIFY(shown.ready);
    const QString thumbnail = file(text("thumbnail.png"), png(QSize(20, 10), Qt::green));
    shown.dialog->thumbnail(QUrl(), QUrl::fromLocalFile(thumbnail));
    QVERIFY(!shown.hasPicture());
}

void TestNfcSharingPermissionDialog::pictureIsAsSharpAsTheScreen()
{
    FakeService service(QDBusConnection::SessionBus, thumbnailer);
    service.reply(queue, {1u});
    service.start();
    const Shown shown({text("/home/user/a.png")});
    QVERIFY(shown.ready);
    // Stripes of one pixel, which only a screen with twice the pixels can show.
    QImage stripes(256, 256, QImage::Format_RGB32);
    for (int x = 0; x < stripes.width(); ++x)
        for (int y = 0; y < stripes.height(); ++y)
            stripes.setPixelColor(x, y, x % 2 ? Qt::white : Qt::black);
    const QString path = folder.filePath(text("stripes.png"));
    QVERIFY(stripes.save(path));
    shown.dialog->thumbnail(QUrl(), QUrl::fromLocalFile(path));

    const auto contrast = [&](qreal ratio) {
        QImage screen((QSizeF(128, 128) * ratio).toSize(), QImage::Format_RGB32);
        screen.setDevicePixelRatio(ratio);
        screen.fill(Qt::red);
        QPainter painter(&screen);
        const QStyleOptionGraphicsItem option;
        shown.picture()->paint(&painter, &option);
        const int middle = screen.width() / 2;
        return screen.pixelColor(middle + 1, middle).lightness() -
               screen.pixelColor(middle, middle).lightness();
    };
    QCOMPARE(contrast(2), 255);
    QVERIFY2(qAbs(contrast(1)) < 64, qPrintable(QString::number(contrast(1))));
    QCOMPARE(contrast(2), 255);
}

void TestNfcSharingPermissionDialog::realServiceMakesTheThumbnail_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("asUrl");
    QTest::newRow("path") << text("path.png") << false;
    QTest::newRow("URL") << text("url.png") << true;
    QTest::newRow("URL with blanks") << text("two words.png") << true;
    QTest::newRow("path with blanks") << text("three more words.png") << false;
    QTest::newRow("again") << text("path.png") << false;
}

void TestNfcSharingPermissionDialog::realServiceMakesTheThumbnail()
{
    QFETCH(QString, name);
    QFETCH(bool, asUrl);
    const QString path = file(name, png(QSize(400, 200), Qt::blue));
    const Shown shown({asUrl ? QUrl::fromLocalFile(path).toString() : path});
    QVERIFY(shown.ready);
    QTRY_VERIFY_WITH_TIMEOUT(finished, 30000);
    QCOMPARE(shown.pixmap().size(), QSize(128, 64));
    QCOMPARE(shown.pixmap().toImage().pixelColor(64, 32), QColor(Qt::blue));
    QCOMPARE(shown.picture()->size(), QSizeF(128, 128));
    QCOMPARE(shown.labels().value(0), title);
}

void TestNfcSharingPermissionDialog::realServiceWithoutThumbnailLeavesTheAreaEmpty_data()
{
    QTest::addColumn<QString>("resource");
    QTest::newRow("missing file") << folder.filePath(text("missing.png"));
    QTest::newRow("no picture") << file(text("fraud.png"), "not a picture");
    QTest::newRow("no video") << file(text("fraud.mp4"), "not a video");
    QTest::newRow("web address") << text("http://example.com/a.png");
}

void TestNfcSharingPermissionDialog::realServiceWithoutThumbnailLeavesTheAreaEmpty()
{
    QFETCH(QString, resource);
    const Shown shown({resource});
    QVERIFY(shown.ready);
    QTRY_VERIFY_WITH_TIMEOUT(finished, 30000);
    QVERIFY(shown.hasPicture());
    QVERIFY(shown.pixmap().isNull());
}

QTEST_MAIN(TestNfcSharingPermissionDialog)
#include "tst_nfcsharingpermissiondialog.moc"
