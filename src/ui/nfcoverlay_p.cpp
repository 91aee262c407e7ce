// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/nfcoverlay_p.h"

#include <QGraphicsScene>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QTimer>

#include <MSceneManager>

#include "indicationitem.h"
#include "nfcoverlay.h"

namespace ConnUi {

namespace {

constexpr int holdTime = 2000; // milliseconds
constexpr int slideTime = 200; // milliseconds
constexpr float hidden = 0.0F;
constexpr float flush = 1.0F;
constexpr float pastHidden = -0.1F;

// The strip along the edge that is on top for the user, in the window's own coordinates. At 90 and 270
// degrees it is as long as the user's view is high; on a screen that is wide at angle 0 that is past the
// edge's end.
QRect strip(M::OrientationAngle angle, QSize scene, QSize window, int height)
{
    switch (angle) {
    case M::Angle90:
        return {window.width() - height, 0, height, scene.height()};
    case M::Angle180:
        return {0, window.height() - height, scene.width(), height};
    case M::Angle270:
        return {0, 0, height, scene.height()};
    case M::Angle0:
        break;
    }
    return {0, 0, scene.width(), height};
}

} // namespace

NfcOverlayPrivate::NfcOverlayPrivate(NfcOverlay *overlay)
    : QObject(overlay)
    , overlay(overlay)
    , timer(new QTimer(this))
{
    timer->setSingleShot(true);
    timer->setInterval(holdTime);
    // A coarse timer may fire five per cent early.
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, overlay, &NfcOverlay::hideIndication);
}

void NfcOverlayPrivate::createItem()
{
    item = new IndicationItem;
    item->setVisible(showing);
    overlay->scene()->addItem(item);
}

void NfcOverlayPrivate::show()
{
    if (!item)
        return;
    timer->start();
    item->setVisible(true);
    updateWindowMask();
    animate(hidden, flush);
}

void NfcOverlayPrivate::slideOut()
{
    if (!item) {
        // Not yet displayed: there is nothing to slide.
        showing = false;
        overlay->hide();
        return;
    }
    const bool slidingOut = animation && animation->endValue().toFloat() <= 0;
    if (slidingOut)
        return;
    animate(item->visibilityFactor(), pastHidden);
    connect(animation, &QPropertyAnimation::finished, this, &NfcOverlayPrivate::hide);
}

void NfcOverlayPrivate::hide()
{
    item->setVisible(false);
    overlay->hide();
    showing = false;
    // Not at once: this is the animation's own signal.
    animation->deleteLater();
    animation = nullptr;
}

void NfcOverlayPrivate::updateWindowMask()
{
    if (!showing)
        return;
    const MSceneManager *manager = overlay->sceneManager();
    const M::OrientationAngle angle = manager->orientationAngle();
    const QSize scene = manager->visibleSceneSize();
    int height = scene.height();
    if (item) {
        item->setOrientationAngle(angle);
        height = item->pixmap().deviceIndependentSize().toSize().height();
    }
    overlay->setMask(strip(angle, scene, overlay->size(), height));
}

void NfcOverlayPrivate::clearWindowMask()
{
    if (showing)
        overlay->clearMask();
}

void NfcOverlayPrivate::animate(float from, float to)
{
    delete animation;
    animation = new QPropertyAnimation(item, "visibilityFactor", this);
    animation->setDuration(slideTime);
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->start(QAbstractAnimation::KeepWhenStopped);
}

} // namespace ConnUi
