// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcfilesendpendingdialog.h"

#include <MButtonModel>

namespace ConnUi {

NfcFileSendPendingDialog::NfcFileSendPendingDialog()
    : MMessageBox(qtTrId("qtn_nfc_waiting_dialog_tit"), qtTrId("qtn_nfc_waiting_dialog_text"),
                  M::CancelButton)
{
    setProgressIndicatorVisible(true);
    button(M::CancelButton)->setText(qtTrId("qtn_comm_cancel"));
}

} // namespace ConnUi
