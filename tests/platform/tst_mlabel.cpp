// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QFontMetricsF>
#include <QGraphicsLinearLayout>
#include <QGraphicsScene>

#include <MLabel>

#include "theme/mtheme_p.h"
#include "touchtest.h"
#include "widgets/mtextblock_p.h"

using namespace TouchTest;

class TestMLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void setPropertiesAreReturned();
    void styleGivesWrappingAndElisionUnlessSet();
    void markupIsShownAsText();
    void wrappingMakesTextHigher();
    void longCenteredTextBeginsAtOneEdge_data();
    void longCenteredTextBeginsAtOneEdge();
    void wordWiderThanLineIsBroken();
    void everyLineEndBreaks();
    void elidingLetsLabelBeNarrow();
    void elidedTextStaysInside();
    void longestFittingVariantIsShown_data();
    void longestFittingVariantIsShown();
    void longestAndShortestVariantGiveTheSizes();
    void bidiControlsStayInLabel();
    void bidiControlsEndWithTheirLine();
    void textStaysInsideItsLine();
    void alignmentIsMirroredInRightToLeft();
    void veryLongTextIsDrawnInParts();
    void stackedMarksAreLimited();
    void textIsDrawnAtThePixelRatio();
    void sizeFollowsTextAndStyle();
    void foreignTextIsOffByDefault();
    void foreignTextMarksHiddenCharacters_data();
    void foreignTextMarksHiddenCharacters();
    void foreignTextKeepsOrdinaryText_data();
    void foreignTextKeepsOrdinaryText();
    void foreignTextIsOneVariant();
    void wordInALongParagraphStaysTogether();
    void lineStandsInTheMiddleOfItsHeight();
    void emphasisIsDarkerThanWhatStandsBesideIt();
    void emphasisMakesTextWider();
    void emphasisFollowsTheTextThatIsDrawn_data();
    void emphasisFollowsTheTextThatIsDrawn();
    void emphasisIsDrawnWhereItsTextIs();
    void newTextTakesEmphasisBack();
    void emphasisOutsideOfTheTextIsCut();
    void foreignTextLimitsEmptyLines_data();
    void foreignTextLimitsEmptyLines();
    void numberInEmbeddingLooksTheSameAsForeignText();
    void drawnTextIsTheFittingVariantOrElided();
    void textStaysInsideOfALabelThatIsTooSmall_data();
    void textStaysInsideOfALabelThatIsTooSmall();
    void elisionFollowsTheHeight_data();
    void elisionFollowsTheHeight();

private:
    static QImage imageOf(MLabel *label, const QSizeF &size, qreal ratio = 1);
};

QImage TestMLabel::imageOf(MLabel *label, const QSizeF &size, qreal ratio)
{
    QGraphicsScene scene;
    scene.addItem(label);
    label->setGeometry(QRectF(QPointF(), size));
    const QImage image = picture(&scene, QRectF(QPointF(), size), ratio);
    scene.removeItem(label);
    return image;
}

void TestMLabel::sizeFollowsTextAndStyle()
{
    MLabel label(QStringLiteral("Text"));
    const QSizeF plain = label.preferredSize();
    label.setStyleName(QStringLiteral("CommonTitle"));
    const QSizeF great = label.preferredSize();
    QVERIFY(great.width() > plain.width() && great.height() > plain.height());
    label.setText(QStringLiteral("Text that is longer"));
    QVERIFY(label.preferredSize().width() > great.width());
    label.setText(QStringLiteral("Text"));
    label.setStyleName(QString());
    QCOMPARE(label.preferredSize(), plain);
}

