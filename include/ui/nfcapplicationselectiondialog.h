// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCAPPLICATIONSELECTIONDIALOG_H
#define CONNUI_NFCAPPLICATIONSELECTIONDIALOG_H

#include <connui_nfc_export.h>

#include <QString>
#include <QStringList>

#include <MDialog>

namespace ConnUi {

class NfcApplicationSelectionDialogPrivate;

/**
 * Lets the user pick the application that gets the content of a tag.
 *
 * Shows a row with icon and name for each application that has a usable desktop file, and an Ok button: the
 * dialog finishes with M::OkButton (0x400) when the user taps on a row or presses the button, and with
 * M::CancelButton when it is dismissed.
 *
 * @image html nfcapplicationselectiondialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcApplicationSelectionDialog : public MDialog
{
    Q_OBJECT
    /** The application id of the row that was selected when the dialog closed; empty until then. */
    Q_PROPERTY(QString selectedApplication READ selectedApplication)

public:
    /**
     * Lists \a applications, given by their ids (base names of desktop files), and selects the row \a
     * selected.
     *
     * Ids without a desktop file are omitted, with the warning "NfcApplicationSelectionDialog: No desktop
     * file provided for '<id>'", and so are those whose desktop file has no name or no icon. \a selected
     * counts the remaining rows; a number beyond the last row selects the first, a negative one selects none.
     *
     * The desktop files of the first hundred, and of those up to the selected one, are read before this
     * returns, those of the others from the event loop while the dialog lives.
     */
    NfcApplicationSelectionDialog(const QStringList &applications, int selected);

    ~NfcApplicationSelectionDialog() override;

    /** Returns the application id of the row that was selected when the dialog closed, empty when none was.
     */
    QString selectedApplication() const;

public Q_SLOTS:
    /** Takes down the selection and closes the dialog with \a result. */
    void done(int result) override;

private:
    NfcApplicationSelectionDialogPrivate *d;
};

} // namespace ConnUi

#endif
