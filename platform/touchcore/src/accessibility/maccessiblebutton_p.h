// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLEBUTTON_P_H
#define MACCESSIBLEBUTTON_P_H

#include <MButton>

#include "accessibility/maccessiblewidget_p.h"

/** A button, or a switch, in the accessibility tree. */
class MAccessibleButton : public MAccessibleWidget
{
public:
    explicit MAccessibleButton(MButton *button);

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;

protected:
    QString ownName() const override;

private:
    MButton *button() const { return static_cast<MButton *>(object()); }
};

#endif
