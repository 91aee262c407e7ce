// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCAPPLICATIONSELECTIONDIALOG_P_H
#define CONNUI_NFCAPPLICATIONSELECTIONDIALOG_P_H

#include <QStandardItemModel>
#include <QStringList>

class MList;

namespace ConnUi {

/** The applications of the dialog, a row each; a row's display data is a list of icon, name and application
 * id. */
class NfcApplicationSelectionDialogPrivate : public QStandardItemModel
{
    Q_OBJECT

public:
    enum Field { Icon, Name, Id };

    explicit NfcApplicationSelectionDialogPrivate(const QStringList &applications);

    MList *list = nullptr;
    QString selectedApplication;
};

} // namespace ConnUi

#endif
