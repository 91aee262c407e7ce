// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <algorithm>
#include <utility>

#include <QGraphicsSceneMouseEvent>

#include <MSceneWindow>
#include <MWidget>

#include "scene/mdismissal_p.h"
#include "scene/mscenemanager_p.h"
#include "scene/mscenewindow_p.h"
#include "widgets/mscrollarea_p.h"

namespace {

// A finger that rests moves as far.
constexpr qreal slop = 10;
// The share of its height after which a scene window does not go back.
constexpr qreal farShare = 1.0 / 3;
// As far, a flick is fast enough by itself.
constexpr qreal flickWay = 40;
constexpr qreal flickSpeed = 0.6; // pixels a millisecond

} // namespace

bool MDismissal::takes(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
        press(static_cast<const QGraphicsSceneMouseEvent *>(event));
        return dragging;
    case QEvent::GraphicsSceneMouseMove:
        return touched && move(static_cast<const QGraphicsSceneMouseEvent *>(event));
    case QEvent::GraphicsSceneMouseRelease:
        return touched && release(static_cast<const QGraphicsSceneMouseEvent *>(event));
    default:
        return false;
    }
}

void MDismissal::cancel()
{
    touched = nullptr;
    if (!std::exchange(dragging, false))
        return;
    manager->slide.goBack();
}

void MDismissal::press(const QGraphicsSceneMouseEvent *event)
{
    // A second button of the mouse, or a second finger.
    if (dragging || (event->buttons() & ~event->button())) {
        cancel();
        return;
    }
    MSceneWindow *front = manager->front();
    touched = nullptr;
    if (!front || !front->isDraggable() || event->button() != Qt::LeftButton || manager->slide.isMoving())
        return;
    touched = front;
    start = event->scenePos();
    startTime = event->timestamp();
    const QGraphicsWidget *card = MSceneWindowPrivate::cardOf(front);
    beside = card != front && !card->sceneBoundingRect().contains(start);
}

// As the user sees it, however the scene window is turned.
QPointF MDismissal::wayOf(const QGraphicsSceneMouseEvent *event) const
{
    return manager->root->mapFromScene(event->scenePos()) - manager->root->mapFromScene(start);
}

bool MDismissal::mayDrag(const QPointF &way) const
{
    if (beside || way.y() <= qAbs(way.x()))
        return false;
    const QList<QGraphicsItem *> below = manager->scene.items(start);
    return std::none_of(below.cbegin(), below.cend(), [this](QGraphicsItem *item) {
        const auto *area = dynamic_cast<const MScrollArea *>(item);
        return area && touched->isAncestorOf(area) && area->position() > 0;
    });
}

bool MDismissal::move(const QGraphicsSceneMouseEvent *event)
{
    const QPointF way = wayOf(event);
    if (!dragging) {
        if (way.manhattanLength() < slop)
            return false;
        if (!mayDrag(way)) {
            touched = nullptr;
            return false;
        }
        manager->scene.endPresses();
        dragging = true;
    }
    manager->slide.follow(touched, qMax(qreal(0), way.y() - slop));
    return true;
}

bool MDismissal::isFar(const QGraphicsSceneMouseEvent *event) const
{
    const qreal down = wayOf(event).y();
    const qreal milliseconds = qMax(qreal(1), qreal(event->timestamp() - startTime));
    return down > MSceneWindowPrivate::cardOf(touched)->size().height() * farShare ||
           (down > flickWay && down / milliseconds > flickSpeed);
}

bool MDismissal::release(const QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return dragging;
    const bool wasDragged = std::exchange(dragging, false);
    if (wasDragged ? isFar(event) : beside) {
        dismiss();
        return true;
    }
    touched = nullptr;
    if (wasDragged) {
        manager->slide.goBack();
        // Its buttons move.
        manager->uncover();
    }
    return wasDragged;
}

void MDismissal::dismiss()
{
    const QPointer<MSceneWindow> dismissed = std::exchange(touched, nullptr);
    const QPointer<QObject> scene = &manager->scene;
    manager->scene.endPresses();
    dismissed->dismiss();
    // It may have ended with its window, and it may not want to go.
    if (scene && dismissed && manager->front() == dismissed)
        manager->slide.goBack();
}