void TestMLabel::setPropertiesAreReturned()
{
    MLabel label(QStringLiteral("Text"));
    QCOMPARE(label.text(), QStringLiteral("Text"));
    label.setText(QStringLiteral("a\u009cb"));
    QCOMPARE(label.text(), QStringLiteral("a\u009cb"));
    QCOMPARE(label.wrapMode(), QTextOption::WordWrap);
    label.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QCOMPARE(label.wrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    QCOMPARE(label.alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    label.setAlignment(Qt::AlignCenter);
    QCOMPARE(label.alignment(), Qt::AlignCenter);
    label.setWordWrap(true);
    QVERIFY(label.wordWrap());
    label.setTextElide(true);
    QVERIFY(label.textElide());
    label.setStyleName(QStringLiteral("CommonTitle"));
    QCOMPARE(label.styleName(), QStringLiteral("CommonTitle"));
}

void TestMLabel::styleGivesWrappingAndElisionUnlessSet()
{
    MLabel label;
    QVERIFY(!label.wordWrap());
    label.setStyleName(QStringLiteral("CommonQueryTitle"));
    QVERIFY(label.wordWrap());
    label.setWordWrap(false);
    QVERIFY(!label.wordWrap());
    QVERIFY(!label.textElide());
    label.setStyleName(QStringLiteral("CommonSingleTitleInverted"));
    QVERIFY(label.textElide());
}

void TestMLabel::markupIsShownAsText()
{
    MLabel bold(QStringLiteral("<b>i</b>"));
    MLabel letter(QStringLiteral("i"));
    MLabel entity(QStringLiteral("&amp;&lt;"));
    QVERIFY(bold.preferredSize().width() > 4 * letter.preferredSize().width());
    QVERIFY(entity.preferredSize().width() > 4 * letter.preferredSize().width());
    MLabel file(QStringLiteral("<img src=\"file:///etc/passwd\" width=1 height=400>"));
    QCOMPARE(file.preferredSize().height(), letter.preferredSize().height());
}

void TestMLabel::longCenteredTextBeginsAtOneEdge_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<bool>("atEdge");
    QTest::newRow("three lines") << 3 << Qt::LeftToRight << false;
    QTest::newRow("four lines") << 4 << Qt::LeftToRight << true;
    QTest::newRow("four lines, from the right") << 4 << Qt::RightToLeft << true;
}

void TestMLabel::longCenteredTextBeginsAtOneEdge()
{
    QFETCH(int, lines);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(bool, atEdge);
    QGraphicsScene scene;
    auto *label = new MLabel(QStringLiteral("I\n").repeated(lines - 1) + QLatin1Char('I'));
    scene.addItem(label);
    label->setLayoutDirection(direction);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->resize(300, 200);
    QCOMPARE(label->alignment(), Qt::AlignCenter);
    const QRectF edge = direction == Qt::LeftToRight ? QRectF(0, 0, 20, 200) : QRectF(280, 0, 20, 200);
    QImage empty(20, 200, QImage::Format_ARGB32_Premultiplied);
    empty.fill(Qt::white);
    QCOMPARE(picture(&scene, edge) != empty, atEdge);
}

void TestMLabel::wrappingMakesTextHigher()
{
    MLabel label(QStringLiteral("one two three four five six seven"));
    const QSizeF line = label.preferredSize();
    QCOMPARE(label.effectiveSizeHint(Qt::PreferredSize, QSizeF(100, -1)).height(), line.height());
    label.setWordWrap(true);
    QVERIFY(label.effectiveSizeHint(Qt::PreferredSize, QSizeF(100, -1)).height() >= 3 * line.height());
    QCOMPARE(label.effectiveSizeHint(Qt::PreferredSize, QSizeF(line.width() + 1, -1)).height(),
             line.height());
    QVERIFY(label.minimumSize().width() < 100);
}

void TestMLabel::wordWiderThanLineIsBroken()
{
    for (const auto mode : {QTextOption::WordWrap, QTextOption::WrapAtWordBoundaryOrAnywhere}) {
        MLabel label(QStringLiteral("Donaudampfschifffahrtselektrizitätenhauptbetriebswerk"));
        label.setWordWrap(true);
        label.setWrapMode(mode);
        const qreal line = label.preferredSize().height();
        QVERIFY(label.effectiveSizeHint(Qt::PreferredSize, QSizeF(100, -1)).height() >= 4 * line);
    }
}

void TestMLabel::everyLineEndBreaks()
{
    MLabel one(QStringLiteral("a"));
    for (const auto &text : {QStringLiteral("a\nb"), QStringLiteral("a\r\nb"), QStringLiteral("a\rb"),
                             QStringLiteral("a\u2028b"), QStringLiteral("a\u2029b")}) {
        MLabel two(text);
        QCOMPARE(two.preferredSize().height(), 2 * one.preferredSize().height());
        QVERIFY(two.preferredSize().width() < 2 * one.preferredSize().width());
    }
}

void TestMLabel::elidingLetsLabelBeNarrow()
{
    MLabel label(QStringLiteral("a file name of some length.jpeg"));
    QCOMPARE(label.minimumSize().width(), label.preferredSize().width());
    label.setTextElide(true);
    QVERIFY(label.minimumSize().width() < label.preferredSize().width() / 4);
}

void TestMLabel::elidedTextStaysInside()
{
    QGraphicsScene scene;
    MLabel label(QStringLiteral("a file name of\nsome length.jpeg"));
    label.setTextElide(true);
    const QSizeF size(80, 30);
    scene.addItem(&label);
    label.setGeometry(QRectF(QPointF(), size));
    QImage beside = picture(&scene, QRectF(80, 0, 200, 30));
    QImage empty(beside.size(), beside.format());
    empty.fill(Qt::white);
    QCOMPARE(beside, empty);
    QVERIFY(picture(&scene, QRectF(QPointF(), size)) != picture(&scene, QRectF(80, 0, 80, 30)));
}

void TestMLabel::longestFittingVariantIsShown_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("longest first") << QStringLiteral("Messages and calls\u009cMessages\u009cMsg");
    QTest::newRow("shortest first") << QStringLiteral("Msg\u009cMessages\u009cMessages and calls");
    QTest::newRow("empty variants") << QStringLiteral("Messages and calls\u009c\u009cMessages\u009cMsg");
}

