// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcenabledialog.h"

#include <QString>

#include <OfflineMode>

namespace ConnUi {

namespace {

bool isInFlightMode()
{
    return OfflineMode().currentStatus() == 0;
}

QString titleFor(bool inFlightMode)
{
    return inFlightMode ? qtTrId("qtn_nfc_start_flightmode_tit") : qtTrId("qtn_nfc_enablenfc_tit");
}

QString textFor(bool inFlightMode)
{
    return inFlightMode ? qtTrId("qtn_nfc_start_flightmode") : qtTrId("qtn_nfc_enablenfc_text");
}

} // namespace

NfcEnableDialog::NfcEnableDialog() : MMessageBox(QString(), M::YesButton | M::NoButton)
{
    setTitle(NfcEnableDialog::title());
    setText(NfcEnableDialog::text());
}

NfcEnableDialog::NfcEnableDialog(bool inFlightMode) : MMessageBox(QString(), M::YesButton | M::NoButton)
{
    setTitle(titleFor(inFlightMode));
    setText(textFor(inFlightMode));
}

QString NfcEnableDialog::title() const
{
    return titleFor(isInFlightMode());
}

QString NfcEnableDialog::text() const
{
    return textFor(isInFlightMode());
}

} // namespace ConnUi
