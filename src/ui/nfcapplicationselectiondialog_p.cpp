// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/nfcapplicationselectiondialog_p.h"

#include <QList>
#include <QTimerEvent>

#include <MDesktopEntry>

#include "nfcapplication.h"

namespace ConnUi {

namespace {

// More rows than a screen has, and few enough desktop files to read between two frames.
constexpr qsizetype atOnce = 100;

// Null when the application cannot be shown.
QStandardItem *newRow(const QString &id)
{
    const QString path = NfcApplication(id).desktopFile();
    if (path.isEmpty()) {
        qWarning("NfcApplicationSelectionDialog: No desktop file provided for '%s'",
                 id.toLocal8Bit().constData());
        return nullptr;
    }
    const MDesktopEntry entry(path);
    const QString name = entry.name();
    const QString icon = entry.icon();
    if (name.isEmpty() || icon.isEmpty())
        return nullptr;
    auto *row = new QStandardItem;
    // In the order of Column.
    row->setData(QStringList{icon, name, id}, Qt::DisplayRole);
    return row;
}

} // namespace

NfcApplicationSelectionDialogPrivate::NfcApplicationSelectionDialogPrivate(const QStringList &applications)
    : QStandardItemModel(0, 1)
    , applications(applications)
{
    readSome();
    if (read < applications.size())
        timer.start(0, this);
}

bool NfcApplicationSelectionDialogPrivate::hasRow(int row)
{
    while (row >= rowCount() && read < applications.size())
        readSome();
    return row < rowCount();
}

void NfcApplicationSelectionDialogPrivate::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != timer.timerId()) {
        QStandardItemModel::timerEvent(event);
        return;
    }
    readSome();
    if (read == applications.size())
        timer.stop();
}

void NfcApplicationSelectionDialogPrivate::readSome()
{
    QList<QStandardItem *> rows;
    for (const qsizetype end = qMin(read + atOnce, applications.size()); read < end; ++read)
        if (QStandardItem *row = newRow(applications[read]))
            rows.append(row);
    if (!rows.isEmpty())
        invisibleRootItem()->appendRows(rows);
}

} // namespace ConnUi
