// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLEROW_P_H
#define MACCESSIBLEROW_P_H

#include <QAccessibleInterface>
#include <QPointer>

#include "list/mlistrows_p.h"

/** A row of a list in the accessibility tree. */
class MAccessibleRow : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    MAccessibleRow(MListRows *rows, int row);

    bool isValid() const override;
    QObject *object() const override;
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;

    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString &text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

private:
    QGraphicsWidget *list() const;

    const QPointer<MListRows> rows;
    const int row;
};

#endif
