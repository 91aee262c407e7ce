// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCSETTINGSVIEW_H
#define CONNUI_NFCSETTINGSVIEW_H

#include <connui_nfc_export.h>

#include <MWidget>

namespace ConnUi {

class NfcAdapter;
class NfcSettingsViewPrivate;

/**
 * The NFC page of a settings application: a switch for NFC, and a switch for the question before a tag is
 * opened.
 *
 * Switching on in flight mode opens a question first. NFC stays off only when the user dismisses that
 * question, which ends with M::CancelButton; every other result switches it on. If NFC is not on after 20
 * seconds, a message box reports the failure.
 *
 * Blocking: with an adapter from NfcAdapter::defaultAdapterAsync() the view never blocks, and shows the
 * daemon's state when it arrives. With any other adapter it blocks on the daemon on the system bus each time
 * it reads or switches the power, at most 2 seconds. Reading the flight mode from the connection manager may
 * take 100 ms.
 *
 * @image html nfcsettingsview.png width=240px
 */
class CONNUI_NFC_EXPORT NfcSettingsView : public MWidget
{
    Q_OBJECT

public:
    /** Shows and switches \a adapter, which the caller keeps. Without it, null or deleted, the switches do
     * nothing. */
    explicit NfcSettingsView(NfcAdapter *adapter, QGraphicsItem *parent = nullptr);

    ~NfcSettingsView() override;

private:
    NfcSettingsViewPrivate *d;
};

} // namespace ConnUi

#endif