void TestMLabel::longestFittingVariantIsShown()
{
    QFETCH(QString, text);
    for (const auto &shown :
         {QStringLiteral("Messages and calls"), QStringLiteral("Messages"), QStringLiteral("Msg")}) {
        MLabel expected(shown);
        MLabel label(text);
        label.setTextElide(true);
        const QSizeF size = expected.preferredSize();
        QCOMPARE(imageOf(&label, size), imageOf(&expected, size));
    }
}

void TestMLabel::longestAndShortestVariantGiveTheSizes()
{
    MLabel label(QStringLiteral("Msg\u009cMessages and calls"));
    QCOMPARE(label.preferredSize(), MLabel(QStringLiteral("Messages and calls")).preferredSize());
    QCOMPARE(label.minimumSize().width(), MLabel(QStringLiteral("Msg")).preferredSize().width());
}

namespace {

// Pixels of each color.
struct Share
{
    int emphasized = 0;
    int beside = 0;
};

Share shareOf(const QImage &image)
{
    const QRgb emphasized = MThemePrivate::ownStyle("MLabelEmphasis").color.rgb();
    const QRgb beside = MThemePrivate::ownStyle("MLabelBesideEmphasis").color.rgb();
    Share share;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            share.emphasized += image.pixel(x, y) == emphasized;
            share.beside += image.pixel(x, y) == beside;
        }
    }
    return share;
}

} // namespace

// So long a paragraph takes two layouts; the first could only take the beginning of a word at its end.
void TestMLabel::wordInALongParagraphStaysTogether()
{
    constexpr int words = 200;
    const QString word(10, QLatin1Char('I'));
    const QSizeF oneWord = MLabel(word).preferredSize();
    MLabel label((word + QLatin1Char(' ')).repeated(words).trimmed());
    label.setWordWrap(true);
    QCOMPARE(label.effectiveSizeHint(Qt::PreferredSize, QSizeF(oneWord.width(), -1)).height(),
             words * oneWord.height());
}

