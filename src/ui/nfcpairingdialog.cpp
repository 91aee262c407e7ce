// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcpairingdialog.h"

#include <BluetoothDeviceInfoUtils>
#include <MButtonModel>

namespace ConnUi {

NfcPairingDialog::NfcPairingDialog(unsigned int classOfDevice)
    : MMessageBox(qtTrId("qtn_nfc_connect_tit"), qtTrId("qtn_nfc_connect_text"),
                  M::OkButton | M::CancelButton)
{
    setIconId(BluetoothDeviceInfoUtils::codIconId(classOfDevice));
    button(M::OkButton)->setText(qtTrId("qtn_comm_command_yes"));
    button(M::CancelButton)->setText(qtTrId("qtn_comm_command_no"));
}

} // namespace ConnUi
