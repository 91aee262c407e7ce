// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <cmath>
#include <iterator>
#include <limits>

#include <QAbstractItemModel>
#include <QGraphicsLayout>
#include <QGraphicsSceneMouseEvent>
#include <QItemSelectionModel>
#include <QPainter>

#include "accessibility/maccessible_p.h"
#include "list/mlistrows_p.h"
#include "theme/mpaint_p.h"
#include "theme/mstyle_p.h"

MListRows::MListRows() = default;

MListRows::~MListRows() = default;

void MListRows::setModel(QAbstractItemModel *model)
{
    if (itemModel)
        itemModel->disconnect(this);
    itemModel = model;
    itemSelection = model ? std::make_shared<QItemSelectionModel>(model, nullptr) : nullptr;
    pressed = QModelIndex();
    if (model) {
        connect(itemSelection.get(), &QItemSelectionModel::selectionChanged, this, [this] { update(); });
        connect(model, &QAbstractItemModel::modelReset, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::layoutChanged, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first) { followInsertion(first); });
        connect(model, &QAbstractItemModel::rowsRemoved, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::rowsMoved, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::dataChanged, this, &MListRows::recreateRange);
        connect(model, &QObject::destroyed, this, &MListRows::recreateCells);
    }
    recreateCells();
}

void MListRows::setCreator(MCellCreator *creator)
{
    if (cellCreator.get() == creator)
        return;
    cellCreator.reset(creator);
    recreateCells();
}

void MListRows::setStyle(const MStyle &style)
{
    this->style = &style;
    update();
}

void MListRows::setFocusShown(bool shown)
{
    focusShown = shown;
    update();
}

qreal MListRows::rowHeight() const
{
    return cellCreator ? cellCreator->cellSize().height() : 0;
}

int MListRows::rowCount() const
{
    return itemModel && rowHeight() > 0 ? itemModel->rowCount() : 0;
}

int MListRows::selectedRow() const
{
    const QModelIndexList rows = itemSelection ? itemSelection->selectedRows() : QModelIndexList();
    return rows.isEmpty() ? -1 : rows.first().row();
}

bool MListRows::isSelectableRow(int row) const
{
    constexpr Qt::ItemFlags needed = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return row >= 0 && row < rowCount() && (itemModel->flags(itemModel->index(row, 0)) & needed) == needed;
}

