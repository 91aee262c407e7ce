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

qreal MScrollArea::contentLength() const
{
    return inside->size().height();
}

qreal MScrollArea::range() const
{
    return qMax(qreal(0), contentLength() - size().height());
}

bool MScrollArea::setOffset(qreal position)
{
    const qreal bounded = qBound(qreal(0), position, range());
    if (bounded == offset)
        return false;
    offset = bounded;
    return true;
}

bool MScrollArea::scrollTo(qreal position)
{
    stop();
    if (!setOffset(position))
        return false;
    place();
    return true;
}

void MScrollArea::reveal(qreal top, qreal bottom)
{
    if (top < offset)
        scrollTo(top);
    else if (bottom > offset + size().height())
        scrollTo(qMin(top, bottom - size().height()));
}

void MScrollArea::reveal(const QGraphicsItem *item)
{
    const QRectF place = mapRectFromItem(item, item->boundingRect());
    reveal(place.top() + offset, place.bottom() + offset);
}

void MScrollArea::revealInAll(const QGraphicsItem *item)
{
    const auto *row = dynamic_cast<const MWidgetController *>(item->parentItem());
    for (QGraphicsItem *around = item->parentItem(); around; around = around->parentItem()) {
        auto *area = dynamic_cast<MScrollArea *>(around);
        if (!area)
            continue;
        // The label of a control stands beside it.
        if (row && row->size().height() <= area->size().height())
            area->reveal(row);
        area->reveal(item);
    }
}

void MScrollArea::resizeContent()
{
    const qreal width = size().width();
    const qreal needed = inside->effectiveSizeHint(Qt::MinimumSize, QSizeF(width, -1)).height();
    inside->resize(width, qMax(needed, size().height()));
}

void MScrollArea::moveContent(qreal up)
{
    inside->setPos(0, -up);
}

void MScrollArea::layOut()
{
    resizeContent();
    setOffset(offset);
    place();
}

void MScrollArea::place(qreal overshoot)
{
    moveContent(offset + overshoot);
    indicator->setVisible(range() > 0);
    if (range() > 0) {
        const qreal thumb = size().height() * size().height() / contentLength();
        const qreal length = qMax(thumb, indicator->minimumHeight());
        const qreal width = indicator->preferredWidth();
        const qreal inset = MThemePrivate::ownStyle("MScrollIndicator").margins.right();
        const qreal left = layoutDirection() == Qt::RightToLeft ? inset : size().width() - inset - width;
        indicator->setGeometry(QRectF(left, (size().height() - length) * offset / range(), width, length));
    }
}

bool MScrollArea::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ScrollPrepare: {
        auto *prepare = static_cast<QScrollPrepareEvent *>(event);
        prepare->setViewportSize(size());
        prepare->setContentPosRange(QRectF(0, 0, 0, range()));
        prepare->setContentPos(QPointF(0, offset));
        prepare->setAccepted(range() > 0);
        return true;
    }
    case QEvent::Scroll: {
        auto *scroll = static_cast<QScrollEvent *>(event);
        setOffset(scroll->contentPos().y());
        place(scroll->overshootDistance().y());
        Q_EMIT movedByUser();
        return true;
    }
    case QEvent::UngrabMouse:
        endPress();
        break;
    case QEvent::LayoutDirectionChange:
        place();
        break;
    default:
        break;
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

QVariant MScrollArea::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemSceneHasChanged || (change == ItemVisibleHasChanged && !isVisible()))
        stop();
    return MWidget::itemChange(change, value);
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

bool MScrollArea::isMoving() const
{
    auto *self = const_cast<MScrollArea *>(this);
    return QScroller::hasScroller(self) && QScroller::scroller(self)->state() == QScroller::Scrolling;
}

void MScrollArea::stop()
{
    if (QScroller::hasScroller(this))
        QScroller::scroller(this)->stop();
}

void MScrollArea::endPress()
{
    if (!takingOver && !isMoving())
        stop();
}

void MScrollArea::press(QGraphicsSceneMouseEvent *event)
{
    QScroller *scroller = QScroller::scroller(this);
    const QPointF place = mapFromScene(event->scenePos());
    scroller->handleInput(QScroller::InputPress, place, qint64(event->timestamp()));
    // A slow movement ends without becoming a press.
    if (scroller->state() == QScroller::Inactive)
        scroller->handleInput(QScroller::InputPress, place, qint64(event->timestamp()));
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

// Returns whether the press ends a movement; it must not act on what it happens to meet as well.
bool MScrollArea::endsMovement(const QGraphicsItem *watched, QGraphicsSceneMouseEvent *event)
{
    const bool moving = isMoving();
    if (event->button() != Qt::LeftButton || !(moving || scrollsInsteadOf(watched)))
        return false;
    press(event);
    return moving;
}

bool MScrollArea::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    const auto mouse = [event] { return static_cast<QGraphicsSceneMouseEvent *>(event); };
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
        return endsMovement(watched, mouse()) && takeOver();
    case QEvent::GraphicsSceneMouseMove:
        return scrollsInsteadOf(watched) && drag(mouse()) && takeOver();
    case QEvent::GraphicsSceneMouseRelease:
        if (mouse()->button() == Qt::LeftButton && scrollsInsteadOf(watched))
            release(mouse());
        return false;
    case QEvent::UngrabMouse:
        if (scrollsInsteadOf(watched))
            endPress();
        return false;
    default:
        return false;
    }
}

// Takes the mouse away from what was touched. Returns true.
bool MScrollArea::takeOver()
{
    takingOver = true;
    grabMouse();
    takingOver = false;
    return true;
}

void MScrollArea::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    event->setAccepted(range() > 0 && event->button() == Qt::LeftButton);
    if (event->isAccepted())
        press(event);
}

void MScrollArea::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    drag(event);
}

void MScrollArea::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
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
    event->setAccepted(range() > 0);
    if (event->isAccepted() && event->orientation() == Qt::Vertical && scrollTo(offset - event->delta()))
        Q_EMIT movedByUser();
}
