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

class MScrollArea;
class QAbstractItemModel;
class QItemSelectionModel;
struct MStyle;

/** The inside of a list: as high as all rows, but with cells for those only that are seen. */
class MListRows : public MWidget
{
    Q_OBJECT
public:
    MListRows();
    ~MListRows() override;

    void setModel(QAbstractItemModel *model);
    QAbstractItemModel *model() const { return itemModel; }
    QItemSelectionModel *selection() const { return itemSelection; }
    void setCreator(MCellCreator *creator);
    const MCellCreator *creator() const { return cellCreator.get(); }
    void setStyle(const MStyle &style);
    void setFocusShown(bool shown);
    void setSelectable(bool selectable) { this->selectable = selectable; }
    bool isSelectable() const { return selectable; }

    qreal rowHeight() const;
    int rowCount() const;
    /** Selects \a row, if there is one. */
    void select(int row);
    /** Returns the selected row, or -1. */
    int selectedRow() const;

    /** Makes the cells between \a top and \a bottom and lets all others go. */
    void showBetween(qreal top, qreal bottom);

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

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    void setPressed(int row);
    int rowAt(const QPointF &position) const;
    void recycleAll();
    void recreateCells();
    void followInsertion(int first);
    void paintMark(QPainter *painter, const QRectF &row);

    QPointer<QAbstractItemModel> itemModel;
    QItemSelectionModel *itemSelection = nullptr;
    std::unique_ptr<MCellCreator> cellCreator;
    MWidgetRecycler recycler;
    std::map<int, MWidget *> cells; ///< By row
    const MStyle *style = nullptr;
    qreal top = 0;
    qreal bottom = 0;
    int pressed = -1;
    bool selectable = false;
    bool focusShown = false;
};

#endif
