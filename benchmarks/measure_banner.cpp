// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The banner of a touch: its first frame, and a frame of its slide, against the same picture moved on a bare
// view.
#include <QApplication>
#include <QGraphicsPixmapItem>
#include <QGraphicsView>

#include <IndicationItem>
#include <MTheme>
#include <NfcOverlay>

#include "measurement.h"

using namespace Measurement;

namespace {

constexpr int frames = 20;

/** A view that is prepared as the banner's is, and no more. */
struct BareBanner
{
    explicit BareBanner(const QPixmap &picture) : item(scene.addPixmap(picture))
    {
        view.setScene(&scene);
        view.setSceneRect(0, 0, 480, 854);
        view.setFrameShape(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setWindowFlags(view.windowFlags() | Qt::FramelessWindowHint);
        view.setAttribute(Qt::WA_TranslucentBackground);
        view.resize(480, 854);
        view.winId();
        move(0);
    }

    void move(qreal shown) { item->setPos(0, item->boundingRect().height() * (shown - 1)); }

    QGraphicsScene scene;
    QGraphicsView view;
    QGraphicsPixmapItem *item;
};

// Not when the platform's next frame is due, but now.
void paint(QGraphicsView *view)
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QEvent due(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(view, &due);
}

ConnUi::IndicationItem *bannerOf(const ConnUi::NfcOverlay &overlay)
{
    const QList<QGraphicsItem *> items = overlay.scene()->items();
    for (QGraphicsItem *item : items)
        if (auto *banner = dynamic_cast<ConnUi::IndicationItem *>(item))
            return banner;
    qFatal("there is no banner");
}

double slide(QGraphicsView *view, const std::function<void(qreal)> &move)
{
    return processorTime([&] {
               for (int i = 0; i < frames; ++i) {
                   move(qreal(i + 1) / frames);
                   paint(view);
               }
           }) /
           frames;
}

void ignoreWarning(QtMsgType, const QMessageLogContext &, const QString &)
{
    // The offscreen platform says at each showing that it neither raises nor masks windows.
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    begin(argc, argv);
    qInstallMessageHandler(ignoreWarning);

    ConnUi::NfcOverlay overlay;
    overlay.resize(480, 854);
    overlay.showIndication();
    paint(&overlay);
    ConnUi::IndicationItem *banner = bannerOf(overlay);
    BareBanner bare(banner->pixmap());
    bare.view.show();
    paint(&bare.view);

    compare(
        "A frame of the sliding banner",
        {"QGraphicsView", [&] { return slide(&bare.view, [&](qreal shown) { bare.move(shown); }); }},
        {"NfcOverlay",
         [&] { return slide(&overlay, [&](qreal shown) { banner->setVisibilityFactor(float(shown)); }); }},
        {.atMost = 1.25}, 100);
    compare("The banner's first frame",
            {"QGraphicsView",
             [&] {
                 bare.view.hide();
                 paint(&bare.view);
                 return processorTime([&] {
                     bare.view.show();
                     bare.view.raise();
                     bare.move(1);
                     paint(&bare.view);
                 });
             }},
            {"NfcOverlay",
             [&] {
                 overlay.hide();
                 paint(&overlay);
                 return processorTime([&] {
                     overlay.showIndication();
                     banner->setVisibilityFactor(1);
                     paint(&overlay);
                 });
             }},
            {.atMost = 1.25}, 100);
}
