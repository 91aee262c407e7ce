// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCFILESENDPENDINGDIALOG_H
#define CONNUI_NFCFILESENDPENDINGDIALOG_H

#include <connui_nfc_export.h>

#include <MMessageBox>

namespace ConnUi {

/**
 * Shows that the phone waits for the other device, with a progress indicator: finishes with M::CancelButton.
 *
 * @image html nfcfilesendpendingdialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcFileSendPendingDialog : public MMessageBox
{
    Q_OBJECT

public:
    /** Shows it. */
    NfcFileSendPendingDialog();
};

} // namespace ConnUi

#endif
