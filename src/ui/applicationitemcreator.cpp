// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/applicationitemcreator.h"

#include <QGraphicsLinearLayout>
#include <QStringList>

#include <MImageWidget>
#include <MLabel>

#include "ui/nfcapplicationselectiondialog_p.h"
#include "ui/querywidgets.h"

namespace ConnUi {

namespace {

// A recycled cell still holds the row that it showed before.
void clear(MListItem *item)
{
    QGraphicsLayout *layout = item->layout();
    while (layout && layout->count() > 0) {
        const QGraphicsLayoutItem *shown = layout->itemAt(0);
        layout->removeAt(0);
        delete shown;
    }
}

} // namespace

void ApplicationItemCreator::updateCell(const QModelIndex &index, MWidget *cell) const
{
    using Private = NfcApplicationSelectionDialogPrivate;
    const QStringList row = index.data(Qt::DisplayRole).toStringList();
    auto *item = static_cast<MListItem *>(cell);
    clear(item);
    item->setStyleName(QStringLiteral("CommonPanelInverted"));

    auto *layout = new QGraphicsLinearLayout(Qt::Horizontal);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    MImageWidget *icon = newIconWidget(row.value(Private::Icon));
    icon->setStyleName(QStringLiteral("CommonMainIcon"));
    layout->addItem(icon);
    layout->setAlignment(icon, Qt::AlignCenter);

    auto *name = new MLabel(row.value(Private::Name));
    name->setStyleName(QStringLiteral("CommonSingleTitleInverted"));
    layout->addItem(name);
    layout->setAlignment(name, Qt::AlignLeft | Qt::AlignVCenter);
    layout->addStretch(1);

    item->setLayout(layout);
}

} // namespace ConnUi
