// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QBuffer>
#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <MLabel>
#include <MTheme>

#include "processortime.h"
#include "theme/mtheme_p.h"
#include "touchtest.h"

namespace {

constexpr const char *styleNames[] = {"CommonBodyTextInverted",
                                      "CommonItemInfo",
                                      "CommonMainIcon",
                                      "CommonPanel",
                                      "CommonPanelInverted",
                                      "CommonProgressBarInverted",
                                      "CommonQueryIcon",
                                      "CommonQueryText",
                                      "CommonQueryTitle",
                                      "CommonSingleButton",
                                      "CommonSingleTitleInverted",
                                      "CommonSmallPanel",
                                      "CommonSubTitle",
                                      "CommonSubTitleInverted",
                                      "CommonThumbnail",
                                      "CommonTitle",
                                      "CommonXLargeSpacer",
                                      "Inverted"};

constexpr const char *pictureIds[] = {"icon-m-content-note-inverse",
                                      "icon-m-content-nfc-inverse",
                                      "icon-m-content-url-inverse",
                                      "icon-m-content-avatar-placeholder-inverse",
                                      "icon-m-content-sms-inverse",
                                      "icon-m-content-ruvo-store-inverse",
                                      "icon-m-service-nfc",
                                      "icon-m-placeholder",
                                      "icon-m-bluetooth-phone",
                                      "icon-m-bluetooth-computer",
                                      "icon-m-bluetooth-network",
                                      "icon-m-bluetooth-headset",
                                      "icon-m-bluetooth-speaker",
                                      "icon-m-bluetooth-microphone",
                                      "icon-m-bluetooth-video",
                                      "icon-m-bluetooth-keyboard",
                                      "icon-m-bluetooth-mouse",
                                      "icon-m-bluetooth-gamepad",
                                      "icon-m-bluetooth-camera",
                                      "icon-m-bluetooth-printer",
                                      "icon-m-bluetooth-wearable",
                                      "icon-m-bluetooth-toy",
                                      "icon-m-bluetooth-health",
                                      "icon-m-bluetooth-generic",
                                      "quenzotouch-nfc-banner-landscape",
                                      "quenzotouch-nfc-banner-portrait"};

/** Writes a theme file and makes new themes read it while it lives. */
class ThemeFile
{
public:
    explicit ThemeFile(const QByteArray &content)
    {
        QFile file(path());
        if (file.open(QIODevice::WriteOnly))
            file.write(content);
        qputenv("QUENZO_TOUCH_THEME", QFile::encodeName(path()));
    }
    ~ThemeFile() { qunsetenv("QUENZO_TOUCH_THEME"); }

    QString path() const { return folder.filePath(QStringLiteral("theme.ini")); }

private:
    QTemporaryDir folder;
};

QColor colorOf(const MThemePrivate &theme, const char *style)
{
    return theme.style(QLatin1String(style))->color;
}

} // namespace

class TestMTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void everyStyleExists_data();
    void everyStyleExists();
    void unknownStyleIsLoggedOnce();
    void everyPictureExists_data();
    void everyPictureExists();
    void picturesHaveContrastOnLightAndDark_data();
    void picturesHaveContrastOnLightAndDark();
    void bannersHaveTheirSizes();
    void picturesAreSharedUntilReleased();
    void installedIconIsFound();
    void foreignPictureIsReadFromItsFile_data();
    void foreignPictureIsReadFromItsFile();
    void foreignPictureIsDrawnInTheMeantime();
    void pipeInThePlaceOfAPictureEnds();
    void drawingThatCannotStartIsNoPicture();
    void missingIconStartsNoProcess();
    void drawingThatTakesTooMuchIsNoPicture();
    void themeFileReplacesStyles();
    void themeFileInDataFolderIsFound();
    void faultyFileLeavesBuiltInTheme_data();
    void faultyFileLeavesBuiltInTheme();
    void variantComesFromEnvironmentOrFile();
    void variantFollowsDesktopUnlessFixed();
    void doubtfulFileIsUsedAndNamed_data();
    void doubtfulFileIsUsedAndNamed();
    void motionFollowsTheDesktopUnlessTheEnvironmentSaysOtherwise();
    void contentOfATagIsLargerThanWhatIsSaidAboutIt();
    void iconsBesideTextHaveOneSize();
    void variantRepaintsWidgets();
    void textSizeChangesWidgets();
};

