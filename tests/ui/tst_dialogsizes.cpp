// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QtTest>

#include <DialogHelperWidget>
#include <MButton>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MList>
#include <MTheme>
#include <MWindow>
#include <NfcFileReceiveSheet>
#include <NfcSettingsView>
#include <SimpleCheckBoxLabel>
#include <SimpleSheet>

#include "catalogue.h"
#include "promptpictures.h"
#include "settings/applicationspanel.h"
#include "tagpage.h"
#include "tagpictures.h"

using ConnUi::DialogHelperWidget;
using ConnUi::NfcFileReceiveSheet;
using ConnUi::NfcSettingsView;
using ConnUi::SimpleCheckBoxLabel;
using ConnUi::SimpleSheet;

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

const QGraphicsItem *areaAround(const QGraphicsItem *item)
{
    for (const QGraphicsItem *around = item->parentItem(); around; around = around->parentItem())
        if (around->flags() & QGraphicsItem::ItemClipsChildrenToShape)
            return around;
    return nullptr;
}

QRectF placeOf(const QGraphicsItem *item)
{
    return item->mapRectToScene(QRectF(QPointF(), static_cast<const QGraphicsWidget *>(item)->size()));
}

// Without what the areas around it hide at the moment.
QRectF visiblePlaceOf(const QGraphicsItem *item)
{
    QRectF place = placeOf(item);
    for (const QGraphicsItem *area = areaAround(item); area; area = areaAround(area))
        place &= placeOf(area);
    return place;
}

/** Finds what is cut off or out of reach on a screen. */
class Check
{
public:
    /** Checks \a dialog, a dialog or a sheet, on a screen of \a size; its parts lie within \a card. */
    Check(const MSceneWindow *dialog, const QGraphicsItem *card, QSize size)
        : dialog(dialog)
        , screen(QPointF(), size)
        , card(placeOf(card))
    {}

    /** Returns the text of the first such widget, or nothing. */
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
                return other != button && visiblePlaceOf(other)
                                              .adjusted(-gap, -gap, gap, gap)
                                              .intersects(visiblePlaceOf(button));
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

    const MSceneWindow *dialog;
    const QRectF screen;
    const QRectF card;
};

// A layout may take several rounds.
void layOut()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

bool isSeen(const QGraphicsItem *item, QSize screen)
{
    const QRectF seen = visiblePlaceOf(item) & QRectF(QPointF(), screen);
    return seen.adjusted(-tolerance, -tolerance, tolerance, tolerance).contains(placeOf(item));
}

// As nfc-settings shows them.
SimpleSheet *newSettings()
{
    auto *page = new SimpleSheet;
    page->setTitle(qtTrId("qtn_nfc_settings_tit"));
    page->setRejectButtonText(qtTrId("qtn_comm_command_done"));
    auto *content = new MWidget;
    auto *policy = new MLinearLayoutPolicy(new MLayout(content), Qt::Vertical);
    policy->addItem(new NfcSettingsView(nullptr));
    policy->addItem(
        new SimpleCheckBoxLabel(new MButton, qtTrId("qtn_nfc_sett_more_time"), MButton::switchType));
    auto *applications = new ApplicationsPanel;
    applications->list({{"qtn_nfc_sett_apps_web", QStringLiteral("Browser"), {}},
                        {"qtn_nfc_sett_apps_number", QString(64, QLatin1Char('m')), {}}});
    policy->addItem(applications);
    page->setCentralWidget(new DialogHelperWidget(content));
    return page;
}

SimpleSheet *newReceiveSheet()
{
    auto *sheet = new NfcFileReceiveSheet;
    sheet->setRemoteDeviceName(QStringLiteral("Anna's phone"));
    sheet->setFileName(QStringLiteral("Holiday.jpeg"));
    sheet->setThumbnailImage(QStringLiteral("icon-m-content-note-inverse"));
    // The second report shows the time that is left, if there is time between them.
    sheet->setProgress({}, 1, 5000000);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 2) {}
    sheet->setProgress({}, 2000000, 5000000);
    return sheet;
}

// One of each kind that the viewer has a look for.
QByteArray fullTag()
{
    QNdefNfcTextRecord text;
    text.setText(QStringLiteral("The museum opens at ten. ").repeated(20));
    QNdefRecord card;
    card.setTypeNameFormat(QNdefRecord::Mime);
    card.setType("text/vcard");
    card.setPayload("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Anna Example\r\nTEL:+358401234567\r\nEND:VCARD\r\n");
    QNdefRecord data;
    data.setTypeNameFormat(QNdefRecord::Mime);
    data.setType("application/octet-stream");
    data.setPayload(QByteArray(40, '\x7f'));
    return QNdefMessage({text, card, data}).toByteArray();
}

// Of the largest one, several pixels for each of ours would make a wall.
bool isScreenOfAPhone(QSize screen)
{
    return qMax(screen.width(), screen.height()) * qApp->devicePixelRatio() <= 2600;
}

void addScreens(const QList<QSize> &screens, const QList<qreal> &textScales)
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<qreal>("textScale");
    for (const char *language : {"en", "de", "fi", "ar"})
        for (const QSize &screen : screens) {
            if (!isScreenOfAPhone(screen))
                continue;
            for (const qreal textScale : textScales)
                QTest::addRow("%s %dx%d %g", language, screen.width(), screen.height(), textScale)
                    << QString::fromLatin1(language) << screen << textScale;
        }
}

