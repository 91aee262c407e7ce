// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pictures.h"

#include <memory>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGraphicsScene>
#include <QPainter>

#include <DialogHelperWidget>
#include <IndicationItem>
#include <MButton>
#include <MSceneManager>
#include <MWindow>
#include <NfcEnableDialog>
#include <NfcFileReceiveSheet>
#include <NfcOverlay>
#include <NfcSettingsView>
#include <SimpleCheckBoxLabel>

#include "dialogpictures.h"

using ConnUi::DialogHelperWidget;
using ConnUi::IndicationItem;
using ConnUi::NfcEnableDialog;
using ConnUi::NfcFileReceiveSheet;
using ConnUi::NfcOverlay;
using ConnUi::NfcSettingsView;
using ConnUi::SimpleCheckBoxLabel;
using ConnUi::SimpleSheet;

namespace {

// The look of a state of the power switch.
struct Power
{
    bool on;
    bool starting;
};

struct Report
{
    quint64 transferred;
    qint64 after; // milliseconds after the report before
};

constexpr quint64 megabyte = 1000000;

QPixmap pictureOf(MWindow *window)
{
    window->show();
    QCoreApplication::processEvents();
    return window->grab();
}

// The first in the order in which they were added.
template <typename Widget>
Widget *first(const QGraphicsItem *parent)
{
    const QList<QGraphicsItem *> children = parent->childItems();
    for (QGraphicsItem *child : children) {
        if (auto *widget = qobject_cast<Widget *>(child->toGraphicsObject()))
            return widget;
        if (auto *widget = first<Widget>(child))
            return widget;
    }
    return nullptr;
}

// Without an adapter the switches show the values that they are given.
NfcSettingsView *newSettings(Power power)
{
    auto *view = new NfcSettingsView(nullptr);
    first<MButton>(view)->setChecked(power.on);
    first<SimpleCheckBoxLabel>(view)->setShowProgressIndicator(power.starting);
    return view;
}

void fill(SimpleSheet *page, Power power)
{
    page->setTitle(qtTrId("qtn_nfc_settings_tit"));
    page->setRejectButtonText(qtTrId("qtn_comm_command_done"));
    page->setCentralWidget(new DialogHelperWidget(newSettings(power)));
}

QPixmap settings(Power power)
{
    MWindow window;
    SimpleSheet page;
    fill(&page, power);
    page.appear(&window);
    return pictureOf(&window);
}

// In flight mode, where the connection manager reports it, another question.
QPixmap question()
{
    MWindow window;
    SimpleSheet page;
    fill(&page, {true, false});
    page.appear(&window);
    NfcEnableDialog dialog;
    dialog.appear(&window);
    return pictureOf(&window);
}

std::unique_ptr<NfcFileReceiveSheet> newSheet(const QList<Report> &reports, const QString &file)
{
    auto sheet = std::make_unique<NfcFileReceiveSheet>();
    sheet->setRemoteDeviceName(QStringLiteral("Anna's phone"));
    sheet->setFileName(file);
    sheet->setThumbnailImage(QStringLiteral("icon-m-content-note-inverse"));
    for (const Report &report : reports) {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < report.after)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        sheet->setProgress({}, report.transferred, 5 * megabyte);
    }
    return sheet;
}

QPixmap sheet(const QList<Report> &reports, M::Orientation orientation = M::Portrait,
              const QString &file = QStringLiteral("Holiday.jpeg"))
{
    MWindow window;
    if (orientation == M::Landscape)
        window.resize(window.sizeHint().transposed());
    const std::unique_ptr<NfcFileReceiveSheet> sheet = newSheet(reports, file);
    sheet->appear(&window);
    return pictureOf(&window);
}

// Those that fill the screen, on every screen and in every language.
QList<Dialog> pages()
{
    return {
        {QStringLiteral("page-settings"),
         [] {
             auto page = std::make_unique<SimpleSheet>();
             fill(page.get(), {true, false});
             return page.release();
         }},
        {QStringLiteral("page-receiving"),
         [] {
             return newSheet({{1, 0}, {2 * megabyte, 20}}, QStringLiteral("Holiday.jpeg")).release();
         }},
    };
}

IndicationItem *bannerOf(const NfcOverlay &overlay)
{
    const QList<QGraphicsItem *> items = overlay.scene()->items();
    for (QGraphicsItem *item : items)
        if (auto *banner = dynamic_cast<IndicationItem *>(item))
            return banner;
    return nullptr;
}

// The banner over the settings, on a screen that is wide when it is not turned.
QPixmap banner(M::OrientationAngle angle, float visible)
{
    MWindow window;
    window.resize(window.sizeHint().transposed());
    window.sceneManager()->setOrientationAngle(angle);
    SimpleSheet page;
    fill(&page, {true, false});
    page.appear(&window);
    QPixmap picture = pictureOf(&window);

    NfcOverlay overlay;
    overlay.resize(window.size());
    overlay.sceneManager()->setOrientationAngle(angle);
    overlay.showIndication();
    while (!bannerOf(overlay))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    bannerOf(overlay)->setVisibilityFactor(visible);
    QPainter painter(&picture);
    painter.setClipRegion(overlay.mask());
    painter.drawPixmap(0, 0, overlay.grab());
    return picture;
}

} // namespace

QList<Picture> pictures()
{
    // Slowly at last, for a remaining time to be shown.
    const Report begin{1, 0};
    const Report before{2 * megabyte - 1000, 0};
    const Report middle{2 * megabyte, 20};
    const Report end{5 * megabyte, 20};
    const QList<Picture> single = {
        {QStringLiteral("settings-off"),
         [] {
             return settings({false, false});
         }},
        {QStringLiteral("settings-starting"),
         [] {
             return settings({true, true});
         }},
        {QStringLiteral("settings-on"),
         [] {
             return settings({true, false});
         }},
        {QStringLiteral("settings-question"), question},
        {QStringLiteral("sheet-begin"), [=] { return sheet({begin}); }},
        {QStringLiteral("sheet-middle"),
         [=] {
             return sheet({before, middle});
         }},
        {QStringLiteral("sheet-end"),
         [=] {
             return sheet({before, middle, end});
         }},
        {QStringLiteral("sheet-long-landscape"),
         [=] {
             return sheet({before, middle}, M::Landscape,
                          QStringLiteral("a-name-that-goes-on-").repeated(20));
         }},
        {QStringLiteral("banner-0"), [] { return banner(M::Angle0, 1); }},
        {QStringLiteral("banner-90"), [] { return banner(M::Angle90, 1); }},
        {QStringLiteral("banner-180"), [] { return banner(M::Angle180, 1); }},
        {QStringLiteral("banner-270"), [] { return banner(M::Angle270, 1); }},
        {QStringLiteral("banner-0-sliding"), [] { return banner(M::Angle0, 0.5); }},
        {QStringLiteral("banner-270-sliding"), [] { return banner(M::Angle270, 0.5); }},
    };
    return single + dialogPictures(pages());
}
