// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MCELLCREATOR_H
#define MCELLCREATOR_H

#include <QSizeF>
#include <quenzotouchcore_export.h>

class MWidget;
class MWidgetRecycler;
class QModelIndex;

/** Makes the cells of a list. */
class QUENZOTOUCHCORE_EXPORT MCellCreator
{
public:
    MCellCreator();
    virtual ~MCellCreator();

    /** Returns a cell that shows \a index, from \a recycler where possible. The caller owns it. */
    virtual MWidget *createCell(const QModelIndex &index, MWidgetRecycler &recycler) const = 0;

    /** Fills the empty \a cell with what \a index holds. */
    virtual void updateCell(const QModelIndex &index, MWidget *cell) const = 0;

    /** Returns the size of every cell, in pixels; a list takes the height. */
    virtual QSizeF cellSize() const = 0;

private:
    Q_DISABLE_COPY(MCellCreator)
};

#endif
