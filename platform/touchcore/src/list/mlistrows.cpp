// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <cmath>
#include <iterator>

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
    delete itemSelection;
    itemModel = model;
    itemSelection = model ? new QItemSelectionModel(model, this) : nullptr;
    if (model) {
        connect(itemSelection, &QItemSelectionModel::selectionChanged, this, [this] { update(); });
        connect(model, &QAbstractItemModel::modelReset, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::layoutChanged, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first) { followInsertion(first); });
        connect(model, &QAbstractItemModel::rowsRemoved, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::rowsMoved, this, &MListRows::recreateCells);
        connect(model, &QAbstractItemModel::dataChanged, this, &MListRows::recreateCells);
        connect(model, &QObject::destroyed, this, &MListRows::recreateCells);
    }
    recreateCells();
}

void MListRows::setCreator(MCellCreator *creator)
{
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

void MListRows::select(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    itemSelection->setCurrentIndex(itemModel->index(row, 0),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    Q_EMIT selected(row);
}

void MListRows::showBetween(qreal top, qreal bottom)
{
    this->top = top;
    this->bottom = bottom;
    const int rows = rowCount();
    const int first = rows > 0 ? qBound(0, int(top / rowHeight()), rows) : 0;
    const int end = rows > 0 ? qBound(first, int(std::ceil(bottom / rowHeight())), rows) : 0;
    for (auto cell = cells.begin(); cell != cells.end();) {
        if (cell->first >= first && cell->first < end) {
            ++cell;
            continue;
        }
        recycler.recycle(cell->second);
        cell = cells.erase(cell);
    }
    for (int row = first; row < end; ++row) {
        MWidget *&cell = cells[row];
        if (!cell) {
            cell = cellCreator->createCell(itemModel->index(row, 0), recycler);
            cell->setParentItem(this);
        }
        cell->setGeometry(rowRect(row));
        // A recycled cell may have that geometry already, and a new layout.
        if (cell->layout())
            cell->layout()->activate();
    }
}

void MListRows::recycleAll()
{
    for (const auto &[row, cell] : cells)
        recycler.recycle(cell);
    cells.clear();
}

void MListRows::recreateCells()
{
    recycleAll();
    updateGeometry();
    showBetween(top, bottom);
    update();
}

void MListRows::followInsertion(int first)
{
    // A model that reads on while it is shown adds rows that nobody sees yet.
    if (first * rowHeight() >= bottom) {
        updateGeometry();
        return;
    }
    recreateCells();
}

QRectF MListRows::rowRect(int row) const
{
    return QRectF(0, row * rowHeight(), size().width(), rowHeight());
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
    MWidget *cell = cellCreator->createCell(itemModel->index(row, 0), recycler);
    const QString text = MAccessible::textsIn(cell).join(QLatin1Char(' '));
    recycler.recycle(cell);
    return text;
}

int MListRows::rowAt(const QPointF &position) const
{
    const qreal row = rowCount() > 0 && rect().contains(position) ? position.y() / rowHeight() : -1;
    return row < rowCount() ? int(row) : -1;
}

void MListRows::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const int chosen = selectedRow();
    if (pressed >= 0)
        MPaint::panel(painter, rowRect(pressed), *style, style->pressedBackground);
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

void MListRows::setPressed(int row)
{
    if (pressed != row) {
        pressed = row;
        update();
    }
}

bool MListRows::event(QEvent *event)
{
    // A finger that begins to scroll takes the press away.
    if (event->type() == QEvent::UngrabMouse)
        setPressed(-1);
    return MWidget::event(event);
}

void MListRows::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    const int row = selectable ? rowAt(event->pos()) : -1;
    setPressed(row);
    event->setAccepted(row >= 0);
}

void MListRows::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (rowAt(event->pos()) != pressed)
        setPressed(-1);
}

void MListRows::mouseReleaseEvent(QGraphicsSceneMouseEvent *)
{
    const int row = pressed;
    setPressed(-1);
    select(row);
}

void MListRows::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    MWidget::resizeEvent(event);
    showBetween(top, bottom);
}

QSizeF MListRows::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    QSizeF size = MWidget::sizeHint(which, constraint);
    if (which == Qt::MinimumSize || which == Qt::PreferredSize)
        size.setHeight(rowCount() * rowHeight());
    return size;
}
