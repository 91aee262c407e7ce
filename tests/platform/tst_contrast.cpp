// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <cmath>

#include <QFile>
#include <QSet>

#include <MLabel>
#include <MProgressIndicator>
#include <MTheme>

#include "theme/mtheme_p.h"
#include "touchtest.h"

namespace {

constexpr MTheme::Variant variants[] = {MTheme::Light, MTheme::Dark, MTheme::LightContrast,
                                        MTheme::DarkContrast};

// The backgrounds of texts and controls. A selected row and a pressed one lie on a card.
constexpr const char *grounds[] = {
    "MWindow",     "MSceneWindow",     "MDialogPortrait", "MDialogLandscape",  "MDialogBeside",
    "CommonPanel", "CommonSmallPanel", "Inverted",        "SimpleSheetHeader", "SimpleCheckBoxLabel"};

// Each with its own text on its own ground.
constexpr const char *buttons[] = {"MButton", "CommonSingleButton", "MDialogButton", "MDialogPrimaryButton",
                                   "SimpleSheetButton"};

constexpr const char *texts[] = {"MLabel",
                                 "MLabelEmphasis",
                                 "MLabelBesideEmphasis",
                                 "CommonTitle",
                                 "CommonSubTitle",
                                 "CommonSubTitleInverted",
                                 "CommonItemInfo",
                                 "CommonSingleTitleInverted",
                                 "CommonBodyTextInverted",
                                 "CommonQueryTitle",
                                 "CommonQueryText",
                                 "MDialogTitle",
                                 "SimpleSheetTitle",
                                 "SimpleCheckBoxLabelTitle"};

constexpr const char *bars[] = {"MProgressIndicator", "CommonProgressBarInverted", "MProgressSpinner"};

// Sizes and distances only, pictures, and the shade that a card stands out from in any case.
constexpr const char *colorless[] = {"MLinearLayoutPolicy",
                                     "CommonPanelInverted",
                                     "CommonXLargeSpacer",
                                     "MSlide",
                                     "MPicture",
                                     "CommonQueryIcon",
                                     "CommonMainIcon",
                                     "CommonThumbnail",
                                     "quenzotouch-nfc-banner-landscape",
                                     "quenzotouch-nfc-banner-portrait",
                                     "MListItem",
                                     "MDialog",
                                     "MDialogBody",
                                     "MDialogButtons",
                                     "MDialogTitleBar",
                                     "MDialogTitleBalance",
                                     "MDialogTitleIcon",
                                     "SimpleSheetContent"};

qreal channel(qreal value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// As WCAG 2.2 defines both.
qreal luminance(const QColor &color)
{
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

qreal contrast(const QColor &one, const QColor &other)
{
    const qreal first = luminance(one) + 0.05;
    const qreal second = luminance(other) + 0.05;
    return qMax(first, second) / qMin(first, second);
}

QColor over(const QColor &color, const QColor &ground)
{
    const auto mix = [&](qreal top, qreal bottom) {
        return float(top * color.alphaF() + bottom * (1 - color.alphaF()));
    };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

struct Pair
{
    QString name;
    QColor color;
    QColor ground;
    bool text;
};

bool isHighContrast(MTheme::Variant variant)
{
    return variant == MTheme::LightContrast || variant == MTheme::DarkContrast;
}

// The high-contrast variants promise more: what the others do for texts, and WCAG's stronger level for these.
qreal leastContrast(const Pair &pair, MTheme::Variant variant)
{
    const bool high = isHighContrast(variant);
    if (pair.text)
        return high ? 7 : 4.5;
    return high ? 4.5 : 3;
}

const MStyle &style(const char *name)
{
    return MThemePrivate::ownStyle(name);
}

// The visible edge of a control: its outline where it has one.
QColor edge(const MStyle &style)
{
    return style.borderWidth > 0 ? style.border : style.background;
}

struct Ground
{
    QString name;
    QColor color;
};

QList<Ground> allGrounds()
{
    QList<Ground> all;
    for (const char *name : grounds)
        all.append({QLatin1String(name), style(name).background});
    all.append({QStringLiteral("selected row"), style("MList").checkedBackground});
    all.append({QStringLiteral("pressed row"), style("MList").pressedBackground});
    return all;
}

void addButton(QList<Pair> *pairs, const char *name)
{
    const MStyle &look = style(name);
    const QString what = QLatin1String(name);
    pairs->append({what, look.color, look.background, true});
    pairs->append({what + QStringLiteral(" pressed"), look.color, look.pressedBackground, true});
}

void addSwitch(QList<Pair> *pairs)
{
    const MStyle &look = style("MButtonSwitch");
    pairs->append({QStringLiteral("knob of a switch that is off"), look.color, look.background, false});
    pairs->append({QStringLiteral("knob of a pressed switch"), look.color, look.pressedBackground, false});
    pairs->append(
        {QStringLiteral("knob of a switch that is on"), look.checkedColor, look.checkedBackground, false});
}

void addOnGround(QList<Pair> *pairs, const Ground &ground)
{
    const QString on = QStringLiteral(" on ") + ground.name;
    const auto add = [&](const char *what, const QColor &color, bool text) {
        pairs->append({QLatin1String(what) + on, over(color, ground.color), ground.color, text});
    };
    for (const char *name : texts)
        add(name, style(name).color, true);
    for (const char *name : buttons) {
        add(name, edge(style(name)), false);
        add("focus ring", style(name).focus, false);
    }
    for (const char *name : bars)
        add(name, style(name).color, false);
    add("track of a bar", edge(style("MProgressIndicator")), false);
    add("switch that is off", edge(style("MButtonSwitch")), false);
    add("switch that is on", style("MButtonSwitch").checkedBackground, false);
    add("focus ring of a switch", style("MButtonSwitch").focus, false);
    add("focus ring of a row", style("MList").focus, false);
    add("mark of a row", style("MList").checkedColor, false);
    add("scroll indicator", style("MScrollIndicator").background, false);
}

QList<Pair> allPairs()
{
    QList<Pair> pairs;
    for (const char *name : buttons)
        addButton(&pairs, name);
    addSwitch(&pairs);
    pairs.append(
        {QStringLiteral("badge"), style("WaitingBadge").color, style("WaitingBadge").background, true});
    for (const char *name : bars)
        pairs.append({QLatin1String(name), style(name).color, style(name).background, false});
    const QList<Ground> all = allGrounds();
    for (const Ground &ground : all)
        addOnGround(&pairs, ground);
    return pairs;
}

// A widget on the color of a page, and what is painted round it.
class Sample
{
public:
    explicit Sample(MWidgetController *widget)
    {
        window.scene()->setBackgroundBrush(ground());
        window.scene()->addItem(widget);
        widget->setGeometry(QRectF(QPointF(space, space), widget->preferredSize()));
        window.resize((widget->size() + QSizeF(2 * space, 2 * space)).toSize());
    }

    static QColor ground() { return style("MDialogPortrait").background; }

    QImage picture()
    {
        QImage image(window.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(ground());
        QPainter painter(&image);
        window.scene()->render(&painter, QRectF(QPointF(), window.size()), QRectF(QPointF(), window.size()));
        return image;
    }

    // The strongest contrast with the page's color in the part of the picture that \a where, in units of the
    // widget, names.
    qreal strongest(const QRectF &where, const QColor &against = ground())
    {
        const QImage image = picture();
        const QRect part =
            QRectF(where.translated(space, space).topLeft() * scale, where.size() * scale).toRect();
        qreal found = 1;
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x)
                found = qMax(found, contrast(image.pixelColor(x, y), against));
        return found;
    }

    QColor at(const QPointF &point)
    {
        return picture().pixelColor(((point + QPointF(space, space)) * scale).toPoint());
    }

    MWindow window;

private:
    static constexpr int space = 16;
    static constexpr int scale = 2;
};

void addVariants()
{
    QTest::addColumn<MTheme::Variant>("variant");
    QTest::newRow("light") << MTheme::Light;
    QTest::newRow("dark") << MTheme::Dark;
    QTest::newRow("light, high contrast") << MTheme::LightContrast;
    QTest::newRow("dark, high contrast") << MTheme::DarkContrast;
}

} // namespace

class TestContrast : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyStyleIsLookedAt();
    void everyPairOfColorsHasContrast_data() { addVariants(); }
    void everyPairOfColorsHasContrast();
    void textIsPaintedWithItsContrast_data() { addVariants(); }
    void textIsPaintedWithItsContrast();
    void buttonStandsOutOnEverySide_data() { addVariants(); }
    void buttonStandsOutOnEverySide();
    void focusRingIsOutsideOfTheButton_data() { addVariants(); }
    void focusRingIsOutsideOfTheButton();
    void switchIsToldByItsKnobAlone_data() { addVariants(); }
    void switchIsToldByItsKnobAlone();
    void focusRingOfASwitchStandsOut_data() { addVariants(); }
    void focusRingOfASwitchStandsOut();
    void progressEndsWhereItIsSeen_data() { addVariants(); }
    void progressEndsWhereItIsSeen();
    void tableInTheDocumentIsRight();
};

void TestContrast::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    // Some rows have none.
    MTheme::instance()->setVariant(MTheme::Light);
}

void TestContrast::cleanup()
{
    MTheme::instance()->setVariant(MTheme::Light);
}

void TestContrast::everyStyleIsLookedAt()
{
    QSet<QString> known{QStringLiteral("MButtonSwitch"), QStringLiteral("MList"),
                        QStringLiteral("MScrollIndicator"), QStringLiteral("WaitingBadge")};
    const auto add = [&](const auto &names) {
        for (const char *name : names)
            known.insert(QLatin1String(name));
    };
    add(grounds);
    add(buttons);
    add(texts);
    add(bars);
    add(colorless);
    const QStringList all = MThemePrivate::instance()->file.styles(MTheme::Light).keys();
    QCOMPARE(QSet<QString>(all.cbegin(), all.cend()), known);
}

void TestContrast::everyPairOfColorsHasContrast()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    QStringList weak;
    const QList<Pair> pairs = allPairs();
    for (const Pair &pair : pairs)
        if (contrast(pair.color, pair.ground) < leastContrast(pair, variant))
            weak.append(QStringLiteral("%1: %2").arg(pair.name).arg(contrast(pair.color, pair.ground)));
    weak.removeDuplicates();
    QVERIFY2(weak.isEmpty(), qPrintable(weak.join(QLatin1Char('\n'))));
}

