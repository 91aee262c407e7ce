// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsScene>
#include <QWidget>

#include <MTypes>

#include "accessibility/maccessible_p.h"
#include "accessibility/maccessiblewidget_p.h"

MAccessibleWidget::MAccessibleWidget(MWidgetController *widget, QAccessible::Role role)
    : QAccessibleObject(widget)
    , ownRole(role)
{}

QWindow *MAccessibleWidget::window() const
{
    const QWidget *view = MAccessible::viewOf(widget());
    return view ? view->window()->windowHandle() : nullptr;
}

QAccessibleInterface *MAccessibleWidget::parent() const
{
    for (QGraphicsWidget *above = widget()->parentWidget(); above; above = above->parentWidget())
        if (MAccessible::speaks(above))
            return QAccessible::queryAccessibleInterface(above);
    return QAccessible::queryAccessibleInterface(MAccessible::viewOf(widget()));
}

int MAccessibleWidget::childCount() const
{
    return int(MAccessible::contentsOf(widget()).size());
}

QAccessibleInterface *MAccessibleWidget::child(int index) const
{
    return QAccessible::queryAccessibleInterface(MAccessible::contentsOf(widget()).value(index));
}

int MAccessibleWidget::indexOfChild(const QAccessibleInterface *child) const
{
    const QList<QGraphicsWidget *> contents = MAccessible::contentsOf(widget());
    for (int i = 0; i < contents.size(); ++i)
        if (contents.at(i) == child->object())
            return i;
    return -1;
}

QAccessibleInterface *MAccessibleWidget::childAt(int x, int y) const
{
    for (int i = childCount() - 1; i >= 0; --i) {
        QAccessibleInterface *found = child(i);
        if (!found || found->state().offscreen || !found->rect().contains(x, y))
            continue;
        QAccessibleInterface *inside = found->childAt(x, y);
        return inside ? inside : found;
    }
    return nullptr;
}

QAccessibleInterface *MAccessibleWidget::focusChild() const
{
    const QGraphicsItem *focused = widget()->scene() ? widget()->scene()->focusItem() : nullptr;
    if (focused == widget())
        return QAccessible::queryAccessibleInterface(widget());
    for (int i = 0; i < childCount(); ++i)
        if (QAccessibleInterface *found = child(i)->focusChild())
            return found;
    return nullptr;
}

QString MAccessibleWidget::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Name)
        return {};
    const QString given = widget()->accessibleName().section(M::lengthVariantSeparator, 0, 0);
    return given.isEmpty() ? ownName() : given;
}

QString MAccessibleWidget::ownName() const
{
    return {};
}

QRect MAccessibleWidget::rect() const
{
    return MAccessible::onScreen(widget(), widget()->rect());
}

QAccessible::Role MAccessibleWidget::role() const
{
    return ownRole;
}

QAccessible::State MAccessibleWidget::state() const
{
    QAccessible::State state;
    const QWidget *view = MAccessible::viewOf(widget());
    state.disabled = !widget()->isEnabled();
    state.invisible = !view || !view->isVisible() || !widget()->isVisible();
    state.offscreen = view && !MAccessible::isInSight(widget(), widget()->rect());
    state.focusable = widget()->focusPolicy() != Qt::NoFocus;
    state.focused = widget()->hasFocus();
    return state;
}

void *MAccessibleWidget::interface_cast(QAccessible::InterfaceType type)
{
    if (type != QAccessible::ActionInterface || actionNames().isEmpty())
        return nullptr;
    return static_cast<QAccessibleActionInterface *>(this);
}

QStringList MAccessibleWidget::actionNames() const
{
    return state().focusable ? QStringList{setFocusAction()} : QStringList();
}

void MAccessibleWidget::doAction(const QString &name)
{
    if (name == setFocusAction() && widget()->isEnabled())
        widget()->setFocus(Qt::TabFocusReason);
}

QStringList MAccessibleWidget::keyBindingsForAction(const QString &) const
{
    return {};
}
