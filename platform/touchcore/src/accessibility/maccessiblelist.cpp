// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "accessibility/maccessiblelist_p.h"
#include "accessibility/maccessiblerow_p.h"
#include "list/mlist_p.h"
#include "list/mlistrows_p.h"

MAccessibleList::MAccessibleList(MList *list) : MAccessibleWidget(list, QAccessible::List) {}

MAccessibleList::~MAccessibleList()
{
    for (const auto &[row, id] : known)
        QAccessible::deleteAccessibleInterface(id);
}

MListRows *MAccessibleList::rows() const
{
    return MListPrivate::of(static_cast<const MList *>(object()))->rows;
}

int MAccessibleList::childCount() const
{
    return rows()->rowCount();
}

QAccessibleInterface *MAccessibleList::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto found = known.find(index);
    if (found != known.end())
        return QAccessible::accessibleInterface(found->second);
    auto *row = new MAccessibleRow(rows(), index);
    known.emplace(index, QAccessible::registerAccessibleInterface(row));
    return row;
}

int MAccessibleList::indexOfChild(const QAccessibleInterface *child) const
{
    for (const auto &[row, id] : known)
        if (QAccessible::accessibleInterface(id) == child)
            return row;
    return -1;
}

QAccessibleInterface *MAccessibleList::childAt(int x, int y) const
{
    for (const int row : rows()->rowsInSight())
        if (child(row)->rect().contains(x, y))
            return child(row);
    return nullptr;
}

QAccessibleInterface *MAccessibleList::focusChild() const
{
    if (!widget()->hasFocus())
        return nullptr;
    QAccessibleInterface *selected = child(rows()->selectedRow());
    return selected ? selected : QAccessible::queryAccessibleInterface(object());
}
