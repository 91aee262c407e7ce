// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLIST_P_H
#define MLIST_P_H

#include <MList>

class MListArea;
class MListRows;

class MListPrivate
{
public:
    explicit MListPrivate(MList *list);

    static MListPrivate *of(const MList *list) { return list->d.get(); }

    void tellSelected(int row);
    /** Brings \a row into sight, where it stays until the user scrolls. */
    void reveal(int row);
    /** Returns the next row from \a row on in steps of \a step that can be selected, or -1. */
    int selectableFrom(int row, int step) const;
    /** Returns the row that \a key leads to, or -1. */
    int rowAtKey(int key) const;

    MList *const q;
    MListRows *rows;
    MListArea *area;
    int revealed = -1; ///< The row that stays in sight, or -1
};

#endif
