// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsScene>

#include <MSceneManager>
#include <MSceneWindow>
#include <MWindow>

#include "accessibility/maccessible_p.h"
#include "accessibility/maccessiblewindow_p.h"
#include "scene/mscenemanager_p.h"

MAccessibleWindow::MAccessibleWindow(MWindow *window) : QAccessibleWidget(window, QAccessible::Window) {}

QList<QGraphicsWidget *> MAccessibleWindow::contents() const
{
    MSceneManager *manager = static_cast<MWindow *>(widget())->sceneManager();
    if (!manager)
        return {};
    if (MSceneWindow *front = MSceneManagerPrivate::of(manager)->front())
        return {front};
    QList<QGraphicsWidget *> found;
    const QList<QGraphicsItem *> items = manager->scene()->items(Qt::AscendingOrder);
    for (QGraphicsItem *item : items) {
        auto *topmost =
            item->parentItem() || !item->isWidget() ? nullptr : static_cast<QGraphicsWidget *>(item);
        if (topmost && topmost->isVisible() && MAccessible::speaks(topmost))
            found.append(topmost);
        else if (topmost && topmost->isVisible())
            found.append(MAccessible::contentsOf(topmost));
    }
    return found;
}

int MAccessibleWindow::childCount() const
{
    return int(contents().size());
}

QAccessibleInterface *MAccessibleWindow::child(int index) const
{
    return QAccessible::queryAccessibleInterface(contents().value(index));
}

int MAccessibleWindow::indexOfChild(const QAccessibleInterface *child) const
{
    const QList<QGraphicsWidget *> all = contents();
    for (int i = 0; i < all.size(); ++i)
        if (all.at(i) == child->object())
            return i;
    return -1;
}

QAccessibleInterface *MAccessibleWindow::childAt(int x, int y) const
{
    for (int i = childCount() - 1; i >= 0; --i) {
        QAccessibleInterface *found = child(i);
        if (!found || !found->rect().contains(x, y))
            continue;
        QAccessibleInterface *inside = found->childAt(x, y);
        return inside ? inside : found;
    }
    return nullptr;
}

QAccessibleInterface *MAccessibleWindow::focusChild() const
{
    for (int i = 0; i < childCount(); ++i)
        if (QAccessibleInterface *found = child(i)->focusChild())
            return found;
    return nullptr;
}

QAccessible::State MAccessibleWindow::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.active = widget()->isActiveWindow();
    // The object in it takes the keys.
    state.focusable = false;
    state.focused = false;
    return state;
}

QStringList MAccessibleWindow::actionNames() const
{
    return {};
}
