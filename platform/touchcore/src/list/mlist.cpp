// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mlist.h"

#include <QAbstractItemModel>
#include <QKeyEvent>

#include "accessibility/maccessible_p.h"
#include "list/mlist_p.h"
#include "list/mlistarea_p.h"
#include "list/mlistrows_p.h"
#include "theme/mstyle_p.h"

MListPrivate::MListPrivate(MList *list) : q(list), rows(new MListRows), area(new MListArea(rows, list)) {}

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
    revealed = row;
}

int MListPrivate::selectableFrom(int row, int step) const
{
    while (row >= 0 && row < rows->rowCount() && !rows->isSelectableRow(row))
        row += step;
    return rows->isSelectableRow(row) ? row : -1;
}

int MListPrivate::rowAtKey(int key) const
{
    const int row = rows->selectedRow();
    const int last = rows->rowCount() - 1;
    const int page = qMax(1, int(area->size().height() / qMax(qreal(1), rows->rowHeight())));
    switch (key) {
    case Qt::Key_Down:
        return selectableFrom(row + 1, 1);
    case Qt::Key_Up:
        return selectableFrom(row - 1, -1);
    case Qt::Key_PageDown:
        return selectableFrom(qMin(row + page, last), -1);
    case Qt::Key_PageUp:
        return selectableFrom(qMax(row - page, 0), 1);
    case Qt::Key_Home:
        return selectableFrom(0, 1);
    case Qt::Key_End:
        return selectableFrom(last, -1);
    default:
        return -1;
    }
}

MList::MList(QGraphicsItem *parent) : MWidgetController(parent), d(std::make_unique<MListPrivate>(this))
{
    setFocusPolicy(Qt::StrongFocus);
    connect(
        d->area, &MScrollArea::contentChanged, this, [this] { updateGeometry(); });
    connect(
        d->area, &MScrollArea::movedByUser, this, [this] { d->revealed = -1; });
    connect(d->rows, &MListRows::selected, this, [this](int row) { d->tellSelected(row); });
    connect(d->rows, &MListRows::clicked, this, &MList::itemClicked);
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
    const int row = d->rows->isSelectable() ? d->rowAtKey(event->key()) : -1;
    // At an end the key moves the focus on, like anywhere else.
    if (row < 0 || row == d->rows->selectedRow())
        event->ignore();
    else
        d->rows->select(row);
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
    if (d->revealed >= 0) {
        // No lower than needed, whatever passing sizes a layout tried before.
        d->area->scrollTo(0);
        d->reveal(d->revealed);
    }
}

void MList::styleChanged()
{
    d->rows->setStyle(style());
}

QSizeF MList::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    QSizeF size = MWidgetController::sizeHint(which, constraint);
    const qreal all = d->rows->length();
    if (which == Qt::MinimumSize)
        size.setHeight(qMin(all, style().minimumHeight));
    if (which == Qt::PreferredSize)
        size.setHeight(all);
    return size;
}
