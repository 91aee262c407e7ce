// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCAPPLICATIONSELECTIONDIALOG_P_H
#define CONNUI_NFCAPPLICATIONSELECTIONDIALOG_P_H

#include <QBasicTimer>
#include <QStandardItemModel>
#include <QString>
#include <QStringList>

class MList;

namespace ConnUi {

/**
 * The applications of the dialog, a row each, whose display data is a list of texts.
 *
 * As many as a screen can show are there at once, the others arrive from the event loop: reading ten thousand
 * desktop files takes longer than a user waits for a dialog.
 */
class NfcApplicationSelectionDialogPrivate : public QStandardItemModel
{
    Q_OBJECT

public:
    /** The entries of a row's display data. */
    enum Column { Icon, Name, Id };

    explicit NfcApplicationSelectionDialogPrivate(const QStringList &applications);

    /** Returns whether there is a row \a row, even when its application had not been read yet. */
    bool hasRow(int row);

    MList *list = nullptr;
    QString selectedApplication;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void readSome();

    QStringList applications;
    qsizetype read = 0;
    QBasicTimer timer;
};

} // namespace ConnUi

#endif
