// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_APPLICATIONITEMCREATOR_H
#define CONNUI_APPLICATIONITEMCREATOR_H

#include <QModelIndex>

#include <MAbstractCellCreator>
#include <MListItem>

namespace ConnUi {

/** Draws an application's row: its icon and its name. */
class ApplicationItemCreator : public MAbstractCellCreator<MListItem>
{
public:
    void updateCell(const QModelIndex &index, MWidget *cell) const override;
};

} // namespace ConnUi

#endif
