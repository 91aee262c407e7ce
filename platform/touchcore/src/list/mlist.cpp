// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mlist.h"

#include <QAbstractItemModel>
#include <QKeyEvent>

#include "accessibility/maccessible_p.h"
#include "list/mlist_p.h"
#include "list/mlistrows_p.h"
#include "theme/mstyle_p.h"
#include "widgets/mscrollarea_p.h"

MListPrivate::MListPrivate(MList *list) : q(list), rows(new MListRows), area(new MScrollArea(rows, list)) {}

void MListPrivate::tellSelected(int row)
{
    reveal(row);
    MAccessible::tellRow(q, row, QAccessible::Selection);
    if (q->hasFocus())
        MAccessible::tellRow(q, row, QAccessible::Focus);
}

void MListPrivate::reveal(int row)
{
    area->reveal(row * rows->rowHeight(), (row + 1) * rows->rowHeight());
}

MList::MList(QGraphicsItem *parent) : MWidgetController(parent), d(std::make_unique<MListPrivate>(this))
{
    setFocusPolicy(Qt::StrongFocus);
    connect(
        d->area, &MScrollArea::scrolled, this,
        [this] {
            d->rows->showBetween(d->area->position(), d->area->position() + d->area->size().height());
        });
    connect(
        d->area, &MScrollArea::contentChanged, this, [this] { updateGeometry(); });
    connect(d->rows, &MListRows::selected, this, [this](int row) { d->tellSelected(row); });
    applyStyle();
}

MList::~MList() = default;

QAbstractItemModel *MList::itemModel() const
{
    return d->rows->model();
}

void MList::setItemModel(QAbstractItemModel *model)
{
    d->rows->setModel(model);
}

const MCellCreator *MList::cellCreator() const
{
    return d->rows->creator();
}

void MList::setCellCreator(MCellCreator *creator)
{
    d->rows->setCreator(creator);
}

MList::SelectionMode MList::selectionMode() const
{
    return d->rows->isSelectable() ? SingleSelection : NoSelection;
}

void MList::setSelectionMode(SelectionMode mode)
{
    d->rows->setSelectable(mode == SingleSelection);
}

QItemSelectionModel *MList::selectionModel() const
{
    return d->rows->selection();
}

void MList::selectItem(const QModelIndex &index)
{
    if (index.isValid() && index.model() == d->rows->model())
        d->rows->select(index.row());
}

void MList::keyPressEvent(QKeyEvent *event)
{
    const int row = d->rows->selectedRow();
    const int page = qMax(1, int(d->area->size().height() / qMax(qreal(1), d->rows->rowHeight())));
    int to = row;
    switch (event->key()) {
    case Qt::Key_Down:
        to = row + 1;
        break;
    case Qt::Key_Up:
        to = row - 1;
        break;
    case Qt::Key_PageDown:
        to = qMin(row + page, d->rows->rowCount() - 1);
        break;
    case Qt::Key_PageUp:
        to = qMax(row - page, 0);
        break;
    case Qt::Key_Home:
        to = 0;
        break;
    case Qt::Key_End:
        to = d->rows->rowCount() - 1;
        break;
    default:
        break;
    }
    // At an end the key moves the focus on, like anywhere else.
    if (to == row || to < 0 || to >= d->rows->rowCount() || !d->rows->isSelectable()) {
        event->ignore();
        return;
    }
    d->rows->select(to);
}

void MList::focusInEvent(QFocusEvent *event)
{
    MWidgetController::focusInEvent(event);
    d->rows->setFocusShown(showsFocus());
    MAccessible::tellRow(this, d->rows->selectedRow(), QAccessible::Focus);
}

void MList::focusOutEvent(QFocusEvent *event)
{
    MWidgetController::focusOutEvent(event);
    d->rows->setFocusShown(false);
}

void MList::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    MWidgetController::resizeEvent(event);
    d->area->setGeometry(contentsRect());
    if (d->rows->selectedRow() >= 0) {
        // No lower than needed, whatever passing sizes a layout tried before.
        d->area->scrollTo(0);
        d->reveal(d->rows->selectedRow());
    }
}

void MList::styleChanged()
{
    d->rows->setStyle(style());
}

QSizeF MList::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    QSizeF size = MWidgetController::sizeHint(which, constraint);
    const qreal all = d->rows->rowCount() * d->rows->rowHeight();
    if (which == Qt::MinimumSize)
        size.setHeight(qMin(all, style().minimumHeight));
    if (which == Qt::PreferredSize)
        size.setHeight(all);
    return size;
}