void TestMTheme::everyStyleExists_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : styleNames)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestMTheme::everyStyleExists()
{
    QFETCH(QString, name);
    MWidgetController widget;
    widget.setStyleName(name);
    QVERIFY(MThemePrivate::instance()->style(name));
}

void TestMTheme::unknownStyleIsLoggedOnce()
{
    QTest::ignoreMessage(QtWarningMsg, "MTheme: no style is called 'CommonNowhere'");
    MLabel label(QStringLiteral("Text"));
    MLabel other(QStringLiteral("Text"));
    label.setStyleName(QStringLiteral("CommonNowhere"));
    other.setStyleName(QStringLiteral("CommonNowhere"));
    QCOMPARE(label.preferredSize(), MLabel(QStringLiteral("Text")).preferredSize());
}

void TestMTheme::everyPictureExists_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : pictureIds)
        QTest::newRow(id) << QString::fromLatin1(id);
}

void TestMTheme::everyPictureExists()
{
    QFETCH(QString, id);
    const QPixmap *pixmap = MTheme::pixmap(id);
    QVERIFY(!pixmap->isNull());
    MTheme::releasePixmap(pixmap);
}

void TestMTheme::picturesHaveContrastOnLightAndDark_data()
{
    everyPictureExists_data();
}

void TestMTheme::picturesHaveContrastOnLightAndDark()
{
    QFETCH(QString, id);
    const QPixmap *pixmap = MTheme::pixmap(id);
    const QImage image = pixmap->toImage();
    MTheme::releasePixmap(pixmap);
    // A colored tile that stands out from both, with white on it.
    int white = 0;
    int colored = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            white += color.alpha() == 255 && color.lightness() > 240;
            colored += color.alpha() == 255 && color.lightness() > 50 && color.lightness() < 200;
        }
    }
    const int area = image.width() * image.height();
    QVERIFY(white > area / 100);
    QVERIFY(colored > area / 3);
}

void TestMTheme::bannersHaveTheirSizes()
{
    const QPixmap *landscape = MTheme::pixmap(QStringLiteral("quenzotouch-nfc-banner-landscape"));
    const QPixmap *portrait = MTheme::pixmap(QStringLiteral("quenzotouch-nfc-banner-portrait"));
    QCOMPARE(landscape->deviceIndependentSize(), QSizeF(854, 80));
    QCOMPARE(portrait->deviceIndependentSize(), QSizeF(480, 80));
    MTheme::releasePixmap(landscape);
    MTheme::releasePixmap(portrait);
}

void TestMTheme::picturesAreSharedUntilReleased()
{
    const auto &pixmaps = MThemePrivate::instance()->pixmaps;
    const size_t before = pixmaps.size();
    const QPixmap *first = MTheme::pixmap(QStringLiteral("icon-m-service-nfc"));
    const QPixmap *second = MTheme::pixmap(QStringLiteral("icon-m-service-nfc"));
    QCOMPARE(first, second);
    MTheme::releasePixmap(first);
    QCOMPARE(pixmaps.size(), before + 1);
    QVERIFY(!second->isNull());
    MTheme::releasePixmap(second);
    QCOMPARE(pixmaps.size(), before);
    const QPixmap foreign;
    MTheme::releasePixmap(&foreign);
    MTheme::releasePixmap(nullptr);
    QCOMPARE(pixmaps.size(), before);
}

