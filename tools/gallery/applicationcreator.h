// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef APPLICATIONCREATOR_H
#define APPLICATIONCREATOR_H

#include <MAbstractCellCreator>
#include <MListItem>

/** Makes rows that show an icon and a name, as the model keeps them in a list of strings. */
class ApplicationCreator : public MAbstractCellCreator<MListItem>
{
public:
    void updateCell(const QModelIndex &index, MWidget *cell) const override;
};

#endif
