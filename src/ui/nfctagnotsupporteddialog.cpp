// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfctagnotsupporteddialog.h"

#include <QString>

namespace ConnUi {

NfcTagNotSupportedDialog::NfcTagNotSupportedDialog(ErrorType error) : MMessageBox(QString(), M::OkButton)
{
    const bool empty = error == EmptyTagError;
    setTitle(empty ? qtTrId("qtn_nfc_tags_empty_tit") : qtTrId("qtn_nfc_tags_fail_tit"));
    setText(empty ? qtTrId("qtn_nfc_tags_empty_text") : qtTrId("qtn_nfc_tags_fail_text"));
}

} // namespace ConnUi
