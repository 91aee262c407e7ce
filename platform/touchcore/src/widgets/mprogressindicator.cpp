// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mprogressindicator.h"

#include <cmath>

#include <QPainter>
#include <QTimerEvent>
#include <QWidget>

#include "accessibility/maccessible_p.h"
#include "theme/mpaint_p.h"
#include "theme/mstyle_p.h"
#include "widgets/mprogressindicator_p.h"

namespace {

constexpr int frame = 33; // ms
// QPainter counts in sixteenths of a degree, anticlockwise from three o'clock.
constexpr int degree = 16;
constexpr int top = 90;
constexpr int spinnerSpan = 270;

} // namespace

void MProgressIndicatorPrivate::setRange(int newMinimum, int newMaximum)
{
    minimum = newMinimum;
    maximum = newMaximum;
    value = qBound(minimum, value, maximum);
    q->update();
}

void MProgressIndicatorPrivate::keepTurning()
{
    seen = true;
    if (frames.isActive())
        return;
    if (!turning.isValid())
        turning.start();
    frames.start(frame, q);
}

void MProgressIndicatorPrivate::turn()
{
    // Nothing asks for a picture while it is hidden, covered or out of sight: the next one starts it again.
    if (!seen) {
        frames.stop();
        return;
    }
    seen = false;
    q->update();
}

void MProgressIndicatorPrivate::paintBar(QPainter *painter, const MStyle &style)
{
    const QRectF area = q->contentsRect();
    QRectF track(area.left(), area.center().y() - style.strokeWidth / 2, area.width(), style.strokeWidth);
    MPaint::panel(painter, track, style, style.background);

    const qreal range = qreal(maximum) - minimum;
    const qreal done = range > 0 ? (qreal(value) - minimum) / range : 0;
    const qreal length = track.width() * done;
    if (q->layoutDirection() == Qt::RightToLeft)
        track.setLeft(track.right() - length);
    else
        track.setWidth(length);
    if (length > 0)
        MPaint::panel(painter, track, style, style.color, style.color);
}

void MProgressIndicatorPrivate::paintSpinner(QPainter *painter, const MStyle &style)
{
    const qreal inset = style.strokeWidth / 2;
    const QRectF ring = q->contentsRect().adjusted(inset, inset, -inset, -inset);
    const qreal turn = style.duration > 0 && turning.isValid()
                           ? std::fmod(qreal(turning.elapsed()), style.duration) / style.duration
                           : 0;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(style.background, style.strokeWidth));
    painter->drawEllipse(ring);
    painter->setPen(QPen(style.color, style.strokeWidth, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(ring, (top - qRound(turn * 360)) * degree, -(360 - spinnerSpan) * degree);
}

MProgressIndicator::MProgressIndicator(QGraphicsItem *parent, ViewType type)
    : MWidgetController(parent)
    , d(std::make_unique<MProgressIndicatorPrivate>(this, type))
{
    setViewType(type);
}

MProgressIndicator::~MProgressIndicator() = default;

MProgressIndicator::ViewType MProgressIndicator::viewType() const
{
    return d->type;
}

void MProgressIndicator::setViewType(ViewType type)
{
    d->type = type;
    setStyleName(type == spinnerType ? QStringLiteral("MProgressSpinner") : QString());
}

int MProgressIndicator::minimum() const
{
    return d->minimum;
}

void MProgressIndicator::setMinimum(int minimum)
{
    d->setRange(minimum, qMax(minimum, d->maximum));
}

int MProgressIndicator::maximum() const
{
    return d->maximum;
}

void MProgressIndicator::setMaximum(int maximum)
{
    d->setRange(qMin(d->minimum, maximum), maximum);
}

int MProgressIndicator::value() const
{
    return d->value;
}

void MProgressIndicator::setValue(int value)
{
    d->value = qBound(d->minimum, value, d->maximum);
    update();
    MAccessible::tellValue(this, d->value);
}

void MProgressIndicator::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *widget)
{
    if (d->type == barType) {
        d->paintBar(painter, style());
        return;
    }
    if (!widget || !widget->window()->isMinimized())
        d->keepTurning();
    d->paintSpinner(painter, style());
}

void MProgressIndicator::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == d->frames.timerId()) {
        d->turn();
        return;
    }
    MWidgetController::timerEvent(event);
}
