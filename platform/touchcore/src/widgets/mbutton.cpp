// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mbutton.h"

#include <algorithm>

#include <QFontMetricsF>
#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleHints>

#include <MTypes>

#include "accessibility/maccessible_p.h"
#include "theme/mpaint_p.h"
#include "theme/mstyle_p.h"
#include "widgets/mbutton_p.h"
#include "widgets/mwidgetcontroller_p.h"

namespace {

constexpr QLatin1String switchStyle("MButtonSwitch");

} // namespace

void MButtonPrivate::setDown(bool isDown)
{
    down = isDown;
    q->update();
}

void MButtonPrivate::setWaiting(bool isWaiting)
{
    waiting = isWaiting;
    q->update();
}

bool MButtonPrivate::looksEnabled() const
{
    return q->isEnabled() && !waiting;
}

bool MButtonPrivate::isDragged(const QPointF &place) const
{
    return type == MButton::switchType &&
           qAbs(place.x() - pressedAt.x()) >= QGuiApplication::styleHints()->startDragDistance();
}

bool MButtonPrivate::holds(const QPointF &place) const
{
    // A knob may be dragged beyond its end.
    const QPointF across = isDragged(place) ? QPointF(q->rect().center().x(), place.y()) : place;
    return q->rect().contains(across);
}

bool MButtonPrivate::isDraggedWhereItIs(const QPointF &place) const
{
    const bool towardsOn = (place.x() > pressedAt.x()) != (q->layoutDirection() == Qt::RightToLeft);
    return isDragged(place) && towardsOn == checked;
}

QString MButtonPrivate::fittingVariant(qreal width, const MStyle &style) const
{
    QStringList variants = text.split(M::lengthVariantSeparator);
    if (variants.size() == 1)
        return text;
    const QFontMetricsF metrics(style.font);
    std::stable_sort(
        variants.begin(), variants.end(),
        [&](const QString &one, const QString &other) {
            return metrics.horizontalAdvance(one) > metrics.horizontalAdvance(other);
        });
    const auto fits = [&](const QString &variant) {
        return width < 0 || metrics.horizontalAdvance(variant) <= width;
    };
    const auto fitting = std::find_if(variants.cbegin(), variants.cend(), fits);
    return fitting != variants.cend() ? *fitting : variants.constLast();
}

const MTextBlock &MButtonPrivate::block(qreal width, const MStyle &style)
{
    const QTextOption::WrapMode mode =
        width < 0 ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere;
    return blocks.block(fittingVariant(width, style), {style.font, width, mode, style.lineHeight});
}

QColor MButtonPrivate::backgroundColor(const MStyle &style) const
{
    if (!looksEnabled())
        return style.disabledBackground;
    if (type == MButton::switchType && checked)
        return style.checkedBackground;
    return down ? style.pressedBackground : style.background;
}

QColor MButtonPrivate::foregroundColor(const MStyle &style) const
{
    if (!looksEnabled())
        return style.disabledColor;
    return type == MButton::switchType && checked ? style.checkedColor : style.color;
}

QRectF MButtonPrivate::shape() const
{
    return type == MButton::switchType ? q->contentsRect() : q->rect();
}

void MButtonPrivate::paintPush(QPainter *painter, const MStyle &style)
{
    const QRectF area = q->contentsRect();
    MPaint::panel(painter, q->rect(), style, backgroundColor(style),
                  looksEnabled() ? style.border : style.disabledColor);
    painter->setPen(foregroundColor(style));
    block(area.width(), style).draw(painter, area, Qt::AlignCenter, q->layoutDirection(), area);
}

void MButtonPrivate::paintSwitch(QPainter *painter, const MStyle &style)
{
    const QRectF track = q->contentsRect();
    MPaint::panel(painter, track, style, backgroundColor(style));

    const qreal inset = (track.height() - style.glyph) / 2;
    const bool right = checked != (q->layoutDirection() == Qt::RightToLeft);
    const qreal left = right ? track.right() - inset - style.glyph : track.left() + inset;
    painter->setPen(Qt::NoPen);
    painter->setBrush(foregroundColor(style));
    painter->drawEllipse(QRectF(left, track.top() + inset, style.glyph, style.glyph));
}