void TestMTheme::installedIconIsFound()
{
    // As an application installs it, in the theme that every other falls back on.
    const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/icons/hicolor");
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/64x64/apps")));
    QFile index(folder + QStringLiteral("/index.theme"));
    QVERIFY(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=Hicolor\nDirectories=64x64/apps\n[64x64/apps]\nSize=64\nType=Fixed\n");
    index.close();
    QImage image(64, 64, QImage::Format_RGB32);
    image.fill(Qt::green);
    QVERIFY(image.save(folder + QStringLiteral("/64x64/apps/example-reader.png")));

    const QIcon icon = MThemePrivate().icon(QStringLiteral("example-reader"));
    QCOMPARE(icon.pixmap(64, 64).toImage().pixelColor(32, 32), QColor(Qt::green));
}

void TestMTheme::foreignPictureIsReadFromItsFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QSize>("size");
    QTest::newRow("XXXXXX.svg") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                                              "<rect width='8' height='8' fill='#00ff00'/></svg>")
                                << QSize(256, 256);
    for (const int length : {40, 256, 300}) {
        QImage image(length, length, QImage::Format_RGB32);
        image.fill(Qt::green);
        QByteArray content;
        QBuffer buffer(&content);
        QVERIFY(image.save(&buffer, "PNG"));
        QTest::addRow("XXXXXX %d.png", length) << content << QSize(length, length).boundedTo(QSize(256, 256));
    }
    QTest::newRow("XXXXXX.jpeg") << QByteArray("rubbish") << QSize(0, 0);
}

void TestMTheme::foreignPictureIsReadFromItsFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QSize, size);
    QTemporaryFile file(QDir::temp().filePath(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(file.open() && file.write(content) == content.size() && file.flush());
    const QPixmap picture = MTheme::foreignPixmap(file.fileName());
    QCOMPARE(picture.size(), size);
    if (!size.isEmpty())
        QCOMPARE(picture.toImage().pixelColor(size.width() / 2, size.height() / 2), QColor(Qt::green));
}

void TestMTheme::foreignPictureIsDrawnInTheMeantime()
{
    QTemporaryFile file(QDir::temp().filePath(QStringLiteral("XXXXXX.svg")));
    QVERIFY(file.open());
    file.write("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
               "<rect width='8' height='8' fill='#00ff00'/></svg>");
    QVERIFY(file.flush());
    QList<QImage> images;
    const auto keep = [&images](const QImage &image) { images.append(image); };
    auto context = std::make_unique<QObject>();
    MTheme::drawForeignImage(file.fileName(), context.get(), keep);
    QVERIFY(images.isEmpty());
    QTRY_COMPARE(images.size(), 1);
    QCOMPARE(images.constFirst().size(), QSize(256, 256));
    QCOMPARE(images.constFirst().pixelColor(128, 128), QColor(Qt::green));
    QTRY_VERIFY(context->children().isEmpty());

    MTheme::drawForeignImage(QStringLiteral("no-such-icon"), context.get(), keep);
    QTRY_COMPARE(images.size(), 2);
    QVERIFY(images.constLast().isNull());

    // Nobody wants it any more.
    MTheme::drawForeignImage(file.fileName(), context.get(), keep);
    context.reset();
    QCoreApplication::processEvents();
    QCOMPARE(images.size(), 2);
}

void TestMTheme::pipeInThePlaceOfAPictureEnds()
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("icon.svg"));
    QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
    QObject context;
    QList<QImage> images;
    MTheme::drawForeignImage(pipe, &context, [&images](const QImage &image) { images.append(image); });
    QTRY_COMPARE_WITH_TIMEOUT(images.size(), 1, 60000);
    QVERIFY(images.constFirst().isNull());
}

void TestMTheme::drawingThatCannotStartIsNoPicture()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
                                           "^MTheme: cannot start .*quenzotouchcore-draw-icon$")));
    QList<QImage> images;
    auto context = std::make_unique<QObject>();
    // A receiver may delete everything.
    const auto keep = [&](const QImage &image) {
        images.append(image);
        context.reset();
    };
    rlimit before;
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &none), 0);
    MTheme::drawForeignImage(QStringLiteral("/any.svg"), context.get(), keep);
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &before), 0);
    QVERIFY(images.isEmpty());
    QTRY_COMPARE(images.size(), 1);
    QVERIFY(images.constFirst().isNull());
}

