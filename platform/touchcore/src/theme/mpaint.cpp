// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QPainter>
#include <QtMath>

#include "theme/mpaint_p.h"
#include "theme/mstyle_p.h"

namespace {

// Where it blends a hundred rows of the screen or more, Qt hands them to a pool of threads in pieces and
// waits, which takes several times as long as blending them. This many are fewer on every screen.
constexpr qreal rowsAtOnce = 30;

void outline(QPainter *painter, const QRectF &rect, qreal radius, const QPen &pen)
{
    const qreal inset = pen.widthF() / 2;
    const qreal inner = qMax(qreal(0), radius - inset);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), inner, inner);
}

void fillRows(QPainter *painter, const QRectF &rect, const QColor &color)
{
    painter->setRenderHint(QPainter::Antialiasing, false);
    const int strips = qCeil(rect.height() / rowsAtOnce);
    for (int strip = 0; strip < strips; ++strip) {
        const qreal top = rect.top() + strip * rowsAtOnce;
        const qreal bottom = qMin(top + rowsAtOnce, rect.bottom());
        painter->fillRect(QRectF(QPointF(rect.left(), top), QPointF(rect.right(), bottom)), color);
    }
    painter->setRenderHint(QPainter::Antialiasing);
}

void fillRounded(QPainter *painter, const QRectF &rect, qreal radius, const QColor &color)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    painter->drawRoundedRect(rect, radius, radius);
}

qreal cornerRadius(const QRectF &rect, const MStyle &style)
{
    return qMin(style.radius, qMin(rect.width(), rect.height()) / 2);
}

} // namespace

void MPaint::panel(QPainter *painter, const QRectF &rect, const MStyle &style, const QColor &background)
{
    panel(painter, rect, style, background, style.border);
}

void MPaint::panel(QPainter *painter, const QRectF &rect, const MStyle &style, const QColor &background,
                   const QColor &border)
{
    const qreal radius = cornerRadius(rect, style);
    painter->setRenderHint(QPainter::Antialiasing);
    if (background.alpha() > 0 && style.radius > 0)
        fillRounded(painter, rect, radius, background);
    else if (background.alpha() > 0)
        fillRows(painter, rect, background);
    if (style.borderWidth > 0)
        outline(painter, rect, radius, QPen(border, style.borderWidth));
}

qreal MPaint::focusReach(const MStyle &style)
{
    return style.focusWidth > 0 ? style.focusGap + style.focusWidth : 0;
}

void MPaint::focusRing(QPainter *painter, const QRectF &rect, const MStyle &style)
{
    const qreal reach = focusReach(style);
    if (reach <= 0)
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    outline(painter, rect.adjusted(-reach, -reach, reach, reach), cornerRadius(rect, style) + reach,
            QPen(style.focus, style.focusWidth));
}
