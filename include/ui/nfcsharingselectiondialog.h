// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCSHARINGSELECTIONDIALOG_H
#define CONNUI_NFCSHARINGSELECTIONDIALOG_H

#include <connui_nfc_export.h>

#include <MMessageBox>

namespace ConnUi {

/**
 * Asks the user to go on and pick what to share: finishes with M::OkButton or M::CancelButton.
 *
 * @image html nfcsharingselectiondialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcSharingSelectionDialog : public MMessageBox
{
    Q_OBJECT

public:
    /** The objects to pick from. */
    enum SelectionType : int {
        ImageSelection = 0,  /**< A picture. */
        ContactSelection = 1 /**< A contact. */
    };
    Q_ENUM(SelectionType)

    /** Asks for \a type; any value but ImageSelection asks for a contact. */
    explicit NfcSharingSelectionDialog(SelectionType type);
};

} // namespace ConnUi

#endif
