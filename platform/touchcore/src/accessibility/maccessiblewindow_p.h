// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLEWINDOW_P_H
#define MACCESSIBLEWINDOW_P_H

#include <QAccessibleWidget>

class MWindow;
class QGraphicsWidget;

/** A window in the accessibility tree, with the scene window in front in it. */
class MAccessibleWindow : public QAccessibleWidget
{
public:
    explicit MAccessibleWindow(MWindow *window);

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

    QAccessible::State state() const override;
    QStringList actionNames() const override;

private:
    QList<QGraphicsWidget *> contents() const;
};

#endif