void TestContrast::textIsPaintedWithItsContrast()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    for (const char *name : texts) {
        // A stroke that is wider than a pixel.
        auto label = new MLabel(QStringLiteral("\u2014"));
        label->setStyleName(QLatin1String(name));
        Sample sample(label);
        QVERIFY2(sample.strongest(label->rect()) >= (isHighContrast(variant) ? 7 : 4.5), name);
    }
}

void TestContrast::buttonStandsOutOnEverySide()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    const qreal least = isHighContrast(variant) ? 4.5 : 3;
    for (const char *name : buttons) {
        auto button = new MButton;
        button->setStyleName(QLatin1String(name));
        Sample sample(button);
        const QRectF area = button->rect();
        const QPointF middle = area.center();
        constexpr qreal depth = 2;
        QVERIFY2(sample.strongest(QRectF(middle.x(), area.top(), 1, depth)) >= least, name);
        QVERIFY2(sample.strongest(QRectF(middle.x(), area.bottom() - depth, 1, depth)) >= least, name);
        QVERIFY2(sample.strongest(QRectF(area.left(), middle.y(), depth, 1)) >= least, name);
        QVERIFY2(sample.strongest(QRectF(area.right() - depth, middle.y(), depth, 1)) >= least, name);
    }
}

void TestContrast::focusRingIsOutsideOfTheButton()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    const qreal least = isHighContrast(variant) ? 4.5 : 3;
    for (const char *name : buttons) {
        auto button = new MButton(QStringLiteral("Open"));
        button->setStyleName(QLatin1String(name));
        Sample sample(button);
        QVERIFY(TouchTest::activate(&sample.window));
        const QImage before = sample.picture();
        button->setFocus(Qt::TabFocusReason);
        QVERIFY2(button->hasFocus(), name);
        const QRectF area = button->rect();
        // Nothing of the button itself changes, and on every side there is a line and a gap before it.
        QCOMPARE(sample.at(area.center()), QRgb(before.pixel(before.rect().center())));
        const qreal reach = button->boundingRect().bottom() - area.bottom();
        QVERIFY(reach >= 4);
        const QRectF line(area.center().x(), area.bottom(), 1, reach);
        QVERIFY2(sample.strongest(line) >= least, name);
        QCOMPARE(sample.at(QPointF(area.center().x(), area.bottom() + 1)), Sample::ground());
        QVERIFY2(sample.strongest(QRectF(area.left() - reach, area.center().y(), reach, 1)) >= least, name);
        QVERIFY2(sample.strongest(QRectF(area.right(), area.center().y(), reach, 1)) >= least, name);
    }
}

