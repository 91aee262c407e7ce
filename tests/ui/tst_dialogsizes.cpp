// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDir>
#include <QFile>
#include <QtTest>

#include <MButton>
#include <MLabel>
#include <MList>
#include <MTheme>
#include <MWindow>

#include "catalogue.h"
#include "promptpictures.h"
#include "tagpictures.h"

namespace {

constexpr int smallestTarget = 48;
constexpr qreal smallestGap = 8; // Between two targets
constexpr qreal tolerance = 1;
constexpr qreal ring = 6; // that an area has room for round its buttons

// From the smallest to the largest phone, and held the other way.
constexpr QSize sizes[] = {{320, 480}, {360, 720}, {480, 854}, {1080, 2400},
                           {480, 320}, {720, 360}, {854, 480}, {2400, 1080}};

template <typename Widget>
QList<Widget *> visibleBelow(const QGraphicsItem *root)
{
    QList<Widget *> found;
    const QList<QGraphicsItem *> children = root->childItems();
    for (QGraphicsItem *child : children) {
        if (!child->isVisible())
            continue;
        if (auto *widget = qobject_cast<Widget *>(child->toGraphicsObject()))
            found.append(widget);
        found.append(visibleBelow<Widget>(child));
    }
    return found;
}

/** Returns the text of the first widget of \a root that is cut off or out of reach on \a screen, or nothing.
 */
class Check
{
public:
    Check(const MDialog *dialog, QSize size)
        : dialog(dialog)
        , screen(QPointF(), size)
        , card(placeOf(dialog->childItems().constFirst()))
    {}

    QString fault() const
    {
        const QList<MLabel *> labels = visibleBelow<MLabel>(dialog);
        for (const MLabel *label : labels)
            if (isCut(label) || !isInReach(label))
                return QStringLiteral("text out of reach: ") + label->text();
        const QList<MButton *> buttons = visibleBelow<MButton>(dialog);
        if (buttons.isEmpty())
            return QStringLiteral("no button");
        for (const MButton *button : buttons)
            if (isCut(button) || !isInReach(button) || !isLargeEnough(button) || isTooClose(button, buttons))
                return QStringLiteral("button out of reach: ") + button->text();
        return beginsOnTheScreen(labels) ? QString() : QStringLiteral("The question begins off the screen");
    }

private:
    static const QGraphicsItem *areaAround(const QGraphicsItem *item)
    {
        for (const QGraphicsItem *around = item->parentItem(); around; around = around->parentItem())
            if (around->flags() & QGraphicsItem::ItemClipsChildrenToShape)
                return around;
        return nullptr;
    }

    static QRectF placeOf(const QGraphicsItem *item)
    {
        return item->mapRectToScene(QRectF(QPointF(), static_cast<const QGraphicsWidget *>(item)->size()));
    }

    // Its parent scrolls up and down, and is itself on the screen or scrolls with its own parent.
    bool isInReach(const QGraphicsItem *item) const
    {
        const QRectF place = placeOf(item);
        const QGraphicsItem *area = areaAround(item);
        if (!area)
            return screen.adjusted(-tolerance, -tolerance, tolerance, tolerance).contains(place) &&
                   card.adjusted(-ring, -ring, ring, ring).contains(place);
        const QRectF seen = placeOf(area);
        const QGraphicsItem *content = item;
        while (content->parentItem() != area)
            content = content->parentItem();
        // A list moves its cells.
        const bool isRow = qobject_cast<const MList *>(area->parentItem()->toGraphicsObject());
        const QRectF whole = isRow ? place : placeOf(content);
        return place.left() >= seen.left() - tolerance && place.right() <= seen.right() + tolerance &&
               place.top() >= whole.top() - tolerance && place.bottom() <= whole.bottom() + tolerance &&
               seen.height() >= smallestTarget && isInReach(area);
    }

    static bool isCut(const QGraphicsWidget *widget)
    {
        const QSizeF size = widget->size();
        const qreal needed = widget->effectiveSizeHint(Qt::MinimumSize, QSizeF(size.width(), -1)).height();
        return size.height() < needed - tolerance;
    }

    static bool isLargeEnough(const QGraphicsWidget *widget)
    {
        return widget->size().width() >= smallestTarget && widget->size().height() >= smallestTarget;
    }

    static bool isTooClose(const MButton *button, const QList<MButton *> &others)
    {
        return std::any_of(
            others.cbegin(), others.cend(),
            [button](const MButton *other) {
                constexpr qreal gap = smallestGap - tolerance / 2;
                return other != button &&
                       placeOf(other).adjusted(-gap, -gap, gap, gap).intersects(placeOf(button));
            });
    }

    bool beginsOnTheScreen(const QList<MLabel *> &labels) const
    {
        if (labels.isEmpty())
            return true;
        const QRectF place = placeOf(labels.first());
        const QGraphicsItem *area = areaAround(labels.first());
        const QRectF seen = area ? placeOf(area) & screen : screen;
        return place.top() >= seen.top() - tolerance && place.top() + smallestTarget / 2.0 <= seen.bottom();
    }

    const MDialog *dialog;
    const QRectF screen;
    const QRectF card;
};

} // namespace

class TestDialogSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void everyDialogFitsEveryScreen_data();
    void everyDialogFitsEveryScreen();
};

void TestDialogSizes::initTestCase()
{
    const QDir from(QStringLiteral(APPLICATIONS));
    const QDir to(qEnvironmentVariable("CONNUI_OWN_APPLICATIONS"));
    const QStringList files = from.entryList({QStringLiteral("*.desktop")});
    for (const QString &file : files)
        QVERIFY(QFile::copy(from.filePath(file), to.filePath(file)));
}

void TestDialogSizes::cleanup()
{
    MTheme::instance()->setTextScale(1);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

void TestDialogSizes::everyDialogFitsEveryScreen_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<qreal>("textScale");
    for (const char *language : {"en", "de", "fi", "ar"})
        for (const QSize &screen : sizes)
            for (const qreal textScale : {0.85, 1.0, 2.0})
                QTest::addRow("%s %dx%d %g", language, screen.width(), screen.height(), textScale)
                    << QString::fromLatin1(language) << screen << textScale;
}

void TestDialogSizes::everyDialogFitsEveryScreen()
{
    QFETCH(QString, language);
    QFETCH(QSize, screen);
    QFETCH(qreal, textScale);
    const Catalogue catalogue(language);
    QApplication::setLayoutDirection(QLocale(language).textDirection());
    MTheme::instance()->setTextScale(textScale);
    const QList<Dialog> dialogs = promptDialogs() + tagDialogs();
    for (const Dialog &shown : dialogs) {
        MWindow window;
        window.resize(screen);
        const std::unique_ptr<MDialog> dialog(shown.make());
        dialog->appear(&window);
        window.show();
        // A layout may take several rounds.
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        const QString fault = Check(dialog.get(), screen).fault();
        if (!fault.isEmpty())
            QFAIL(qPrintable(shown.name + QStringLiteral(": ") + fault.left(80)));
    }
}

QTEST_MAIN(TestDialogSizes)
#include "tst_dialogsizes.moc"
