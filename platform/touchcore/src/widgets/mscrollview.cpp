// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mscrollview.h"

#include <utility>

#include <QKeyEvent>
#include <QSizePolicy>

#include <MLayout>

#include "widgets/mscrollarea_p.h"
#include "widgets/mscrollview_p.h"

MScrollViewPrivate::MScrollViewPrivate(MScrollView *view)
    : frame(new MWidget)
    , layout(new MLayout(frame))
    , area(new MScrollArea(frame, view))
{}

MScrollView::MScrollView(QGraphicsItem *parent)
    : MWidget(parent)
    , d(std::make_unique<MScrollViewPrivate>(this))
{
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(d->area, &MScrollArea::contentChanged, this, [this] { updateGeometry(); });
}

MScrollView::~MScrollView() = default;

QGraphicsWidget *MScrollView::widget() const
{
    return d->widget;
}

void MScrollView::setWidget(QGraphicsWidget *widget)
{
    delete std::exchange(d->widget, widget);
    d->area->scrollTo(0);
    if (widget)
        d->layout->addItem(widget);
    updateGeometry();
}

QSizeF MScrollView::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    if (which != Qt::MinimumSize && which != Qt::PreferredSize)
        return MWidget::sizeHint(which, constraint);
    QSizeF size = d->frame->effectiveSizeHint(which, constraint);
    if (which == Qt::MinimumSize)
        size.setHeight(0);
    return size;
}

void MScrollView::keyPressEvent(QKeyEvent *event)
{
    const qreal page = size().height() * MScrollArea::pageStep;
    event->accept();
    if (event->key() == Qt::Key_PageDown)
        d->area->scrollTo(d->area->position() + page);
    else if (event->key() == Qt::Key_PageUp)
        d->area->scrollTo(d->area->position() - page);
    else
        event->ignore();
}

void MScrollView::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    MWidget::resizeEvent(event);
    d->area->resize(size());
}
