// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLEWIDGET_P_H
#define MACCESSIBLEWIDGET_P_H

#include <QAccessibleObject>

#include <MWidgetController>

/** A widget of this toolkit in the accessibility tree; by itself a picture, a panel with a name, or a page.
 */
class MAccessibleWidget : public QAccessibleObject, public QAccessibleActionInterface
{
public:
    MAccessibleWidget(MWidgetController *widget, QAccessible::Role role);

    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

protected:
    MWidgetController *widget() const { return static_cast<MWidgetController *>(object()); }

    /** Returns the name where nobody has set one. None here. */
    virtual QString ownName() const;

private:
    const QAccessible::Role ownRole;
};

#endif
