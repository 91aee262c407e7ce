// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/nfcsettingsview_p.h"

#include <chrono>
#include <functional>

#include <QTimer>

#include <MButton>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MMessageBox>
#include <OfflineMode>
#include <PendingAnswer>
#include <SimpleCheckBoxLabel>

#include "nfcenabledialog.h"
#include "nfcpendingcall.h"
#include "nfcsettingsview.h"

namespace ConnUi {

namespace {

constexpr int startTimeout = 20000; // milliseconds
constexpr int inFlightMode = 0;
// For an adapter that waits; one that does not is not waited for here either.
constexpr std::chrono::milliseconds longestWait(2000);

} // namespace

NfcSettingsViewPrivate::NfcSettingsViewPrivate(NfcSettingsView *view, NfcAdapter *adapter)
    : QObject(view)
    , q(view)
    , adapter(adapter)
    , statusTimer(new QTimer(this))
    , offlineMode(new OfflineMode(this))
{
    // A coarse timer may fire half a second early.
    statusTimer->setTimerType(Qt::PreciseTimer);
    connect(statusTimer, &QTimer::timeout, this, &NfcSettingsViewPrivate::statusTimeout);
    if (!adapter)
        return;
    connect(adapter, &NfcAdapter::adapterValid, this, &NfcSettingsViewPrivate::updatePoweredStatus);
    connect(adapter, &NfcAdapter::adapterInvalid, this, &NfcSettingsViewPrivate::updatePoweredStatus);
}

void NfcSettingsViewPrivate::initWidget()
{
    powerSwitch = new MButton;
    powerLabel = new SimpleCheckBoxLabel(powerSwitch, qtTrId("qtn_nfc_fullname"), MButton::switchType);
    updatePoweredStatus();
    // Only now: the first state of the switch is not a wish of the user's.
    if (adapter)
        connect(adapter, &NfcAdapter::propertyChanged, this, &NfcSettingsViewPrivate::adapterPropertyChanged);
    connect(powerSwitch, &MButton::toggled, this, &NfcSettingsViewPrivate::onOffToggled);

    auto *confirmationSwitch = new MButton;
    auto *confirmationLabel =
        new SimpleCheckBoxLabel(confirmationSwitch, qtTrId("qtn_nfc_sett_confs"), MButton::switchType);
    confirmationSwitch->setChecked(adapter && adapter->isConfirmationEnabled());
    connect(confirmationSwitch, &MButton::toggled, this, &NfcSettingsViewPrivate::confirmationToggled);

    auto *layout = new MLayout(q);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    policy->addItem(powerLabel);
    policy->addItem(confirmationLabel);
}

void NfcSettingsViewPrivate::updatePoweredStatus()
{
    powerLabel->setShowProgressIndicator(false);
    whenPowerIsKnown([this](bool powered) {
        if (powerSwitch->isChecked() != powered)
            powerSwitch->setChecked(powered);
    });
}

void NfcSettingsViewPrivate::adapterPropertyChanged(const QString &property)
{
    if (property != QLatin1String("powered"))
        return;
    whenPowerIsKnown([this](bool powered) {
        if (powered && statusTimer->isActive())
            statusTimer->stop();
        updatePoweredStatus();
    });
}

void NfcSettingsViewPrivate::onOffToggled(bool checked)
{
    if (!adapter)
        return;
    whenPowerIsKnown([this, checked](bool powered) {
        // A switch that follows the adapter asks for nothing, nor does one that has been switched back.
        if (powered != checked && powerSwitch->isChecked() == checked)
            requestPower(checked);
    });
}

void NfcSettingsViewPrivate::requestPower(bool checked)
{
    if (!checked) {
        switchPower(false);
        return;
    }
    whenFlightModeIsKnown([this](bool flightMode) {
        if (!powerSwitch->isChecked())
            return;
        if (flightMode)
            askAboutFlightMode();
        else
            switchPower(true);
    });
}

void NfcSettingsViewPrivate::switchPower(bool on)
{
    requestedPowered = on;
    setPowered(on);
    if (on)
        watchStart();
}

void NfcSettingsViewPrivate::askAboutFlightMode()
{
    // A page that does not wait has just learned the mode.
    auto *query = adapter && adapter->isAsynchronous() ? new NfcEnableDialog(true) : new NfcEnableDialog;
    connect(query, &MDialog::finished, this, &NfcSettingsViewPrivate::offlineQueryfinished);
    query->appear(MSceneWindow::DestroyWhenDone);
}

void NfcSettingsViewPrivate::offlineQueryfinished(int result)
{
    if (result == M::CancelButton) {
        powerSwitch->setChecked(false);
        return;
    }
    switchPower(true);
}

void NfcSettingsViewPrivate::confirmationToggled(bool checked)
{
    if (adapter)
        adapter->setConfirmationEnabled(checked);
}

void NfcSettingsViewPrivate::statusTimeout()
{
    statusTimer->stop();
    if (!adapter || !adapter->isValid()) {
        showStartFailQueryDialog();
        updatePoweredStatus();
    } else if (!requestedPowered) {
        updatePoweredStatus();
    } else {
        whenPowerIsKnown([this](bool powered) {
            if (!powered)
                showStartFailQueryDialog();
            updatePoweredStatus();
        });
    }
}

void NfcSettingsViewPrivate::showStartFailQueryDialog()
{
    auto *box = new MMessageBox(qtTrId("qtn_nfc_startfail_tit"), qtTrId("qtn_nfc_fail_txt"), M::OkButton);
    box->appear(MSceneWindow::DestroyWhenDone);
}

void NfcSettingsViewPrivate::whenPowerIsKnown(const std::function<void(bool powered)> &then)
{
    if (!adapter || !adapter->isAsynchronous()) {
        then(adapter && adapter->isPowered(longestWait));
        return;
    }
    NfcPendingCall *call = adapter->isPoweredAsync();
    if (call->isFinished())
        then(call->value().toBool());
    else
        connect(call, &NfcPendingCall::finished, this,
                [then](const NfcPendingCall *answered) { then(answered->value().toBool()); });
}

void NfcSettingsViewPrivate::whenFlightModeIsKnown(const std::function<void(bool flightMode)> &then)
{
    if (!adapter || !adapter->isAsynchronous()) {
        then(offlineMode->currentStatus() == inFlightMode);
        return;
    }
    connect(offlineMode->currentStatusAsync(), &PendingAnswer::finished, this,
            [then](const PendingAnswer *answer) { then(answer->value().toInt() == inFlightMode); });
}

void NfcSettingsViewPrivate::setPowered(bool on)
{
    if (!adapter)
        return;
    if (adapter->isAsynchronous())
        adapter->setPoweredAsync(on);
    else
        adapter->setPowered(on, longestWait);
}

void NfcSettingsViewPrivate::watchStart()
{
    powerLabel->setShowProgressIndicator(true);
    statusTimer->start(startTimeout);
}

} // namespace ConnUi
