// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLIST_P_H
#define MLIST_P_H

#include <MList>

class MListRows;
class MScrollArea;

class MListPrivate
{
public:
    explicit MListPrivate(MList *list);

    static MListPrivate *of(const MList *list) { return list->d.get(); }

    void tellSelected(int row);
    void reveal(int row);

    MList *const q;
    MListRows *rows;
    MScrollArea *area;
};

#endif
