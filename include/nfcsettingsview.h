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
 * The NFC page of a settings application: a switch for NFC, and one for asking before tags are opened.
 *
 * Switching on in flight mode asks first. Only when that question is dismissed, which ends it with
 * M::CancelButton, does NFC stay off; every other result switches it on. A start that has not led to power
 * after 20 seconds is reported in a message box.
 *
 * Blocking: with an adapter from NfcAdapter::defaultAdapterAsync() the view waits for nobody, and shows what
 * the daemon says when it has said it. With any other adapter it waits for the daemon on the system bus each
 * time it reads or switches the power, at most 2 seconds. Flight mode is asked of the connection manager,
 * which may take 100 ms.
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
