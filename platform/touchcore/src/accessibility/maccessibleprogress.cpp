// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "accessibility/maccessibleprogress_p.h"

MAccessibleProgress::MAccessibleProgress(MProgressIndicator *progress)
    : MAccessibleWidget(progress, QAccessible::ProgressBar)
{}

QAccessible::State MAccessibleProgress::state() const
{
    QAccessible::State state = MAccessibleWidget::state();
    state.readOnly = true;
    state.busy = !isBar();
    return state;
}

void *MAccessibleProgress::interface_cast(QAccessible::InterfaceType type)
{
    // How far a spinner has got nobody knows.
    if (type == QAccessible::ValueInterface)
        return isBar() ? static_cast<QAccessibleValueInterface *>(this) : nullptr;
    return MAccessibleWidget::interface_cast(type);
}

QVariant MAccessibleProgress::currentValue() const
{
    return progress()->value();
}

void MAccessibleProgress::setCurrentValue(const QVariant &) {}

QVariant MAccessibleProgress::minimumValue() const
{
    return progress()->minimum();
}

QVariant MAccessibleProgress::maximumValue() const
{
    return progress()->maximum();
}

QVariant MAccessibleProgress::minimumStepSize() const
{
    return 1;
}
