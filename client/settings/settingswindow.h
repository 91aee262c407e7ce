// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_SETTINGSWINDOW_H
#define CONNUI_CLIENT_SETTINGSWINDOW_H

#include <memory>

#include <MWindow>
#include <SimpleSheet>

namespace ConnUi {
class NfcAdapter;
} // namespace ConnUi

/**
 * The NFC settings in a window of their own.
 *
 * It begins to bind to the daemon when the window is on the screen, and shows the settings when the daemon
 * has answered, or after a moment.
 */
class SettingsWindow : public MWindow
{
    Q_OBJECT

public:
    SettingsWindow();
    ~SettingsWindow() override;

protected:
    void enterDisplayEvent() override;

private:
    void bind();
    void showSettings();

    // The page's view uses the adapter until it goes.
    std::unique_ptr<ConnUi::NfcAdapter> adapter;
    ConnUi::SimpleSheet page;
    bool showsSettings = false;
};

#endif
