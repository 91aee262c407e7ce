// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLELIST_P_H
#define MACCESSIBLELIST_P_H

#include <map>

#include <MList>

#include "accessibility/maccessiblewidget_p.h"

class MListRows;

/** A list in the accessibility tree. Its children are all rows, whether they are in sight or not. */
class MAccessibleList : public MAccessibleWidget
{
public:
    explicit MAccessibleList(MList *list);
    ~MAccessibleList() override;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

private:
    MListRows *rows() const;

    mutable std::map<int, QAccessible::Id> known; ///< The rows that somebody has asked for
};

#endif
