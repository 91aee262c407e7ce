// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcfilesenddialog.h"

#include <MButtonModel>

namespace ConnUi {

NfcFileSendDialog::NfcFileSendDialog()
    : MMessageBox(qtTrId("qtn_nfc_touchtoshare_tit"), qtTrId("qtn_nfc_touchtoshare_img_text"),
                  M::CancelButton)
{
    button(M::CancelButton)->setText(qtTrId("qtn_comm_cancel"));
}

} // namespace ConnUi
