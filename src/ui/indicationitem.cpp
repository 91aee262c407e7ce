// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "indicationitem.h"

#include <QGraphicsScene>
#include <QPointF>
#include <QSizeF>

#include <MSceneManager>
#include <MTheme>
#include <MWindow>

namespace ConnUi {

namespace {

bool isSideways(M::OrientationAngle angle)
{
    return angle == M::Angle90 || angle == M::Angle270;
}

MSceneManager *sceneManagerOf(const QGraphicsView *view)
{
    const auto *window = qobject_cast<const MWindow *>(view);
    return window ? window->sceneManager() : nullptr;
}

// Where the banner's corner lies when "factor" of its height is in view. The picture is turned about that
// corner.
QPointF positionAt(M::OrientationAngle angle, QSizeF scene, qreal height, qreal factor)
{
    const qreal shown = height * factor;
    // The scene's size is that of the user's view; on a screen held sideways its edges are swapped.
    const QSizeF turned = scene.transposed();
    switch (angle) {
    case M::Angle90:
        return {turned.width() + height - shown, 0};
    case M::Angle180:
        return {scene.width(), scene.height() + height - shown};
    case M::Angle270:
        return {shown - height, turned.height()};
    case M::Angle0:
        break;
    }
    return {0, shown - height};
}

} // namespace

IndicationItem::IndicationItem(QGraphicsItem *parent)
    : QGraphicsPixmapItem(parent)
    , landscape(MTheme::pixmap(QStringLiteral("quenzotouch-nfc-banner-landscape")))
    , portrait(MTheme::pixmap(QStringLiteral("quenzotouch-nfc-banner-portrait")))
{
    setShapeMode(QGraphicsPixmapItem::BoundingRectShape);
    setPixmap(*landscape);
}

IndicationItem::~IndicationItem()
{
    MTheme::releasePixmap(landscape);
    MTheme::releasePixmap(portrait);
}

float IndicationItem::visibilityFactor() const
{
    return factor;
}

void IndicationItem::setVisibilityFactor(float newFactor)
{
    factor = newFactor;
    if (!scene() || scene()->views().isEmpty()) {
        qWarning("IndicationItem: setting orientation when not yet in view!");
        return;
    }
    const MSceneManager *manager = sceneManagerOf(scene()->views().first());
    if (!manager) {
        qWarning("IndicationItem: Unble to resolve sceneManager()");
        return;
    }
    setPos(positionAt(angle, manager->visibleSceneSize(), boundingRect().height(), factor));
}

void IndicationItem::setOrientationAngle(M::OrientationAngle newAngle)
{
    angle = newAngle;
    setPixmap(isSideways(angle) ? *portrait : *landscape);
    setRotation(isSideways(angle) || angle == M::Angle180 ? angle : M::Angle0);
    setVisibilityFactor(factor);
}

} // namespace ConnUi
