// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/settingswindow.h"

#include <QTimer>

#include <DialogHelperWidget>
#include <NfcAdapter>
#include <NfcSettingsView>

using ConnUi::DialogHelperWidget;
using ConnUi::NfcAdapter;
using ConnUi::NfcSettingsView;
using ConnUi::SimpleSheet;

SettingsWindow::SettingsWindow()
{
    const QString title = qtTrId("qtn_nfc_settings_tit");
    setWindowTitle(title);
    page.setTitle(title);
    page.setRejectButtonText(qtTrId("qtn_comm_command_done"));
    page.appear(this);
    connect(&page, &SimpleSheet::disappeared, this, &SettingsWindow::close);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::enterDisplayEvent()
{
    // Not before the window has been painted.
    if (!adapter)
        QTimer::singleShot(0, this, &SettingsWindow::bind);
}

void SettingsWindow::bind()
{
    if (adapter)
        return;
    adapter.reset(NfcAdapter::defaultAdapter());
    page.setCentralWidget(new DialogHelperWidget(new NfcSettingsView(adapter.get())));
}
