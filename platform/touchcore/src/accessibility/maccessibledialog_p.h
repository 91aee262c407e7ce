// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLEDIALOG_P_H
#define MACCESSIBLEDIALOG_P_H

#include <MDialog>

#include "accessibility/maccessiblewidget_p.h"

/** A question in the accessibility tree: its name is its title, its description all that it says below. */
class MAccessibleDialog : public MAccessibleWidget
{
public:
    explicit MAccessibleDialog(MDialog *dialog);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;

protected:
    QString ownName() const override;

private:
    /** Returns the title, then the texts below it. */
    QStringList texts() const;
};

#endif