MButton::MButton(QGraphicsItem *parent) : MButton(QString(), parent) {}

MButton::MButton(const QString &text, QGraphicsItem *parent)
    : MWidgetController(parent)
    , d(std::make_unique<MButtonPrivate>(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setText(text);
    applyStyle();
}

MButton::~MButton() = default;

QString MButton::text() const
{
    return d->text;
}

void MButton::setText(const QString &text)
{
    d->text = text;
    d->blocks.clear();
    updateGeometry();
    update();
    MAccessible::tell(this, QAccessible::NameChanged);
}

MButton::ViewType MButton::viewType() const
{
    return d->type;
}

void MButton::setViewType(ViewType type)
{
    if (d->type == type)
        return;
    d->type = type;
    if (type == switchType) {
        setCheckable(true);
        d->pushStyleName = styleName();
        setStyleName(switchStyle);
    } else {
        setStyleName(styleName() == switchStyle ? d->pushStyleName : styleName());
    }
}

bool MButton::isCheckable() const
{
    return d->checkable;
}

void MButton::setCheckable(bool checkable)
{
    if (!checkable)
        setChecked(false);
    d->checkable = checkable;
}

bool MButton::isChecked() const
{
    return d->checked;
}

void MButton::setChecked(bool checked)
{
    if (!d->checkable || d->checked == checked)
        return;
    d->checked = checked;
    update();
    MAccessible::tellChecked(this);
    Q_EMIT toggled(checked);
}

void MButton::click()
{
    if (!isEnabled())
        return;
    const QPointer<MButton> self(this);
    setChecked(!d->checked);
    if (self)
        Q_EMIT clicked(d->checked);
}

void MButton::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    if (d->type == switchType)
        d->paintSwitch(painter, style());
    else
        d->paintPush(painter, style());
    if (showsFocus())
        MPaint::focusRing(painter, d->shape(), style());
}

QRectF MButton::boundingRect() const
{
    return MWidgetController::boundingRect().adjusted(-d->reach, -d->reach, d->reach, d->reach);
}

bool MButton::event(QEvent *event)
{
    if (event->type() == QEvent::UngrabMouse)
        d->setDown(false);
    return MWidgetController::event(event);
}

void MButton::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    d->pressedAt = event->pos();
    d->setDown(true);
}

void MButton::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    d->setDown(d->holds(event->pos()));
}

void MButton::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const bool pressed = d->down && event->button() == Qt::LeftButton;
    d->setDown(false);
    if (pressed && !d->isDraggedWhereItIs(event->pos()))
        click();
}

void MButton::keyPressEvent(QKeyEvent *event)
{
    const bool press = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_Select || event->key() == Qt::Key_Space;
    if (!press || event->isAutoRepeat()) {
        MWidgetController::keyPressEvent(event);
        return;
    }
    // The user has to see first what a key presses.
    if (showsFocus())
        click();
    else
        MWidgetControllerPrivate::of(this)->showFocus(this);
}

void MButton::styleChanged()
{
    // The scene looks the button up by its earlier bounds, which must not have changed with the theme.
    prepareGeometryChange();
    d->reach = MPaint::focusReach(style());
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(d->type == pushType);
    setSizePolicy(policy);
}

QSizeF MButton::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    const QSizeF size = MWidgetController::sizeHint(which, constraint);
    if (d->type == switchType)
        return which == Qt::MaximumSize ? sizeHint(Qt::PreferredSize, constraint) : size;
    if (which != Qt::MinimumSize && which != Qt::PreferredSize)
        return size;
    qreal left, top, right, bottom;
    getContentsMargins(&left, &top, &right, &bottom);
    const qreal width = constraint.width() < 0 ? -1 : qMax(qreal(1), constraint.width() - left - right);
    QSizeF text = d->block(width, style()).size();
    if (which == Qt::MinimumSize)
        text.setWidth(0);
    return size.expandedTo(text + QSizeF(left + right, top + bottom));
}