void TestContrast::switchIsToldByItsKnobAlone()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    const qreal least = isHighContrast(variant) ? 4.5 : 3;
    auto button = new MButton;
    button->setViewType(MButton::switchType);
    Sample sample(button);
    const QRectF track = button->contentsRect();
    const QPointF left(track.left() + track.height() / 2, track.center().y());
    const QPointF right(track.right() - track.height() / 2, track.center().y());
    for (const bool on : {false, true}) {
        button->setChecked(on);
        const QColor knob = sample.at(on ? right : left);
        const QColor other = sample.at(on ? left : right);
        QVERIFY(contrast(knob, other) >= least);
        QVERIFY(contrast(other, Sample::ground()) >= least);
    }
}

void TestContrast::focusRingOfASwitchStandsOut()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    auto button = new MButton;
    button->setViewType(MButton::switchType);
    Sample sample(button);
    QVERIFY(TouchTest::activate(&sample.window));
    const QRectF track = button->contentsRect();
    const QRectF below(track.center().x(), track.bottom() + 1, 1,
                       button->boundingRect().bottom() - track.bottom() - 1);
    QCOMPARE(sample.strongest(below), 1);
    button->setFocus(Qt::TabFocusReason);
    QVERIFY(sample.strongest(below) >= (isHighContrast(variant) ? 4.5 : 3));
    QCOMPARE(sample.at(QPointF(track.center().x(), track.bottom() + 1)), Sample::ground());
}

