// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLISTROWS_P_H
#define MLISTROWS_P_H

#include <map>
#include <MCellCreator>
#include <memory>
#include <MWidget>
#include <MWidgetRecycler>
#include <QPersistentModelIndex>
#include <QPointer>

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
    QAbstractItemModel *model() const { return m_model; }
    QItemSelectionModel *selection() const { return m_selection; }
    void setCreator(MCellCreator *creator);
    const MCellCreator *creator() const { return m_creator.get(); }
    void setStyle(const MStyle &style);
    void setFocusShown(bool shown);
    void setSelectable(bool selectable) { m_selectable = selectable; }
    bool isSelectable() const { return m_selectable; }

    qreal rowHeight() const;
    int rowCount() const;
    /** Selects @p row, if there is one. */
    void select(int row);
    /** Returns the selected row, or -1. */
    int selectedRow() const;

    /** Makes the cells between @p top and @p bottom and lets all others go. */
    void showBetween(qreal top, qreal bottom);

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
    QRectF rowRect(int row) const;
    void recycleAll();
    void renew();
    void insert(int first);
    void paintMark(QPainter *painter, const QRectF &row);

    QPointer<QAbstractItemModel> m_model;
    QItemSelectionModel *m_selection = nullptr;
    std::unique_ptr<MCellCreator> m_creator;
    MWidgetRecycler m_recycler;
    std::map<int, MWidget *> m_cells; ///< By row
    const MStyle *m_style = nullptr;
    qreal m_top = 0;
    qreal m_bottom = 0;
    int m_pressed = -1;
    bool m_selectable = false;
    bool m_focusShown = false;
};

#endif