void TestMTheme::missingIconStartsNoProcess()
{
    const double before = secondsOfChildren();
    QTest::ignoreMessage(QtWarningMsg, "MTheme: no picture is called 'no-such-icon'");
    MTheme::releasePixmap(MTheme::pixmap(QStringLiteral("no-such-icon")));
    QCOMPARE(secondsOfChildren(), before);
}

void TestMTheme::drawingThatTakesTooMuchIsNoPicture()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(
        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='64' "
        "height='64'><path id='line' stroke='red' stroke-dasharray='0.01' d='M0 0C" +
        QByteArray(" 1 2 3 4 5 6").repeated(300) + "'/>" +
        QByteArray("<use xlink:href='#line'/>").repeated(100000) + "</svg>");
    QVERIFY(file.flush());
    QVERIFY(MTheme::foreignPixmap(file.fileName()).isNull());

    // Nobody waits for it again.
    const double before = secondsOfChildren();
    QVERIFY(MTheme::foreignPixmap(file.fileName()).isNull());
    QCOMPARE(secondsOfChildren(), before);
}

void TestMTheme::themeFileReplacesStyles()
{
    const ThemeFile file("[Theme]\nfont-families=Serif\n[Light]\ntext=#112233\n[Dark]\ntext=#80ddeeff\n"
                         "[Base]\nfont-size=31\nmargins=1 2 3 4\n[CommonTitle]\ninherits=Base\ncolor=text\n"
                         "word-wrap=true\n");
    MThemePrivate theme;
    const MStyle *style = theme.style(QStringLiteral("CommonTitle"));
    QCOMPARE(style->font.pixelSize(), 31);
    QCOMPARE(style->font.families(), QStringList{QStringLiteral("Serif")});
    QCOMPARE(style->margins, QMarginsF(4, 1, 2, 3));
    QVERIFY(style->wordWrap);
    QCOMPARE(style->color, QColor(0x11, 0x22, 0x33));
    theme.variant = MTheme::Dark;
    QCOMPARE(colorOf(theme, "CommonTitle"), QColor(0xdd, 0xee, 0xff, 0x80));
    // Styles that the file leaves out stay as they were.
    QCOMPARE(theme.style(QStringLiteral("CommonMainIcon"))->width, 48);
}

void TestMTheme::themeFileInDataFolderIsFound()
{
    const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/quenzotouchcore");
    QVERIFY(QDir().mkpath(folder));
    QFile file(folder + QStringLiteral("/theme.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[CommonTitle]\nfont-size=41\n");
    file.close();
    QCOMPARE(MThemePrivate().style(QStringLiteral("CommonTitle"))->font.pixelSize(), 41);
    QVERIFY(file.remove());
}

void TestMTheme::faultyFileLeavesBuiltInTheme_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("it cannot be read");
    QTest::newRow("huge") << QByteArray((1 << 20) + 1, '#') << QStringLiteral("it cannot be read");
    QTest::newRow("rubbish") << QByteArray("\x01\xff nonsense")
                             << QStringLiteral(
                                    "Key file contains line “\x01%1 nonsense” which is not a key-value "
                                    "pair, group, or comment");
    QTest::newRow("unknown key") << QByteArray("[CommonTitle]\nfont-sise=12\n")
                                 << QStringLiteral("[CommonTitle] font-sise is not understood");
    QTest::newRow("no number") << QByteArray("[CommonTitle]\nfont-size=large\n")
                               << QStringLiteral("[CommonTitle] font-size is not understood");
    QTest::newRow("infinite") << QByteArray("[CommonTitle]\nfont-size=inf\n")
                              << QStringLiteral("[CommonTitle] font-size is not understood");
    QTest::newRow("too large") << QByteArray("[CommonTitle]\nwidth=1e300\n")
                               << QStringLiteral("[CommonTitle] width is not understood");
    QTest::newRow("lines without height") << QByteArray("[CommonTitle]\nelide=true\nline-height=0\n")
                                          << QStringLiteral("[CommonTitle] line-height is not understood");
    QTest::newRow("lines that go up") << QByteArray("[CommonTitle]\nline-height=-1\n")
                                      << QStringLiteral("[CommonTitle] line-height is not understood");
    QTest::newRow("unknown color") << QByteArray("[CommonTitle]\ncolor=puce\n")
                                   << QStringLiteral("[CommonTitle] color is not understood");
    QTest::newRow("no color") << QByteArray("[Light]\ntext=#12\n")
                              << QStringLiteral("[Light] text is not a color");
    QTest::newRow("three margins") << QByteArray("[CommonTitle]\nmargins=1 2 3\n")
                                   << QStringLiteral("[CommonTitle] margins is not understood");
    QTest::newRow("half true") << QByteArray("[CommonTitle]\nelide=maybe\n")
                               << QStringLiteral("[CommonTitle] elide is not understood");
    QTest::newRow("no base") << QByteArray("[CommonTitle]\ninherits=Nowhere\n")
                             << QStringLiteral("[CommonTitle] inherits nothing from Nowhere");
    QTest::newRow("circle") << QByteArray("[A]\ninherits=B\n[B]\ninherits=A\n") << QString();
}

