// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCPAIRINGDIALOG_H
#define CONNUI_NFCPAIRINGDIALOG_H

#include <connui_nfc_export.h>

#include <MMessageBox>

namespace ConnUi {

/**
 * Asks whether to pair with the touched Bluetooth device: finishes with M::OkButton or M::CancelButton.
 *
 * @image html nfcpairingdialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcPairingDialog : public MMessageBox
{
    Q_OBJECT

public:
    /** Asks about a device whose Class of Device (Bluetooth Assigned Numbers, baseband) is \a classOfDevice.
     */
    explicit NfcPairingDialog(unsigned int classOfDevice);
};

} // namespace ConnUi

#endif