void TestContrast::progressEndsWhereItIsSeen()
{
    QFETCH(MTheme::Variant, variant);
    MTheme::instance()->setVariant(variant);
    const qreal least = isHighContrast(variant) ? 4.5 : 3;
    auto bar = new MProgressIndicator;
    bar->setMaximum(4);
    bar->setValue(1);
    Sample sample(bar);
    const QRectF area = bar->contentsRect();
    const QColor done = sample.at(QPointF(area.left() + area.width() / 8, area.center().y()));
    const QColor open = sample.at(QPointF(area.left() + area.width() * 5 / 8, area.center().y()));
    QVERIFY(contrast(done, open) >= least);
    QVERIFY(contrast(done, Sample::ground()) >= least);
    const qreal half = area.width() / 2;
    QVERIFY(sample.strongest(QRectF(area.left() + half, area.top(), half - 8, area.height())) >= least);
}

// One line for each thing that there was something wrong with, from the file that the tests read.
void TestContrast::tableInTheDocumentIsRight()
{
    struct Row
    {
        const char *what;
        std::function<qreal()> ratio;
    };
    const auto onCard = [](const QColor &color) { return contrast(color, Sample::ground()); };
    const auto knob = [] {
        return contrast(style("MButtonSwitch").color, style("MButtonSwitch").background);
    };
    const Row rows[] = {
        {"Text of a question", [&] { return onCard(style("CommonQueryTitle").color); }},
        {"Quiet text", [&] { return onCard(style("CommonQueryText").color); }},
        {"Text on the main button",
         [] {
             return contrast(style("MDialogPrimaryButton").color, style("MDialogPrimaryButton").background);
         }},
        {"Main button", [&] { return onCard(edge(style("MDialogPrimaryButton"))); }},
        {"Other button", [&] { return onCard(edge(style("MDialogButton"))); }},
        {"Focus ring", [&] { return onCard(style("MDialogPrimaryButton").focus); }},
        {"Switch, off", [&] { return onCard(edge(style("MButtonSwitch"))); }},
        {"Knob on it", knob},
        {"Switch, on", [&] { return onCard(style("MButtonSwitch").checkedBackground); }},
        {"Progress bar's end", [&] { return onCard(edge(style("MProgressIndicator"))); }},
        {"Mark of a selected row",
         [] { return contrast(style("MList").checkedColor, style("MList").checkedBackground); }},
        {"Scroll indicator",
         [&] { return onCard(over(style("MScrollIndicator").background, Sample::ground())); }},
    };
    QFile file(QStringLiteral(DOCUMENT));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll());
    for (const Row &row : rows) {
        QString now;
        for (const MTheme::Variant variant : variants) {
            MTheme::instance()->setVariant(variant);
            now += QStringLiteral(" | ") + QString::number(row.ratio(), 'f', 2);
        }
        const QStringList lines = document.split(QLatin1Char('\n'));
        const bool found = std::any_of(lines.cbegin(), lines.cend(), [&](const QString &line) {
            return line.startsWith(QStringLiteral("| %1 |").arg(QLatin1String(row.what))) &&
                   line.endsWith(now + QStringLiteral(" |"));
        });
        QVERIFY2(found, qPrintable(QLatin1String(row.what) + now));
    }
}

QTEST_MAIN(TestContrast)
#include "tst_contrast.moc"
