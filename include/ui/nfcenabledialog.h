// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCENABLEDIALOG_H
#define CONNUI_NFCENABLEDIALOG_H

#include <connui_nfc_export.h>

#include <QString>

#include <MMessageBox>

namespace ConnUi {

/**
 * Asks whether to switch NFC on: finishes with M::YesButton, M::NoButton or, dismissed, M::CancelButton.
 *
 * In flight mode the question mentions it. The constructor without an argument reads the mode once, which may
 * block on the connection manager on the system bus for up to 200 ms.
 *
 * The caller decides about the meaning of a result. NfcSettingsView leaves NFC off for M::CancelButton alone
 * and switches it on for M::NoButton as well.
 *
 * @image html nfcenabledialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcEnableDialog : public MMessageBox
{
    Q_OBJECT

public:
    /** Makes the question for the mode the phone is in now. May wait up to 200 ms. */
    NfcEnableDialog();

    /** Makes the question for a mode that the caller knows, from OfflineMode::currentStatusAsync(). Never
     * waits. */
    explicit NfcEnableDialog(bool inFlightMode);

    /** Returns the question's title for the mode the phone is in now. May wait up to 100 ms. */
    virtual QString title() const;

    /** Returns the question's text for the mode the phone is in now. May wait up to 100 ms. */
    virtual QString text() const;
};

} // namespace ConnUi

#endif