/** How programs look, for as long as it lives: texts and direction of a language, and a size of texts. */
class Look
{
public:
    Look(const QString &language, qreal textScale) : catalogue(language)
    {
        QApplication::setLayoutDirection(QLocale(language).textDirection());
        MTheme::instance()->setTextScale(textScale);
    }
    ~Look()
    {
        MTheme::instance()->setTextScale(1);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }
    Q_DISABLE_COPY_MOVE(Look)

private:
    const Catalogue catalogue;
};

} // namespace

class TestDialogSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void everyDialogFitsEveryScreen_data();
    void everyDialogFitsEveryScreen();
    void everySheetFitsEveryScreen_data();
    void everySheetFitsEveryScreen();
    void viewerFitsEveryScreen_data() { everyDialogFitsEveryScreen_data(); }
    void viewerFitsEveryScreen();
    void keyboardBringsEveryButtonOfASheetIntoSight_data();
    void keyboardBringsEveryButtonOfASheetIntoSight();
};

void TestDialogSizes::initTestCase()
{
    const QDir from(QStringLiteral(APPLICATIONS));
    const QDir to(qEnvironmentVariable("CONNUI_OWN_APPLICATIONS"));
    const QStringList files = from.entryList({QStringLiteral("*.desktop")});
    for (const QString &file : files)
        QVERIFY(QFile::copy(from.filePath(file), to.filePath(file)));
}

void TestDialogSizes::everyDialogFitsEveryScreen_data()
{
    addScreens({std::begin(sizes), std::end(sizes)}, {0.85, 1, 2});
}

void TestDialogSizes::everyDialogFitsEveryScreen()
{
    QFETCH(QString, language);
    QFETCH(QSize, screen);
    QFETCH(qreal, textScale);
    const Look look(language, textScale);
    const QList<Dialog> dialogs = promptDialogs() + tagDialogs();
    for (const Dialog &shown : dialogs) {
        MWindow window;
        window.resize(screen);
        const std::unique_ptr<MSceneWindow> dialog(shown.make());
        dialog->appear(&window);
        window.show();
        layOut();
        const QString fault = Check(dialog.get(), dialog->childItems().constFirst(), screen).fault();
        if (!fault.isEmpty())
            QFAIL(qPrintable(shown.name + QStringLiteral(": ") + fault.left(80)));
    }
}

void TestDialogSizes::everySheetFitsEveryScreen_data()
{
    addScreens({std::begin(sizes), std::end(sizes)}, {0.85, 1, 2});
}

void TestDialogSizes::everySheetFitsEveryScreen()
{
    QFETCH(QString, language);
    QFETCH(QSize, screen);
    QFETCH(qreal, textScale);
    const Look look(language, textScale);
    for (const auto &make : {&newSettings, &newReceiveSheet}) {
        MWindow window;
        window.resize(screen);
        const std::unique_ptr<SimpleSheet> sheet(make());
        sheet->appear(&window);
        window.show();
        layOut();
        const QString fault = Check(sheet.get(), sheet.get(), screen).fault();
        if (!fault.isEmpty())
            QFAIL(qPrintable(sheet->title() + QStringLiteral(": ") + fault.left(80)));
    }
}

void TestDialogSizes::viewerFitsEveryScreen()
{
    QFETCH(QString, language);
    QFETCH(QSize, screen);
    QFETCH(qreal, textScale);
    const Look look(language, textScale);
    MWindow window;
    window.resize(screen);
    TagPage page;
    page.setMessage(fullTag());
    page.appear(&window);
    window.show();
    layOut();
    QCOMPARE(Check(&page, page.childItems().constFirst(), screen).fault(), QString());
    page.disappear();
}

void TestDialogSizes::keyboardBringsEveryButtonOfASheetIntoSight_data()
{
    everySheetFitsEveryScreen_data();
}

void TestDialogSizes::keyboardBringsEveryButtonOfASheetIntoSight()
{
    QFETCH(QString, language);
    QFETCH(QSize, screen);
    QFETCH(qreal, textScale);
    const Look look(language, textScale);
    for (const auto &make : {&newSettings, &newReceiveSheet}) {
        MWindow window;
        window.resize(screen);
        const std::unique_ptr<SimpleSheet> sheet(make());
        sheet->appear(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        layOut();
        const QList<MButton *> buttons = visibleBelow<MButton>(sheet.get());
        QVERIFY(buttons.size() > 1);
        for (const MButton *button : buttons) {
            QTest::keyClick(window.viewport(), Qt::Key_Tab);
            QCOMPARE(window.scene()->focusItem(), button);
            QVERIFY2(isSeen(button, screen), qPrintable(sheet->title() + button->text()));
            // A switch is seen with what it is for.
            const QGraphicsItem *row = qobject_cast<SimpleCheckBoxLabel *>(button->parentWidget());
            if (row && placeOf(row).height() <= placeOf(areaAround(row)).height())
                QVERIFY2(isSeen(row, screen), qPrintable(button->accessibleName()));
        }
    }
}

QTEST_MAIN(TestDialogSizes)
#include "tst_dialogsizes.moc"
