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

    void reveal(int row);

    MListRows *rows;
    MScrollArea *area;
};

#endif