void TestMTheme::faultyFileLeavesBuiltInTheme()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const ThemeFile file(content);
    const QString start = QStringLiteral("MTheme: cannot use theme file %1: ").arg(file.path());
    if (reason.isEmpty() || reason.contains(QLatin1String("%1"))) {
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(start) + QStringLiteral(".+")));
    } else {
        QTest::ignoreMessage(QtWarningMsg, qPrintable(start + reason));
    }
    const MThemePrivate theme;
    QCOMPARE(theme.style(QStringLiteral("CommonTitle"))->font.pixelSize(),
             MThemePrivate::instance()->style(QStringLiteral("CommonTitle"))->font.pixelSize());
}

void TestMTheme::variantComesFromEnvironmentOrFile()
{
    QCOMPARE(MThemePrivate().variant, MTheme::Light);
    qputenv("QUENZO_TOUCH_VARIANT", "dark");
    QCOMPARE(MThemePrivate().variant, MTheme::Dark);
    const ThemeFile file("[Theme]\nvariant=dark\n");
    qputenv("QUENZO_TOUCH_VARIANT", "light");
    QCOMPARE(MThemePrivate().variant, MTheme::Light);
    qunsetenv("QUENZO_TOUCH_VARIANT");
    QCOMPARE(MThemePrivate().variant, MTheme::Dark);
}

void TestMTheme::variantFollowsDesktopUnlessFixed()
{
    MLook wish;
    wish.dark = true;
    MThemePrivate theme;
    QVERIFY(theme.follow(wish));
    QCOMPARE(theme.variant, MTheme::Dark);
    QVERIFY(!theme.follow(wish));
    wish.highContrast = true;
    QVERIFY(theme.follow(wish));
    QCOMPARE(theme.variant, MTheme::DarkContrast);

    // A theme that is made for light takes the contrast and no more.
    const ThemeFile file("[Theme]\nvariant=light\n");
    MThemePrivate light;
    QVERIFY(light.follow(wish));
    QCOMPARE(light.variant, MTheme::LightContrast);
    qputenv("QUENZO_TOUCH_VARIANT", "dark-contrast");
    MThemePrivate fixed;
    qunsetenv("QUENZO_TOUCH_VARIANT");
    QVERIFY(!fixed.follow(MLook()));
    QCOMPARE(fixed.variant, MTheme::DarkContrast);
}

void TestMTheme::motionFollowsTheDesktopUnlessTheEnvironmentSaysOtherwise()
{
    MLook still;
    still.reducedMotion = true;
    qputenv("QUENZO_TOUCH_MOTION", "full");
    MThemePrivate moving;
    moving.follow(still);
    QVERIFY(!moving.reducedMotion);
    qputenv("QUENZO_TOUCH_MOTION", "reduced");
    QVERIFY(MThemePrivate().reducedMotion);
    qunsetenv("QUENZO_TOUCH_MOTION");
    // Nobody looks.
    QVERIFY(MThemePrivate().reducedMotion);
    MThemePrivate theme;
    theme.wishedReducedMotion.reset();
    theme.follow(still);
    QVERIFY(theme.reducedMotion);
    theme.follow(MLook());
    QVERIFY(!theme.reducedMotion);
}

