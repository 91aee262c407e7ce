// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcadaptertype.h"

#include <QString>

#include <NfcAdapter>
#include <NfcPendingCall>

using ConnUi::NfcAdapter;
using ConnUi::NfcPendingCall;

NfcAdapterType::NfcAdapterType(QObject *parent) : QObject(parent), d(NfcAdapter::defaultAdapterAsync())
{
    connect(d.get(), &NfcAdapter::adapterValid, this, &NfcAdapterType::follow);
    connect(d.get(), &NfcAdapter::adapterInvalid, this, &NfcAdapterType::follow);
    connect(d.get(), &NfcAdapter::propertyChanged, this, &NfcAdapterType::findPower);
    findPower();
}

NfcAdapterType::~NfcAdapterType() = default;

bool NfcAdapterType::isAvailable() const
{
    return d->isValid();
}

bool NfcAdapterType::isPowered() const
{
    return powered;
}

void NfcAdapterType::setPowered(bool on)
{
    d->setPoweredAsync(on);
}

bool NfcAdapterType::isConfirmationEnabled() const
{
    return d->isConfirmationEnabled();
}

void NfcAdapterType::setConfirmationEnabled(bool enabled)
{
    if (enabled == isConfirmationEnabled())
        return;
    d->setConfirmationEnabled(enabled);
    Q_EMIT confirmationEnabledChanged();
}

void NfcAdapterType::follow()
{
    findPower();
    Q_EMIT availableChanged();
}

void NfcAdapterType::findPower()
{
    const NfcPendingCall *call = d->isPoweredAsync();
    connect(call, &NfcPendingCall::finished, this,
            [this](const NfcPendingCall *answered) { update(answered->value().toBool()); });
}

void NfcAdapterType::update(bool isOn)
{
    if (powered == isOn)
        return;
    powered = isOn;
    Q_EMIT poweredChanged();
}