void TestMLabel::lineStandsInTheMiddleOfItsHeight()
{
    const MTextBlock plain(QStringLiteral("I"), {QFont(), -1});
    const MTextBlock high(QStringLiteral("I"), {QFont(), -1, QTextOption::NoWrap, 3});
    const qreal free = high.size().height() - plain.size().height();
    QVERIFY(free > 0);
    const auto drawn = [&high](const MTextBlock &block, qreal top) {
        QImage image(high.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        block.draw(&painter, QRectF(QPointF(0, top), block.size()), Qt::AlignTop, Qt::LeftToRight,
                   image.rect());
        return image;
    };
    QCOMPARE(drawn(high, 0), drawn(plain, free / 2));
}

// Each line is a paragraph of its own, and the last one takes two layouts.
void TestMLabel::emphasisIsDarkerThanWhatStandsBesideIt()
{
    const int height = int(MLabel(QStringLiteral("I")).preferredSize().height());
    MLabel label(QStringLiteral("IIIIIIII\nIIIIIIII\n") + QString(3000, QLatin1Char('I')));
    label.setWordWrap(true);
    label.setAlignment(Qt::AlignTop);
    const auto sharesOf = [&label, height] {
        const QImage image = imageOf(&label, QSizeF(300, 1200));
        return QList<Share>{shareOf(image.copy(0, 0, 300, height)),
                            shareOf(image.copy(0, height, 300, height)),
                            shareOf(image.copy(0, 2 * height, 300, 1200 - 2 * height))};
    };
    label.setEmphasis(9, 8);
    for (int line = 0; line < 3; ++line) {
        QCOMPARE(sharesOf().at(line).emphasized > 0, line == 1);
        QCOMPARE(sharesOf().at(line).beside > 0, line != 1);
    }
    label.setEmphasis(18 + 2040, 20);
    for (int line = 0; line < 3; ++line) {
        QCOMPARE(sharesOf().at(line).emphasized > 0, line == 2);
        QVERIFY(sharesOf().at(line).beside > 0);
    }
}

void TestMLabel::emphasisMakesTextWider()
{
    MLabel label(QStringLiteral("www.example.org"));
    const qreal before = label.preferredSize().width();
    label.setEmphasis(4, 11);
    QVERIFY(label.preferredSize().width() > before);
    QCOMPARE(label.text(), QStringLiteral("www.example.org"));
    QCOMPARE(label.drawnText(), QStringLiteral("www.example.org"));
}

void TestMLabel::emphasisFollowsTheTextThatIsDrawn_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("plain") << QStringLiteral("https://");
    QTest::newRow("hidden characters") << QStringLiteral("https://\u202e\u200b@");
    QTest::newRow("characters of two units") << QStringLiteral("https://\U000e0041\U0001f600@");
    QTest::newRow("lines") << QStringLiteral("https://a\r\nb\n\n\n\nc@");
    QTest::newRow("embedding") << QStringLiteral("https://\u202ab\u202c@");
    QTest::newRow("markup") << QStringLiteral("https://<b>&amp;@");
    QTest::newRow("stack of marks") << QStringLiteral("https://a") + QString(200, QChar(0x301)) +
                                           QLatin1Char('@');
}

void TestMLabel::emphasisFollowsTheTextThatIsDrawn()
{
    QFETCH(QString, before);
    MLabel label(before + QStringLiteral("evil.org/path"));
    label.setForeignText(true);
    label.setEmphasis(before.size(), 8);
    QCOMPARE(label.emphasizedText(), QStringLiteral("evil.org"));
}

// Marks that nobody draws move nothing.
void TestMLabel::emphasisIsDrawnWhereItsTextIs()
{
    const auto pictureWith = [](int marks) {
        const QString before = QLatin1Char('a') + QString(marks, QChar(0x301)) + QLatin1Char('@');
        MLabel label(before + QStringLiteral("evil.org/path"));
        label.setForeignText(true);
        label.setEmphasis(before.size(), 8);
        return imageOf(&label, QSizeF(300, 60));
    };
    QCOMPARE(pictureWith(200), pictureWith(30));
}

void TestMLabel::newTextTakesEmphasisBack()
{
    MLabel label(QStringLiteral("www.example.org"));
    label.setEmphasis(4, 11);
    QCOMPARE(label.emphasizedText(), QStringLiteral("example.org"));
    label.setText(QStringLiteral("www.example.com"));
    QCOMPARE(label.emphasizedText(), QString());
    QCOMPARE(shareOf(imageOf(&label, label.preferredSize())).beside, 0);
}

void TestMLabel::emphasisOutsideOfTheTextIsCut()
{
    MLabel label(QStringLiteral("abc"));
    label.setEmphasis(1, 100);
    QCOMPARE(label.emphasizedText(), QStringLiteral("bc"));
    label.setEmphasis(100, 100);
    QCOMPARE(label.emphasizedText(), QString());
    label.setEmphasis(-1, 0);
    QCOMPARE(label.emphasizedText(), QString());
    imageOf(&label, QSizeF(100, 30));
}

