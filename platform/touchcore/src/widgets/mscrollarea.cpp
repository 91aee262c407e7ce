// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QScroller>

#include <MWidgetController>

#include "theme/mtheme_p.h"
#include "widgets/mscrollarea_p.h"

MScrollArea::MScrollArea(QGraphicsWidget *content, QGraphicsItem *parent)
    : MWidget(parent)
    , inside(content)
    , indicator(new MWidgetController(this))
{
    setFlag(ItemClipsChildrenToShape);
    content->setParentItem(this);
    content->installEventFilter(this);
    indicator->setStyleName(QStringLiteral("MScrollIndicator"));
    indicator->setZValue(1);
    // A press on something inside may turn out to be scrolling. Every gesture of Qt's own
    // would leave its recognizer behind.
    setFiltersChildEvents(true);
}

MScrollArea::~MScrollArea() = default;

qreal MScrollArea::contentHeight(qreal width) const
{
    return inside->effectiveSizeHint(Qt::PreferredSize, QSizeF(width, -1)).height();
}

qreal MScrollArea::range() const
{
    return qMax(qreal(0), inside->size().height() - size().height());
}

bool MScrollArea::scrollTo(qreal position)
{
    const qreal bounded = qBound(qreal(0), position, range());
    if (bounded == offset)
        return false;
    offset = bounded;
    place();
    Q_EMIT scrolled();
    return true;
}

void MScrollArea::reveal(qreal top, qreal bottom)
{
    if (top < offset)
        scrollTo(top);
    else if (bottom > offset + size().height())
        scrollTo(bottom - size().height());
}

void MScrollArea::layOut()
{
    const qreal width = size().width();
    const qreal needed = inside->effectiveSizeHint(Qt::MinimumSize, QSizeF(width, -1)).height();
    inside->resize(width, qMax(needed, size().height()));
    offset = qBound(qreal(0), offset, range());
    place();
    Q_EMIT scrolled();
}

void MScrollArea::place(qreal overshoot)
{
    inside->setPos(0, -offset - overshoot);
    indicator->setVisible(range() > 0);
    if (range() > 0) {
        const qreal thumb = size().height() * size().height() / inside->size().height();
        const qreal length = qMax(thumb, indicator->minimumHeight());
        const qreal width = indicator->preferredWidth();
        const qreal inset = MThemePrivate::ownStyle("MScrollIndicator").margins.right();
        const qreal left = layoutDirection() == Qt::RightToLeft ? inset : size().width() - inset - width;
        indicator->setGeometry(QRectF(left, (size().height() - length) * offset / range(), width, length));
    }
}

bool MScrollArea::event(QEvent *event)
{
    if (event->type() == QEvent::ScrollPrepare) {
        auto *prepare = static_cast<QScrollPrepareEvent *>(event);
        prepare->setViewportSize(size());
        prepare->setContentPosRange(QRectF(0, 0, 0, range()));
        prepare->setContentPos(QPointF(0, offset));
        prepare->setAccepted(range() > 0);
        return true;
    }
    if (event->type() == QEvent::Scroll) {
        auto *scroll = static_cast<QScrollEvent *>(event);
        scrollTo(scroll->contentPos().y());
        place(scroll->overshootDistance().y());
        return true;
    }
    return MWidget::event(event);
}

bool MScrollArea::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == inside && event->type() == QEvent::LayoutRequest) {
        layOut();
        Q_EMIT contentChanged();
    }
    return MWidget::eventFilter(watched, event);
}

bool MScrollArea::scrollsInsteadOf(const QGraphicsItem *item) const
{
    for (; item; item = item->parentItem()) {
        const auto *area = dynamic_cast<const MScrollArea *>(item);
        if (area && area->range() > 0)
            return area == this;
    }
    return false;
}

void MScrollArea::press(QGraphicsSceneMouseEvent *event)
{
    QScroller::scroller(this)->handleInput(QScroller::InputPress, mapFromScene(event->scenePos()),
                                           qint64(event->timestamp()));
}

bool MScrollArea::drag(QGraphicsSceneMouseEvent *event)
{
    QScroller *scroller = QScroller::scroller(this);
    scroller->handleInput(QScroller::InputMove, mapFromScene(event->scenePos()), qint64(event->timestamp()));
    return scroller->state() == QScroller::Dragging;
}

void MScrollArea::release(QGraphicsSceneMouseEvent *event)
{
    QScroller::scroller(this)->handleInput(QScroller::InputRelease, mapFromScene(event->scenePos()),
                                           qint64(event->timestamp()));
}

bool MScrollArea::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    const bool mouse = event->type() == QEvent::GraphicsSceneMousePress ||
                       event->type() == QEvent::GraphicsSceneMouseMove ||
                       event->type() == QEvent::GraphicsSceneMouseRelease;
    if (!mouse || !scrollsInsteadOf(watched))
        return false;
    auto *mouseEvent = static_cast<QGraphicsSceneMouseEvent *>(event);
    if (event->type() == QEvent::GraphicsSceneMousePress) {
        press(mouseEvent);
        return false;
    }
    if (event->type() == QEvent::GraphicsSceneMouseRelease) {
        release(mouseEvent);
        return false;
    }
    if (!drag(mouseEvent))
        return false;
    // Takes the press away from what was touched.
    grabMouse();
    return true;
}

void MScrollArea::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    event->setAccepted(range() > 0);
    if (event->isAccepted())
        press(event);
}

void MScrollArea::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    drag(event);
}

void MScrollArea::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    release(event);
    ungrabMouse();
}

void MScrollArea::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    MWidget::resizeEvent(event);
    layOut();
}

void MScrollArea::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    event->setAccepted(scrollTo(offset - event->delta()));
}