void TestMTheme::contentOfATagIsLargerThanWhatIsSaidAboutIt()
{
    const MStyle &content = MThemePrivate::ownStyle("CommonSubTitleInverted");
    const MStyle &description = MThemePrivate::ownStyle("CommonQueryText");
    QVERIFY(content.fontSize > description.fontSize);
    QVERIFY(content.color != description.color);
}

void TestMTheme::iconsBesideTextHaveOneSize()
{
    const auto sizeOf = [](const char *name) {
        const MStyle &style = MThemePrivate::ownStyle(name);
        return QSizeF(style.width, style.height);
    };
    QCOMPARE(sizeOf("MDialogTitleIcon"), sizeOf("CommonMainIcon"));
}

void TestMTheme::variantRepaintsWidgets()
{
    MTheme *theme = MTheme::instance();
    QCOMPARE(theme->variant(), MTheme::Light);
    MWindow window;
    auto *button = new MButton(QStringLiteral("Call"));
    window.scene()->addItem(button);
    button->setGeometry(0, 0, 200, 60);
    const QImage light = TouchTest::picture(window.scene(), button->rect());
    QSignalSpy changed(theme, &MTheme::changed);
    theme->setVariant(MTheme::Dark);
    theme->setVariant(MTheme::Dark);
    QCOMPARE(changed.count(), 1);
    QVERIFY(TouchTest::picture(window.scene(), button->rect()) != light);
    theme->setVariant(MTheme::Light);
    QCOMPARE(TouchTest::picture(window.scene(), button->rect()), light);
}

void TestMTheme::textSizeChangesWidgets()
{
    MTheme *theme = MTheme::instance();
    MLabel label(QStringLiteral("Call"));
    const QSizeF usual = label.preferredSize();
    QSignalSpy changed(theme, &MTheme::changed);
    theme->setTextScale(2);
    theme->setTextScale(2);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(theme->textScale(), 2);
    QVERIFY(label.preferredSize().height() > 1.8 * usual.height());
    QVERIFY(label.preferredSize().width() > 1.8 * usual.width());
    theme->setTextScale(1);
    QCOMPARE(label.preferredSize(), usual);
}

void TestMTheme::doubtfulFileIsUsedAndNamed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("doubts");
    QTest::newRow("misspelled style") << QByteArray("[ComonTitle]\nfont-size=31\n")
                                      << QStringList{QStringLiteral("[ComonTitle] is not a known style")};
    QTest::newRow("misspelled palette") << QByteArray("[Ligth]\n[CommonTitle]\nfont-size=31\n")
                                        << QStringList{QStringLiteral("[Ligth] is not a known style")};
    QTest::newRow("only palettes") << QByteArray("[Light]\ntext=#112233\n")
                                   << QStringList{
                                          QStringLiteral("it has no style that its colors could be seen in")};
    QTest::newRow("base of a style") << QByteArray("[Base]\nfont-size=31\n[CommonTitle]\ninherits=Base\n")
                                     << QStringList();
    QTest::newRow("only a variant") << QByteArray("[Theme]\nvariant=dark\n") << QStringList();
}

void TestMTheme::doubtfulFileIsUsedAndNamed()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, doubts);
    const ThemeFile file(content);
    for (const QString &doubt : doubts)
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(QStringLiteral("MTheme: theme file %1: %2").arg(file.path(), doubt)));
    const MThemePrivate theme;
    const int size = theme.style(QStringLiteral("CommonTitle"))->font.pixelSize();
    QCOMPARE(size == 31, content.contains("[CommonTitle]"));
}

QTEST_MAIN(TestMTheme)
#include "tst_mtheme.moc"