void MListRows::select(int row)
{
    if (!isSelectableRow(row))
        return;
    const QPointer<MListRows> self(this);
    const std::shared_ptr<QItemSelectionModel> selection = itemSelection;
    selection->setCurrentIndex(itemModel->index(row, 0),
                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (self && itemSelection == selection)
        Q_EMIT selected(row);
}

void MListRows::click(int row)
{
    if (!isSelectableRow(row))
        return;
    const QPersistentModelIndex index = itemModel->index(row, 0);
    const QPointer<MListRows> self(this);
    select(row);
    if (self && index.isValid() && index.model() == itemModel)
        Q_EMIT clicked(index);
}

void MListRows::scrollTo(qreal position)
{
    top = position;
    showCells();
    update();
}

MWidget *MListRows::newCell(int row)
{
    filledRow = row;
    MWidget *cell = cellCreator->createCell(itemModel->index(row, 0), recycler);
    filledRow = -1;
    return cell;
}

MWidget *MListRows::cellAt(int row)
{
    const auto known = cells.find(row);
    if (known != cells.cend())
        return known->second;
    MWidget *cell = newCell(row);
    cell->setParentItem(this);
    const auto next = cells.upper_bound(row);
    // A list of the items has the rows in their order.
    if (next != cells.cend())
        cell->stackBefore(next->second);
    cells.emplace(row, cell);
    return cell;
}

void MListRows::showCells()
{
    if (filledRow >= 0)
        return;
    const int rows = rowCount();
    const qreal bottom = top + size().height();
    const int first = rows > 0 ? qBound(0, int(top / rowHeight()), rows) : 0;
    const int end = rows > 0 ? qBound(first, int(std::ceil(bottom / rowHeight())), rows) : 0;
    recycleCells(0, first - 1);
    recycleCells(end, std::numeric_limits<int>::max());
    for (int row = first; row < end; ++row) {
        MWidget *cell = cellAt(row);
        cell->setGeometry(rowRect(row));
        // A recycled cell may have that geometry already, and a new layout.
        if (cell->layout())
            cell->layout()->activate();
    }
    if (end == rows)
        readOn();
}

// A model may hold back rows until somebody is about to see them.
void MListRows::readOn()
{
    if (itemModel && rowHeight() > 0 && size().height() > 0 && itemModel->canFetchMore(QModelIndex()))
        itemModel->fetchMore(QModelIndex());
}

void MListRows::recycleCells(int first, int last)
{
    const auto begin = cells.lower_bound(first);
    const auto end = cells.upper_bound(last);
    for (auto cell = begin; cell != end; ++cell)
        recycler.recycle(cell->second);
    cells.erase(begin, end);
}

void MListRows::recreateCells()
{
    // The model changes while a cell asks it for its data.
    if (filledRow >= 0) {
        QMetaObject::invokeMethod(this, &MListRows::recreateCells, Qt::QueuedConnection);
        return;
    }
    recycleCells(0, std::numeric_limits<int>::max());
    updateGeometry();
    showCells();
    update();
}

void MListRows::recreateRange(const QModelIndex &first, const QModelIndex &last)
{
    // The cell is reading what has changed.
    if (filledRow >= 0 && first.row() == filledRow && last.row() == filledRow)
        return;
    if (filledRow >= 0) {
        recreateCells();
        return;
    }
    recycleCells(first.row(), last.row());
    showCells();
}

void MListRows::followInsertion(int first)
{
    // A model that reads on while it is shown adds rows that nobody sees yet.
    if (first * rowHeight() >= top + size().height())
        updateGeometry();
    else
        recreateCells();
}

QRectF MListRows::rowRect(int row) const
{
    return QRectF(0, row * rowHeight() - top, size().width(), rowHeight());
}

QList<int> MListRows::rowsInSight() const
{
    QList<int> rows;
    for (const auto &[row, cell] : cells)
        rows.append(row);
    return rows;
}

QString MListRows::textOf(int row)
{
    const auto shown = cells.find(row);
    if (shown != cells.end())
        return MAccessible::textsIn(shown->second).join(QLatin1Char(' '));
    MWidget *cell = newCell(row);
    const QString text = MAccessible::textsIn(cell).join(QLatin1Char(' '));
    recycler.recycle(cell);
    return text;
}

int MListRows::rowAt(const QPointF &position) const
{
    if (rowCount() == 0 || !rect().contains(position))
        return -1;
    const qreal row = (position.y() + top) / rowHeight();
    return row < rowCount() ? int(row) : -1;
}

void MListRows::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const int chosen = selectedRow();
    if (pressed.isValid())
        MPaint::panel(painter, rowRect(pressed.row()), *style, style->pressedBackground);
    if (chosen >= 0) {
        MPaint::panel(painter, rowRect(chosen), *style, style->checkedBackground);
        paintMark(painter, rowRect(chosen));
    }
    if (focusShown) {
        // There is no room between two rows.
        const qreal reach = MPaint::focusReach(*style);
        const QRectF inside = rowRect(qMax(chosen, 0)).adjusted(reach, reach, -reach, -reach);
        MPaint::focusRing(painter, inside, *style);
    }
}

void MListRows::paintMark(QPainter *painter, const QRectF &row)
{
    const qreal glyph = style->glyph;
    const qreal inset = (row.height() - glyph) / 2;
    const bool left = layoutDirection() == Qt::RightToLeft;
    const qreal x = left ? row.left() + inset : row.right() - inset - glyph;
    const QPointF origin(x, row.top() + inset);
    const QPointF tick[] = {origin + QPointF(0, 0.55) * glyph, origin + QPointF(0.36, 0.88) * glyph,
                            origin + QPointF(1, 0.16) * glyph};
    painter->setBrush(Qt::NoBrush);
    painter->setPen(
        QPen(style->checkedColor, style->strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(tick, int(std::size(tick)));
}

void MListRows::setPressed(const QModelIndex &index)
{
    if (pressed != index) {
        pressed = index;
        update();
    }
}

bool MListRows::event(QEvent *event)
{
    // A finger that begins to scroll takes the press away, and so does a dialog that comes up.
    if (event->type() == QEvent::UngrabMouse)
        setPressed(QModelIndex());
    return MWidget::event(event);
}

void MListRows::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    const int row = selectable && event->button() == Qt::LeftButton ? rowAt(event->pos()) : -1;
    event->setAccepted(isSelectableRow(row));
    if (event->isAccepted())
        setPressed(itemModel->index(row, 0));
}

void MListRows::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (rowAt(event->pos()) != pressed.row())
        setPressed(QModelIndex());
}

void MListRows::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !pressed.isValid())
        return;
    const int row = pressed.row();
    setPressed(QModelIndex());
    click(row);
}

void MListRows::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    MWidget::resizeEvent(event);
    showCells();
}

QSizeF MListRows::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    QSizeF size = MWidget::sizeHint(which, constraint);
    if (which == Qt::PreferredSize)
        size.setHeight(length());
    return size;
}
