// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsPixmapItem>
#include <QGraphicsWidget>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <MSceneWindow>
#include <MTheme>
#include <MWidget>

#include "scene/mscenehost_p.h"
#include "scene/mscenemanager_p.h"
#include "scene/mscenewindow_p.h"
#include "scene/mslide_p.h"
#include "theme/mtheme_p.h"

namespace {

// Draws what the scene would, without asking it to hide everything else.
void paintTree(QPainter *painter, QGraphicsItem *item, const QGraphicsItem *root)
{
    if (!item->isVisible())
        return;
    painter->save();
    if (item->flags() & QGraphicsItem::ItemClipsChildrenToShape) {
        painter->setTransform(item->itemTransform(root));
        painter->setClipPath(item->shape(), Qt::IntersectClip);
    }
    painter->setTransform(item->itemTransform(root));
    painter->setOpacity(item->effectiveOpacity());
    QStyleOptionGraphicsItem option;
    option.exposedRect = item->boundingRect();
    painter->save();
    item->paint(painter, &option, nullptr);
    painter->restore();
    const QList<QGraphicsItem *> children = item->childItems();
    for (QGraphicsItem *child : children)
        paintTree(painter, child, root);
    painter->restore();
}

QPixmap pictureOf(const QGraphicsWidget *widget, qreal ratio)
{
    QPixmap picture((widget->size() * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    paintTree(&painter, const_cast<QGraphicsWidget *>(widget), widget);
    return picture;
}

int slideTime()
{
    if (MTheme::instance()->isMotionReduced())
        return 0;
    return int(MThemePrivate::ownStyle("MSlide").duration);
}

} // namespace

MSlide::MSlide(MSceneManagerPrivate *manager) : manager(manager), way(this)
{
    way.setEasingCurve(QEasingCurve::OutCubic);
    way.setEndValue(qreal(0));
    connect(&way, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { setDown(value.toReal()); });
}

bool MSlide::moves(const MSceneWindow *sceneWindow) const
{
    return slideTime() > 0 && sceneWindow->isDraggable() && manager->host && manager->host->isShown();
}

bool MSlide::isMoving() const
{
    return awaitsFrame || way.state() == QAbstractAnimation::Running;
}

void MSlide::setDown(qreal down)
{
    if (card)
        card->setTransform(QTransform::fromTranslate(0, down));
}

void MSlide::putBehindAll(QGraphicsPixmapItem *picture)
{
    picture->setParentItem(manager->root);
    picture->setZValue(-1);
}

// The shade of the next question lies on what it covers, not on the card that it replaces: that one would
// turn dark at once. So the picture stands between the two.
void MSlide::shadeLeavingOnce(MSceneWindow *next)
{
    const QGraphicsWidget *front = MSceneWindowPrivate::cardOf(next);
    if (front == next)
        return;
    for (QGraphicsPixmapItem *picture : std::as_const(leaving)) {
        picture->setParentItem(next);
        picture->setZValue(front->zValue() - 1);
    }
}

void MSlide::slideIn(MSceneWindow *sceneWindow)
{
    shadeLeavingOnce(sceneWindow);
    if (!moves(sceneWindow))
        return;
    follow(sceneWindow, manager->turnedSize().height() - MSceneWindowPrivate::cardOf(sceneWindow)->y());
    awaitsFrame = true;
}

void MSlide::follow(MSceneWindow *sceneWindow, qreal down)
{
    QGraphicsWidget *moved = MSceneWindowPrivate::cardOf(sceneWindow);
    way.stop();
    awaitsFrame = false;
    if (card != moved)
        setDown(0);
    card = moved;
    setDown(down);
}

void MSlide::goBack()
{
    if (!card)
        return;
    way.setDuration(slideTime());
    way.setStartValue(card->transform().dy());
    way.start();
}

void MSlide::drawn()
{
    if (awaitsFrame) {
        awaitsFrame = false;
        goBack();
    }
}

void MSlide::forget(MSceneWindow *sceneWindow)
{
    for (QGraphicsPixmapItem *picture : std::as_const(leaving))
        if (picture->parentItem() == sceneWindow)
            putBehindAll(picture);
    if (!card || card != MSceneWindowPrivate::cardOf(sceneWindow))
        return;
    way.stop();
    awaitsFrame = false;
    setDown(0);
    card = nullptr;
}

void MSlide::takeOut(MSceneWindow *sceneWindow)
{
    MSceneWindow *front = manager->front();
    // One that nobody has seen yet covers nothing.
    if (!moves(sceneWindow) || (front != sceneWindow && !awaitsFrame))
        return;
    startLeaving(MSceneWindowPrivate::cardOf(sceneWindow), sceneWindow->zValue());
    if (front != sceneWindow)
        shadeLeavingOnce(front);
}

void MSlide::startLeaving(const QGraphicsWidget *what, qreal layer)
{
    const qreal top = what->y() + what->transform().dy();
    auto *picture = new QGraphicsPixmapItem(pictureOf(what, manager->host->pixelRatio()), manager->root);
    picture->setAcceptedMouseButtons(Qt::NoButton);
    picture->setPos(what->x(), top);
    // The next question comes in front of it.
    picture->setZValue(layer - 0.5);
    auto *leave = new QVariantAnimation(this);
    leave->setEasingCurve(QEasingCurve::InCubic);
    leave->setDuration(slideTime());
    leave->setStartValue(top);
    leave->setEndValue(qreal(manager->turnedSize().height()));
    connect(leave, &QVariantAnimation::valueChanged, this,
            [picture](const QVariant &value) { picture->setY(value.toReal()); });
    connect(leave, &QVariantAnimation::finished, this, [this, picture] {
        leaving.removeOne(picture);
        delete picture;
        if (leaving.isEmpty() && manager->host)
            manager->host->sceneWindowLeft();
    });
    leaving.append(picture);
    leave->start(QAbstractAnimation::DeleteWhenStopped);
}
