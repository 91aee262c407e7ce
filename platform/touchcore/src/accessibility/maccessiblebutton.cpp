// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <MTypes>

#include "accessibility/maccessiblebutton_p.h"

MAccessibleButton::MAccessibleButton(MButton *button) : MAccessibleWidget(button, QAccessible::PushButton) {}

QString MAccessibleButton::ownName() const
{
    return button()->text().section(M::lengthVariantSeparator, 0, 0);
}

QAccessible::Role MAccessibleButton::role() const
{
    return button()->isCheckable() ? QAccessible::CheckBox : MAccessibleWidget::role();
}

QAccessible::State MAccessibleButton::state() const
{
    QAccessible::State state = MAccessibleWidget::state();
    state.checkable = button()->isCheckable();
    state.checked = button()->isChecked();
    return state;
}

QStringList MAccessibleButton::actionNames() const
{
    const QString press = button()->isCheckable() ? toggleAction() : pressAction();
    return QStringList{press} + MAccessibleWidget::actionNames();
}

void MAccessibleButton::doAction(const QString &name)
{
    if (name == pressAction() || name == toggleAction()) {
        // A press may lead to the deletion of this object.
        QMetaObject::invokeMethod(button(), &MButton::click, Qt::QueuedConnection);
        return;
    }
    MAccessibleWidget::doAction(name);
}
