// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/phonecase.h"

#include <QPainter>
#include <QPainterPath>
#include <QTime>

namespace {

// In device-independent pixels.
constexpr int desk = 12;
constexpr int thickness = 10;
constexpr int statusBar = 34;
constexpr int radius = 36;

constexpr QColor caseColor(0x12, 0x14, 0x1a);
constexpr QColor rimColor(0x5a, 0x60, 0x6e);
constexpr QColor statusColor(0xe8, 0xea, 0xf0);

QPainterPath rounded(const QRectF &rect, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

// Its screen has square corners below the status bar, and round ones at the bottom.
QPainterPath screenPath(const QRectF &screen)
{
    constexpr int inner = radius - thickness;
    QPainterPath top;
    top.addRect(screen.adjusted(0, 0, 0, -inner));
    return rounded(screen, inner).united(top);
}

void paintBattery(QPainter *painter, const QRectF &place)
{
    painter->setPen(QPen(statusColor, 1.5));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(place, 3, 3);
    painter->setPen(Qt::NoPen);
    painter->setBrush(statusColor);
    painter->drawRoundedRect(place.adjusted(2.5, 2.5, -7, -2.5), 1, 1);
    painter->drawRoundedRect(QRectF(place.right() + 2, place.center().y() - 2, 2, 4), 1, 1);
}

} // namespace

PhoneCase::PhoneCase(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    constexpr int tenSeconds = 10000;
    startTimer(tenSeconds);
}

QMargins PhoneCase::margins()
{
    constexpr int side = desk + thickness;
    return {side, desk + statusBar, side, side};
}

void PhoneCase::paintEvent(QPaintEvent * /*event*/)
{
    const QRectF screen = rect().marginsRemoved(margins());
    const QRectF body = rect().adjusted(desk, desk, -desk, -desk);
    QPainterPath around;
    around.addRect(rect());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(around.subtracted(rounded(body, radius)), palette().window());
    painter.fillPath(rounded(body, radius).subtracted(screenPath(screen)), caseColor);
    painter.setPen(QPen(rimColor, 2));
    painter.drawRoundedRect(body.adjusted(1, 1, -1, -1), radius - 1, radius - 1);

    const QRectF status(screen.left() + thickness, body.top(), screen.width() - 2 * thickness, statusBar);
    painter.setPen(statusColor);
    painter.drawText(status, Qt::AlignLeft | Qt::AlignVCenter,
                     QTime::currentTime().toString(QStringLiteral("HH:mm")));
    paintBattery(&painter, QRectF(status.right() - 26, status.center().y() - 6, 22, 12));
}

void PhoneCase::timerEvent(QTimerEvent * /*event*/)
{
    update(0, 0, width(), margins().top());
}
