// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLEPROGRESS_P_H
#define MACCESSIBLEPROGRESS_P_H

#include <MProgressIndicator>

#include "accessibility/maccessiblewidget_p.h"

/** A progress bar or a spinner in the accessibility tree. */
class MAccessibleProgress : public MAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit MAccessibleProgress(MProgressIndicator *progress);

    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant minimumValue() const override;
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override;

private:
    MProgressIndicator *progress() const { return static_cast<MProgressIndicator *>(object()); }
    bool isBar() const { return progress()->viewType() == MProgressIndicator::barType; }
};

#endif
