// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcapplicationselectiondialog_p.h"

#include <MDesktopEntry>

#include "applicationdesktopfile.h"

namespace ConnUi {

NfcApplicationSelectionDialogPrivate::NfcApplicationSelectionDialogPrivate(const QStringList &applications)
    : QStandardItemModel(0, 1)
{
    for (const QString &id : applications) {
        const QString path = applicationDesktopFile(id);
        if (path.isEmpty()) {
            qWarning("NfcApplicationSelectionDialog: No desktop file provided for '%s'",
                     id.toLocal8Bit().constData());
            continue;
        }
        const MDesktopEntry entry(path);
        const QString name = entry.name();
        const QString icon = entry.icon();
        if (name.isEmpty() || icon.isEmpty())
            continue;
        auto *row = new QStandardItem;
        row->setData(QStringList{icon, name, id}, Qt::DisplayRole);
        appendRow(row);
    }
}

} // namespace ConnUi