void TestMLabel::bidiControlsStayInLabel()
{
    QGraphicsScene scene;
    MLabel hostile;
    MLabel neighbor(QStringLiteral("amount 12.50 (paid)"));
    scene.addItem(&hostile);
    scene.addItem(&neighbor);
    hostile.setGeometry(QRectF(0, 0, 200, 30));
    neighbor.setGeometry(QRectF(0, 30, 200, 30));
    hostile.setText(QStringLiteral("abc"));
    const QImage before = picture(&scene, QRectF(0, 30, 200, 30));
    for (const auto &control : {QStringLiteral("\u202e"), QStringLiteral("\u202b"), QStringLiteral("\u2067"),
                                QStringLiteral("\u200f"), QStringLiteral("\u202e\u202e\u202e")}) {
        hostile.setText(QStringLiteral("abc") + control);
        QCOMPARE(picture(&scene, QRectF(0, 30, 200, 30)), before);
    }
}

void TestMLabel::bidiControlsEndWithTheirLine()
{
    MLabel label(QStringLiteral("\u202eabc\nfrom 123 to 456"));
    MLabel plain(QStringLiteral("abc\nfrom 123 to 456"));
    const QSizeF size(300, plain.preferredSize().height());
    const QImage drawnLabel = imageOf(&label, size);
    const QImage drawnPlain = imageOf(&plain, size);
    const int half = int(size.height() / 2);
    QCOMPARE(drawnLabel.copy(0, half, 300, half), drawnPlain.copy(0, half, 300, half));
    QVERIFY(drawnLabel.copy(0, 0, 300, half) != drawnPlain.copy(0, 0, 300, half));
}

// A line is higher than its font, and the text is in its middle.
void TestMLabel::textStaysInsideItsLine()
{
    MLabel label(QStringLiteral("g"));
    const QSizeF size(100, label.preferredSize().height());
    QGraphicsScene scene;
    scene.addItem(&label);
    label.setGeometry(QRectF(QPointF(0, 20), size));
    const QRectF around(0, 0, 100, size.height() + 40);
    const QImage drawn = picture(&scene, around);
    scene.removeItem(&label);
    const int bottom = int(20 + size.height()) - 1;
    QCOMPARE(drawn.copy(0, bottom, 100, 20), picture(&scene, around).copy(0, bottom, 100, 20));
    QVERIFY(drawn != picture(&scene, around));
}

void TestMLabel::alignmentIsMirroredInRightToLeft()
{
    MLabel label(QStringLiteral("left"));
    const QSizeF size(200, 40);
    const QImage left = imageOf(&label, size);
    label.setLayoutDirection(Qt::RightToLeft);
    const QImage right = imageOf(&label, size);
    QVERIFY(left != right);
    label.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(imageOf(&label, size), left);
}

void TestMLabel::veryLongTextIsDrawnInParts()
{
    QGraphicsScene scene;
    MLabel label(QStringLiteral("line of a text\n").repeated(20000));
    scene.addItem(&label);
    label.setGeometry(QRectF(QPointF(), label.preferredSize()));
    const QImage first = picture(&scene, QRectF(0, 0, 200, 100));
    const qreal line = MLabel(QStringLiteral("x")).preferredSize().height();
    QCOMPARE(picture(&scene, QRectF(0, 10000 * line, 200, 100)), first);
}

void TestMLabel::stackedMarksAreLimited()
{
    const QString mark(QChar(0x301));
    // Thirty of them are high.
    const QSizeF size(100, 1600);
    const auto stack = [&](int marks) {
        MLabel label(QLatin1Char('a') + mark.repeated(marks) + QLatin1Char('b'));
        return imageOf(&label, size);
    };
    QVERIFY(stack(30) != stack(29));
    QCOMPARE(stack(31), stack(30));
    QCOMPARE(stack(100000), stack(30));
}

void TestMLabel::textIsDrawnAtThePixelRatio()
{
    MLabel label(QStringLiteral("Sharp"));
    const QSizeF size(100, 40);
    QImage stretched = imageOf(&label, size).scaled(200, 80);
    stretched.setDevicePixelRatio(2);
    QVERIFY(imageOf(&label, size, 2) != stretched);
}

