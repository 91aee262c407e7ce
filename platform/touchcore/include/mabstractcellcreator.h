// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MABSTRACTCELLCREATOR_H
#define MABSTRACTCELLCREATOR_H

#include <MCellCreator>
#include <MWidgetRecycler>

/** Makes cells of the class \a T, all as large as a fresh one would like to be. A derived class fills them.
 */
template <class T>
class MAbstractCellCreator : public MCellCreator
{
public:
    MAbstractCellCreator() : size(T().effectiveSizeHint(Qt::PreferredSize)) {}

    MWidget *createCell(const QModelIndex &index, MWidgetRecycler &recycler) const override
    {
        T *cell = recycler.take<T>();
        if (!cell)
            cell = new T;
        updateCell(index, cell);
        return cell;
    }

    void updateCell(const QModelIndex &index, MWidget *cell) const override = 0;

    QSizeF cellSize() const override { return size; }

private:
    const QSizeF size;
};

#endif
