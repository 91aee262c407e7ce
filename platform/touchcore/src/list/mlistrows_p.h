// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLISTROWS_P_H
#define MLISTROWS_P_H

#include <map>
#include <memory>

#include <QPersistentModelIndex>
#include <QPointer>

#include <MCellCreator>
#include <MWidget>
#include <MWidgetRecycler>

class QAbstractItemModel;
class QItemSelectionModel;
struct MStyle;

/**
 * The inside of a list: no higher than the list itself, with a cell for each row that is seen. It moves its
 * cells rather than itself, because no widget is as high as all rows may be.
 */
class MListRows : public MWidget
{
    Q_OBJECT
public:
    MListRows();
    ~MListRows() override;

    void setModel(QAbstractItemModel *model);
    QAbstractItemModel *model() const { return itemModel; }
    QItemSelectionModel *selection() const { return itemSelection.get(); }
    void setCreator(MCellCreator *creator);
    const MCellCreator *creator() const { return cellCreator.get(); }
    void setStyle(const MStyle &style);
    void setFocusShown(bool shown);
    void setSelectable(bool selectable) { this->selectable = selectable; }
    bool isSelectable() const { return selectable; }

    qreal rowHeight() const;
    int rowCount() const;
    /** Returns the height of all rows together. */
    qreal length() const { return rowHeight() * rowCount(); }
    /** Returns whether \a row exists and the model lets it be selected. */
    bool isSelectableRow(int row) const;
    /** Selects \a row, if it can be. A slot may delete the rows. */
    void select(int row);
    /** Does what a tap on \a row does: selects it and says so. A slot may delete the rows. */
    void click(int row);
    /** Returns the selected row, or -1. */
    int selectedRow() const;

    /** Shows the rows from \a position on, which counts from the top of the first one. */
    void scrollTo(qreal position);

    /** Returns the place of \a row in this widget. */
    QRectF rowRect(int row) const;
    /** Returns the numbers of the rows that can be seen. */
    QList<int> rowsInSight() const;
    /** Returns what the cell of \a row says, all of its labels in a line. */
    QString textOf(int row);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

Q_SIGNALS:
    /** Another row was selected. */
    void selected(int row);
    /** A row was pressed and let go, whether it had been selected or not. */
    void clicked(const QModelIndex &index);

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    void setPressed(const QModelIndex &index);
    int rowAt(const QPointF &position) const;
    void showCells();
    MWidget *newCell(int row);
    MWidget *cellAt(int row);
    void recycleCells(int first, int last);
    void readOn();
    void recreateCells();
    void recreateRange(const QModelIndex &first, const QModelIndex &last);
    void followInsertion(int first);
    void paintMark(QPainter *painter, const QRectF &row);

    QPointer<QAbstractItemModel> itemModel;
    // The caller that lets it select something keeps it until its signals are through.
    std::shared_ptr<QItemSelectionModel> itemSelection;
    std::unique_ptr<MCellCreator> cellCreator;
    MWidgetRecycler recycler;
    std::map<int, MWidget *> cells; ///< By row
    const MStyle *style = nullptr;
    qreal top = 0; ///< Of what is seen, from the top of the first row
    QPersistentModelIndex pressed;
    int filledRow = -1; ///< The row whose cell is being made
    bool selectable = false;
    bool focusShown = false;
};

#endif