void TestMLabel::foreignTextIsOffByDefault()
{
    MLabel label(QStringLiteral("a\u200bb"));
    QVERIFY(!label.isForeignText());
    QCOMPARE(label.drawnText(), label.text());
    label.setForeignText(true);
    QVERIFY(label.isForeignText());
    QCOMPARE(label.drawnText(), QStringLiteral("a\ufffdb"));
    label.setForeignText(false);
    QCOMPARE(label.drawnText(), label.text());
}

void TestMLabel::foreignTextMarksHiddenCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("drawn");
    const auto newRow = [](const char *name, const QString &text, const QString &drawn) {
        QTest::newRow(name) << text << drawn;
    };
    for (char32_t control = 0; control < 0xa0; ++control) {
        if ((control < 0x20 || control >= 0x7f) && control != '\n' && control != '\r') {
            QTest::addRow("control %02x", unsigned(control))
                << QLatin1Char('a') + QString::fromUcs4(&control, 1) + QLatin1Char('b')
                << QStringLiteral("a\ufffdb");
        }
    }
    for (const char32_t hidden :
         {0xad,   0x34f,   0x61c,   0x115f,  0x1160,  0x17b4,  0x17b5,  0x180e, 0x200b, 0x200e, 0x200f,
          0x202b, 0x202c,  0x202d,  0x202e,  0x2060,  0x2061,  0x2062,  0x2063, 0x2064, 0x2065, 0x2066,
          0x2067, 0x2068,  0x2069,  0x206a,  0x206f,  0x3164,  0xffa0,  0xfff0, 0xfff9, 0xfffb, 0xfffe,
          0xfdd0, 0x1d173, 0x1bca0, 0xe0001, 0xe0041, 0xe007f, 0xe0080, 0x1ffff}) {
        QTest::addRow("%04x", unsigned(hidden))
            << QLatin1Char('a') + QString::fromUcs4(&hidden, 1) + QLatin1Char('b')
            << QStringLiteral("a\ufffdb");
    }
    newRow("first and last", QStringLiteral("\u202eabc\u200f"), QStringLiteral("\ufffdabc\ufffd"));
    newRow("byte order mark", QStringLiteral("\ufeffa\ufeffb"), QStringLiteral("\ufffda\ufffdb"));
    newRow("in a row", QStringLiteral("a\u200b\u200b\u200bb"), QStringLiteral("a\ufffd\ufffd\ufffdb"));
    newRow("lone surrogate", QStringLiteral("a") + QChar(0xd800) + QStringLiteral("b"),
           QStringLiteral("a\ufffdb"));
    newRow("joiner between Latin letters", QStringLiteral("pay\u200dpal"), QStringLiteral("pay\ufffdpal"));
    newRow("non-joiner between Latin letters", QStringLiteral("pay\u200cpal"),
           QStringLiteral("pay\ufffdpal"));
    newRow("joiner at the end", QStringLiteral("\U0001f468\u200d"), QStringLiteral("\U0001f468\ufffd"));
    newRow("two joiners", QStringLiteral("\U0001f468\u200d\u200d\U0001f469"),
           QStringLiteral("\U0001f468\ufffd\ufffd\U0001f469"));
    newRow("variation selector after a letter", QStringLiteral("a\ufe0fb"), QStringLiteral("a\ufffdb"));
    newRow("second variation selector", QStringLiteral("\u2764\ufe0f\ufe0f"),
           QStringLiteral("\u2764\ufe0f\ufffd"));
    newRow("variation selector in a host", QStringLiteral("bank.\ufe0fexample"),
           QStringLiteral("bank.\ufffdexample"));
    newRow("override in an embedding", QStringLiteral("\u202a+358\u202e40\u202c"),
           QStringLiteral("\u2066+358\ufffd40\u2069"));
    newRow("embedding that ends early", QStringLiteral("\u202a1\u202c2\u202a3\u202c"),
           QStringLiteral("\u20661\ufffd2\ufffd3\u2069"));
    newRow("embedding without an end", QStringLiteral("\u202aabc\ndef\u202c"),
           QStringLiteral("\ufffdabc\ndef\ufffd"));
    newRow("second embedding", QStringLiteral("\u202a1\u202c\n\u202a2\u202c"),
           QStringLiteral("\u20661\u2069\n\ufffd2\ufffd"));
    newRow("embedding inside out", QStringLiteral("\u202ca\u202a"), QStringLiteral("\ufffda\ufffd"));
}

