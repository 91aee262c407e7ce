// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCFILESENDDIALOG_H
#define CONNUI_NFCFILESENDDIALOG_H

#include <connui_nfc_export.h>

#include <MMessageBox>

namespace ConnUi {

/**
 * Asks the user to touch the other device to share: finishes with M::CancelButton.
 *
 * @image html nfcfilesenddialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcFileSendDialog : public MMessageBox
{
    Q_OBJECT

public:
    /** Asks. */
    NfcFileSendDialog();
};

} // namespace ConnUi

#endif
