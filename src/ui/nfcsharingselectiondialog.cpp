// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcsharingselectiondialog.h"

#include <MButtonModel>

namespace ConnUi {

NfcSharingSelectionDialog::NfcSharingSelectionDialog(SelectionType type)
    : MMessageBox(qtTrId("qtn_nfc_selecttoshare_tit"), M::OkButton | M::CancelButton)
{
    setText(type == ImageSelection ? qtTrId("qtn_nfc_selecttoshare_img_text")
                                   : qtTrId("qtn_nfc_selecttoshare_contact_text"));
    button(M::OkButton)->setText(qtTrId("qtn_comm_command_continue"));
}

} // namespace ConnUi
