// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLIST_H
#define MLIST_H

#include <memory>

#include <MWidgetController>

class MCellCreator;
class MListPrivate;
class QAbstractItemModel;
class QItemSelectionModel;
class QModelIndex;

/** The rows of a model below one another. Only the cells that are seen exist, so that a model may be of any
 * length. */
class QUENZOTOUCHCORE_EXPORT MList : public MWidgetController
{
    Q_OBJECT
    Q_PROPERTY(SelectionMode selectionMode READ selectionMode WRITE setSelectionMode)
public:
    /** The effect of a touch on a row. */
    enum SelectionMode {
        NoSelection = 0,     ///< Nothing
        SingleSelection = 1, ///< It selects the row instead of any other
    };
    Q_ENUM(SelectionMode)

    /** Makes an empty list inside \a parent, which then owns it. */
    explicit MList(QGraphicsItem *parent = nullptr);
    ~MList() override;

    /** Returns the model, or null. */
    QAbstractItemModel *itemModel() const;
    /**
     * Shows the rows of \a model, which stays with its owner, with nothing selected. Rows that the model
     * holds back are fetched when the last one comes into sight.
     */
    void setItemModel(QAbstractItemModel *model);

    /** Returns the creator of the cells, or null. */
    const MCellCreator *cellCreator() const;
    /** Lets \a creator make the cells. The list owns it and deletes the earlier one. */
    void setCellCreator(MCellCreator *creator);

    /** Returns the effect of a touch, NoSelection by default. */
    SelectionMode selectionMode() const;
    /** Sets the effect of a touch. */
    void setSelectionMode(SelectionMode mode);

    /** Returns the selection; null until there is a model. */
    QItemSelectionModel *selectionModel() const;

    /** Selects the row of \a index instead of any other and brings it into sight. An invalid index does
     * nothing. */
    void selectItem(const QModelIndex &index);

Q_SIGNALS:
    /**
     * The user has tapped on the row of \a index, whether it was selected before or not. A slot may delete
     * the list.
     */
    void itemClicked(const QModelIndex &index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void styleChanged() override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    friend class MListPrivate;
    const std::unique_ptr<MListPrivate> d;
};

#endif
