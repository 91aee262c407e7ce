// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mpaint_p.h"

#include <QPainter>

#include "mstyle_p.h"

namespace {

void outline(QPainter *painter, const QRectF &rect, qreal radius, const QPen &pen)
{
    const qreal inset = pen.widthF() / 2;
    const qreal inner = qMax(qreal(0), radius - inset);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), inner, inner);
}

qreal cornerRadius(const QRectF &rect, const MStyle &style)
{
    return qMin(style.radius, qMin(rect.width(), rect.height()) / 2);
}

} // namespace

void MPaint::panel(QPainter *painter, const QRectF &rect, const MStyle &style, const QColor &background)
{
    const qreal radius = cornerRadius(rect, style);
    painter->setRenderHint(QPainter::Antialiasing);
    if (background.alpha() > 0) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(background);
        painter->drawRoundedRect(rect, radius, radius);
    }
    if (style.borderWidth > 0) {
        outline(painter, rect, radius, QPen(style.border, style.borderWidth));
    }
}

void MPaint::focusRing(QPainter *painter, const QRectF &rect, const MStyle &style)
{
    if (style.focusWidth > 0) {
        painter->setRenderHint(QPainter::Antialiasing);
        outline(painter, rect, cornerRadius(rect, style), QPen(style.focus, style.focusWidth));
    }
}
