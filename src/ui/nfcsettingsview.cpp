// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcsettingsview.h"

#include "ui/nfcsettingsview_p.h"

namespace ConnUi {

NfcSettingsView::NfcSettingsView(NfcAdapter *adapter, QGraphicsItem *parent)
    : MWidget(parent)
    , d(new NfcSettingsViewPrivate(this, adapter))
{
    d->initWidget();
}

NfcSettingsView::~NfcSettingsView() = default;

} // namespace ConnUi
