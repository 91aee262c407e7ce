// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mimagewidget.h"

#include <QPainter>
#include <QPainterPath>

#include "theme/mstyle_p.h"
#include "theme/mtheme_p.h"
#include "widgets/mimagewidget_p.h"

void MImageWidgetPrivate::loadIcon()
{
    if (icon.isNull() && !id.isEmpty())
        icon = MThemePrivate::instance()->icon(id);
}

QSize MImageWidgetPrivate::naturalSize()
{
    loadIcon();
    return icon.isNull() ? pixmap.deviceIndependentSize().toSize()
                         : MThemePrivate::instance()->naturalSize(icon, id);
}

QPixmap MImageWidgetPrivate::scaled(const QSizeF &size, qreal ratio)
{
    const QSize wanted = (size * ratio).toSize();
    if (wanted == scaledFor || wanted.isEmpty())
        return shown;
    scaledFor = wanted;
    loadIcon();
    if (!icon.isNull()) {
        MThemePrivate::instance()->warnIfMissing(id);
        shown = icon.pixmap(size.toSize(), ratio);
    } else if (!pixmap.isNull()) {
        shown = pixmap.scaled(wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        shown.setDevicePixelRatio(ratio);
    }
    return shown;
}

void MImageWidgetPrivate::paintPlaceholder(QPainter *painter, const QRectF &area, qreal extent, qreal ratio)
{
    const QIcon icon = MThemePrivate::instance()->icon(QStringLiteral("icon-m-placeholder"));
    QRectF place(0, 0, extent, extent);
    place.moveCenter(area.center());
    painter->drawPixmap(place.topLeft(), icon.pixmap(place.size().toSize(), ratio));
}

void MImageWidgetPrivate::show(const QString &newId, const QPixmap &newPixmap)
{
    id = newId;
    pixmap = newPixmap;
    icon = QIcon();
    shown = QPixmap();
    scaledFor = QSize();
}

MImageWidget::MImageWidget(QGraphicsItem *parent) : MImageWidget(QString(), parent) {}

MImageWidget::MImageWidget(const QString &id, QGraphicsItem *parent)
    : MWidgetController(parent)
    , d(std::make_unique<MImageWidgetPrivate>())
{
    d->id = id;
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    applyStyle();
}

MImageWidget::~MImageWidget() = default;

void MImageWidget::setImage(const QString &id)
{
    d->show(id, QPixmap());
    updateGeometry();
    update();
}

void MImageWidget::setImage(const QImage &image)
{
    setPixmap(QPixmap::fromImage(image));
}

QString MImageWidget::imageId() const
{
    return d->id;
}

void MImageWidget::setPixmap(const QPixmap &pixmap)
{
    d->show(QString(), pixmap);
    updateGeometry();
    update();
}

QPixmap MImageWidget::pixmap() const
{
    return d->pixmap;
}

void MImageWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    const QRectF area = contentsRect();
    const qreal ratio = painter->device()->devicePixelRatioF();
    const QPixmap picture = d->scaled(area.size(), ratio);
    if (picture.isNull()) {
        MWidgetController::paint(painter, option, widget);
        if (style().glyph > 0)
            MImageWidgetPrivate::paintPlaceholder(painter, area, style().glyph, ratio);
        return;
    }
    QRectF target(QPointF(), picture.deviceIndependentSize());
    target.moveCenter(area.center());
    QPainterPath shape;
    shape.addRoundedRect(target, style().radius, style().radius);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter->setClipPath(shape, Qt::IntersectClip);
    painter->drawPixmap(target, picture, QRectF(picture.rect()));
}

QSizeF MImageWidget::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    const QSizeF size = MWidgetController::sizeHint(which, constraint);
    if (which == Qt::MinimumDescent || style().width >= 0)
        return size;
    qreal left, top, right, bottom;
    getContentsMargins(&left, &top, &right, &bottom);
    return QSizeF(d->naturalSize()) + QSizeF(left + right, top + bottom);
}
