// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "accessibility/maccessible_p.h"
#include "accessibility/maccessiblerow_p.h"

MAccessibleRow::MAccessibleRow(MListRows *rows, int row) : rows(rows), row(row) {}

bool MAccessibleRow::isValid() const
{
    return rows && row < rows->rowCount();
}

QObject *MAccessibleRow::object() const
{
    return nullptr;
}

QGraphicsWidget *MAccessibleRow::list() const
{
    QGraphicsWidget *above = rows->parentWidget();
    while (above && !MAccessible::speaks(above))
        above = above->parentWidget();
    return above;
}

QWindow *MAccessibleRow::window() const
{
    return parent()->window();
}

QAccessibleInterface *MAccessibleRow::parent() const
{
    return QAccessible::queryAccessibleInterface(list());
}

int MAccessibleRow::childCount() const
{
    return 0;
}

QAccessibleInterface *MAccessibleRow::child(int) const
{
    return nullptr;
}

int MAccessibleRow::indexOfChild(const QAccessibleInterface *) const
{
    return -1;
}

QAccessibleInterface *MAccessibleRow::childAt(int, int) const
{
    return nullptr;
}

QString MAccessibleRow::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name ? rows->textOf(row) : QString();
}

void MAccessibleRow::setText(QAccessible::Text, const QString &) {}

QRect MAccessibleRow::rect() const
{
    return MAccessible::onScreen(rows, rows->rowRect(row));
}

QAccessible::Role MAccessibleRow::role() const
{
    return QAccessible::ListItem;
}

QAccessible::State MAccessibleRow::state() const
{
    QAccessible::State state = parent()->state();
    const bool selected = rows->selectedRow() == row;
    state.offscreen = !MAccessible::isInSight(rows, rows->rowRect(row));
    state.selectable = rows->isSelectable();
    state.selected = selected;
    state.focused = state.focused && selected;
    return state;
}

void *MAccessibleRow::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList MAccessibleRow::actionNames() const
{
    return rows->isSelectable() ? QStringList{pressAction()} : QStringList();
}

void MAccessibleRow::doAction(const QString &name)
{
    if (name != pressAction() || !rows->isSelectable())
        return;
    // A slot may take this object away.
    MListRows *pressed = rows;
    QMetaObject::invokeMethod(
        pressed, [pressed, row = row] { pressed->click(row); }, Qt::QueuedConnection);
}

QStringList MAccessibleRow::keyBindingsForAction(const QString &) const
{
    return {};
}
