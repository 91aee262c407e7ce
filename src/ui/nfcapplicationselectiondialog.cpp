// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcapplicationselectiondialog.h"

#include <QGraphicsLinearLayout>
#include <QItemSelectionModel>
#include <QString>

#include <MLabel>
#include <MList>
#include <MWidget>

#include "ui/applicationitemcreator.h"
#include "ui/nfcapplicationselectiondialog_p.h"

namespace ConnUi {

NfcApplicationSelectionDialog::NfcApplicationSelectionDialog(const QStringList &applications, int selected)
    : MDialog(qtTrId("qtn_nfc_tags_selapp_tit"), M::OkButton)
    , d(new NfcApplicationSelectionDialogPrivate(applications))
{
    setTitleBarIconId(QStringLiteral("icon-m-service-nfc"));

    auto *explanation = new MLabel(qtTrId("qtn_nfc_tags_handler_nfc"));
    explanation->setStyleName(QStringLiteral("CommonBodyTextInverted"));
    explanation->setWordWrap(true);

    d->list = new MList;
    d->list->setItemModel(d);
    d->list->setCellCreator(new ApplicationItemCreator);
    d->list->setSelectionMode(MList::SingleSelection);
    // The row is selected by then. A user who goes by keys moves the selection, and presses the button.
    connect(d->list, &MList::itemClicked, this, &MDialog::accept);
    d->list->selectItem(d->index(d->hasRow(selected) ? selected : 0, 0));

    auto *central = new MWidget;
    auto *layout = new QGraphicsLinearLayout(Qt::Vertical, central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addItem(explanation);
    layout->addItem(d->list);
    setCentralWidget(central);
}

NfcApplicationSelectionDialog::~NfcApplicationSelectionDialog()
{
    delete d;
}

QString NfcApplicationSelectionDialog::selectedApplication() const
{
    return d->selectedApplication;
}

void NfcApplicationSelectionDialog::done(int result)
{
    const QItemSelectionModel *selection = d->list->selectionModel();
    const QModelIndexList rows = selection ? selection->selectedRows() : QModelIndexList();
    if (!rows.isEmpty() && rows.first().isValid()) {
        const QStringList row = rows.first().data(Qt::DisplayRole).toStringList();
        d->selectedApplication = row.value(NfcApplicationSelectionDialogPrivate::Id);
    }
    MDialog::done(result);
}

} // namespace ConnUi
