// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "dialoghelperwidget.h"

#include <MLayout>
#include <MLinearLayoutPolicy>

namespace ConnUi {

DialogHelperWidget::DialogHelperWidget(QGraphicsWidget *content, QGraphicsItem *parent)
    : MWidgetController(parent)
{
    setStyleName(QStringLiteral("SimpleSheetContent"));
    auto *policy = new MLinearLayoutPolicy(new MLayout(this), Qt::Vertical);
    policy->setSpacing(0);
    policy->addItem(content);
    policy->addStretch();
}

} // namespace ConnUi