void TestMLabel::foreignTextMarksHiddenCharacters()
{
    QFETCH(QString, text);
    QFETCH(QString, drawn);
    MLabel label(text);
    label.setForeignText(true);
    QCOMPARE(label.text(), text);
    QCOMPARE(label.drawnText(), drawn);
    MLabel expected(drawn);
    const QSizeF size(300, expected.preferredSize().height());
    QCOMPARE(label.preferredSize(), expected.preferredSize());
    QCOMPARE(imageOf(&label, size), imageOf(&expected, size));
}

void TestMLabel::foreignTextKeepsOrdinaryText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("link") << QStringLiteral("https://museum.example/opening-hours?day=1#top");
    QTest::newRow("lines") << QStringLiteral("one\ntwo\n\nthree\n");
    QTest::newRow("accents") << QStringLiteral("Zoe\u0308 — “naïve” ½");
    QTest::newRow("Arabic") << QStringLiteral("السلام عليكم 12");
    QTest::newRow("Hebrew with points") << QStringLiteral("שָׁלוֹם");
    QTest::newRow("Persian non-joiner") << QStringLiteral("کتاب\u200cها و می\u200cخواهم");
    QTest::newRow("Indic joiners") << QStringLiteral("क्\u200dष न्\u200cन ശ്രീ");
    QTest::newRow("ideographs") << QStringLiteral("邊\U000e0100 中文");
    QTest::newRow("emoji") << QStringLiteral(
        "\u2764\ufe0f\u200d\U0001f525 \U0001f468\u200d\U0001f469\u200d\U0001f467 "
        "\U0001f469\U0001f3fd\u200d\U0001f680 1\ufe0f\u20e3 \u00a9\ufe0f "
        "\U0001f1eb\U0001f1ee");
    QTest::newRow("Arabic number sign") << QStringLiteral("\u0600\u0661\u0662");
}

void TestMLabel::foreignTextKeepsOrdinaryText()
{
    QFETCH(QString, text);
    MLabel label(text);
    label.setForeignText(true);
    QCOMPARE(label.drawnText(), text);
}

void TestMLabel::foreignTextIsOneVariant()
{
    MLabel label(QStringLiteral("bad\u009ca longer one"));
    label.setForeignText(true);
    QCOMPARE(label.drawnText(), QStringLiteral("bad\ufffda longer one"));
    QCOMPARE(label.preferredSize(), MLabel(QStringLiteral("bad\ufffda longer one")).preferredSize());
}

void TestMLabel::foreignTextLimitsEmptyLines_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("drawn");
    QTest::newRow("line feeds") << QStringLiteral("a\n\n\n\nb") << QStringLiteral("a\n\nb");
    QTest::newRow("carriage returns") << QStringLiteral("a\r\n\r\n\r\nb") << QStringLiteral("a\n\nb");
    QTest::newRow("separators") << QStringLiteral("a\u2028\u2029\u2028b") << QStringLiteral("a\n\nb");
    QTest::newRow("blanks") << QStringLiteral("a\n \n\u00a0\n\u3000\n\u2800\nb") << QStringLiteral("a\n \nb");
    QTest::newRow("first") << QStringLiteral("\n\n\nb") << QStringLiteral("\nb");
    QTest::newRow("last") << QStringLiteral("a\n\n\n\n") << QStringLiteral("a\n");
    QTest::newRow("two runs") << QStringLiteral("a\n\n\nb\n\n\nc") << QStringLiteral("a\n\nb\n\nc");
}

void TestMLabel::foreignTextLimitsEmptyLines()
{
    QFETCH(QString, text);
    QFETCH(QString, drawn);
    MLabel label(text);
    label.setForeignText(true);
    QCOMPARE(label.text(), text);
    QCOMPARE(label.drawnText(), drawn);
}

