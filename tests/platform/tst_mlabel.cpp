// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QFontMetricsF>
#include <QGraphicsLinearLayout>
#include <QGraphicsScene>

#include <MLabel>

#include "touchtest.h"

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
    void wordWiderThanLineIsBroken();
    void everyLineEndBreaks();
    void elidingLetsLabelBeNarrow();
    void elidedTextStaysInside();
    void longestFittingVariantIsShown_data();
    void longestFittingVariantIsShown();
    void longestAndShortestVariantGiveTheSizes();
    void bidiControlsStayInLabel();
    void bidiControlsEndWithTheirLine();
    void alignmentIsMirroredInRightToLeft();
    void veryLongTextIsDrawnInParts();
    void stackedMarksAreLimited();
    void textIsDrawnAtThePixelRatio();
    void sizeFollowsTextAndStyle();

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
    const QSizeF size(100, 400);
    const auto stack = [&](int marks) {
        MLabel label(QLatin1Char('a') + mark.repeated(marks) + QLatin1Char('b'));
        return imageOf(&label, size);
    };
    QVERIFY(stack(30) != stack(5));
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

QTEST_MAIN(TestMLabel)
#include "tst_mlabel.moc"
