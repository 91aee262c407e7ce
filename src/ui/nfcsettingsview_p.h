// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCSETTINGSVIEW_P_H
#define CONNUI_NFCSETTINGSVIEW_P_H

#include <functional>

#include <QObject>
#include <QPointer>
#include <QString>

#include "nfcadapter.h"

class MButton;
class QTimer;

namespace ConnUi {

class NfcSettingsView;
class OfflineMode;
class SimpleCheckBoxLabel;

class NfcSettingsViewPrivate : public QObject
{
    Q_OBJECT

public:
    NfcSettingsViewPrivate(NfcSettingsView *view, NfcAdapter *adapter);

    void initWidget();

    NfcSettingsView *q;
    QPointer<NfcAdapter> adapter;
    MButton *powerSwitch = nullptr;
    QTimer *statusTimer;
    bool requestedPowered = true;
    OfflineMode *offlineMode;
    SimpleCheckBoxLabel *powerLabel = nullptr;

private Q_SLOTS:
    void updatePoweredStatus();
    void adapterPropertyChanged(const QString &property);
    void onOffToggled(bool checked);
    void offlineQueryfinished(int result);
    void confirmationToggled(bool checked);
    void statusTimeout();
    void showStartFailQueryDialog();

private:
    /** Calls \a then with whether the adapter is switched on: at once, or when the daemon has replied. */
    void whenPowerIsKnown(const std::function<void(bool powered)> &then);
    void setPowered(bool on);
    /** Calls \a then with whether the device is in flight mode: at once, or when the connection manager has
     * replied. */
    void whenFlightModeIsKnown(const std::function<void(bool flightMode)> &then);
    void requestPower(bool checked);
    void switchPower(bool on);
    void askAboutFlightMode();
    void watchStart();
};

} // namespace ConnUi

#endif