void TestMLabel::numberInEmbeddingLooksTheSameAsForeignText()
{
    for (const auto &text :
         {QStringLiteral("\u202a+358 (40) 123-45\u202c"), QStringLiteral("To: \u202a+358 40\u202c\nHello"),
          QStringLiteral("\u0625\u0644\u0649: \u202a+358 40-12\u202c\n\u0645\u0631\u062d\u0628\u0627")}) {
        MLabel plain(text);
        MLabel foreign(text);
        foreign.setForeignText(true);
        const QSizeF size(300, plain.preferredSize().height());
        QCOMPARE(imageOf(&foreign, size), imageOf(&plain, size));
    }
}

void TestMLabel::drawnTextIsTheFittingVariantOrElided()
{
    const auto shorter = QStringLiteral("Messages");
    MLabel label(QStringLiteral("Messages and calls\u009c") + shorter);
    label.resize(MLabel(shorter).preferredSize());
    QCOMPARE(label.drawnText(), shorter);
    label.setTextElide(true);
    label.resize(MLabel(QStringLiteral("Mess…")).preferredSize());
    QVERIFY2(label.drawnText().startsWith(QLatin1String("M")) && label.drawnText().endsWith(QChar(0x2026)),
             qPrintable(label.drawnText()));
}

void TestMLabel::textStaysInsideOfALabelThatIsTooSmall_data()
{
    QTest::addColumn<bool>("wrap");
    QTest::addColumn<Qt::Alignment>("alignment");
    for (const bool wrap : {false, true})
        for (const auto alignment : {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter})
            QTest::addRow("%s %x", wrap ? "wrapped" : "one line", unsigned(alignment))
                << wrap << (alignment | Qt::AlignVCenter);
}

void TestMLabel::textStaysInsideOfALabelThatIsTooSmall()
{
    QFETCH(bool, wrap);
    QFETCH(Qt::Alignment, alignment);
    QGraphicsScene scene;
    MLabel label(QStringLiteral("a text that has no room in a label of such a size"));
    label.setWordWrap(wrap);
    label.setAlignment(alignment);
    label.setMinimumSize(1, 1);
    scene.addItem(&label);
    const QRectF place(200, 100, 60, 20);
    label.setGeometry(place);
    QCOMPARE(label.size(), place.size());
    QImage all = picture(&scene, QRectF(0, 0, 500, 300));
    QVERIFY(all.copy(place.toRect()) != QImage(picture(&scene, QRectF(0, 0, 60, 20))));
    QPainter(&all).fillRect(place, Qt::white);
    QImage empty(all.size(), all.format());
    empty.fill(Qt::white);
    QCOMPARE(all, empty);
    scene.removeItem(&label);
}

void TestMLabel::elisionFollowsTheHeight_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("wrap");
    for (const int lines : {1, 2, 3})
        for (const bool wrap : {false, true})
            QTest::addRow("%d %s", lines, wrap ? "wrapped" : "not wrapped") << lines << wrap;
}

void TestMLabel::elisionFollowsTheHeight()
{
    QFETCH(int, lines);
    QFETCH(bool, wrap);
    QString text;
    for (int i = 0; i < 40; ++i)
        text += QStringLiteral("word%1").arg(i) + (i % 10 == 9 ? QLatin1Char('\n') : QLatin1Char(' '));
    MLabel label(text);
    label.setTextElide(true);
    label.setWordWrap(wrap);
    const QSizeF size(150, lines * MLabel(QStringLiteral("x")).preferredSize().height());
    label.setMinimumHeight(0);
    label.resize(size);
    QCOMPARE(label.size(), size);
    const QString drawn = label.drawnText();
    QVERIFY2(drawn.startsWith(QLatin1String("word0")), qPrintable(drawn));
    QVERIFY2(drawn.endsWith(QChar(0x2026)), qPrintable(drawn));
    MLabel fitting(drawn);
    fitting.setWordWrap(wrap);
    QCOMPARE(fitting.effectiveSizeHint(Qt::PreferredSize, QSizeF(size.width(), -1)).height(), size.height());
    if (!wrap)
        QVERIFY(fitting.preferredSize().width() <= size.width());
}

QTEST_MAIN(TestMLabel)
#include "tst_mlabel.moc"
