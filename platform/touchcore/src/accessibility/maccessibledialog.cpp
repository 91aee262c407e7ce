// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "accessibility/maccessible_p.h"
#include "accessibility/maccessibledialog_p.h"
#include "scene/mdialog_p.h"
#include "widgets/mscrollarea_p.h"

MAccessibleDialog::MAccessibleDialog(MDialog *dialog) : MAccessibleWidget(dialog, QAccessible::Dialog) {}

QStringList MAccessibleDialog::texts() const
{
    // A dialog without a title of its own begins with one in its contents.
    return MAccessible::textsIn(MDialogPrivate::of(static_cast<const MDialog *>(object()))->bodyArea);
}

QString MAccessibleDialog::ownName() const
{
    return texts().value(0);
}

QString MAccessibleDialog::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Description)
        return texts().mid(1).join(QLatin1Char('\n'));
    return MAccessibleWidget::text(kind);
}

QAccessible::State MAccessibleDialog::state() const
{
    QAccessible::State state = MAccessibleWidget::state();
    state.modal = true;
    return state;
}
