// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "applicationcreator.h"

#include <QGraphicsLinearLayout>
#include <QModelIndex>

#include <MImageWidget>
#include <MLabel>

void ApplicationCreator::updateCell(const QModelIndex &index, MWidget *cell) const
{
    const QStringList row = index.data().toStringList();
    static_cast<MListItem *>(cell)->setStyleName(QStringLiteral("CommonPanelInverted"));
    auto *icon = new MImageWidget(row.value(0));
    icon->setStyleName(QStringLiteral("CommonMainIcon"));
    auto *name = new MLabel(row.value(1));
    name->setStyleName(QStringLiteral("CommonSingleTitleInverted"));

    auto *layout = new QGraphicsLinearLayout(Qt::Horizontal);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addItem(icon);
    layout->setAlignment(icon, Qt::AlignCenter);
    layout->addItem(name);
    layout->setAlignment(name, Qt::AlignLeft | Qt::AlignVCenter);
    layout->addStretch(1);
    cell->setLayout(layout);
}
