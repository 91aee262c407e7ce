// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "radiostate.h"

#include <QCborValue>

#include "settingsstore_p.h"

namespace ConnUi {

namespace {

// The radios that are switched off, joined by "|". So a radio that is not mentioned is on.
constexpr QLatin1String settingsGroup("radios");
constexpr QLatin1String offKey("off");

// Anything but a whole number switches nothing off.
qint64 radiosOff(const QCborMap &group)
{
    const QCborValue off = group.value(offKey);
    return off.isInteger() ? off.toInteger() : 0;
}

} // namespace

RadioState::RadioState(int radios, QObject *parent) : QObject(parent), radios(radios) {}

bool RadioState::enabled() const
{
    return !(radiosOff(SettingsStore::read(settingsGroup)) & radios);
}

void RadioState::setEnabled(bool enabled)
{
    SettingsStore::change(
        settingsGroup,
        [&](QCborMap &group) {
            const qint64 off = radiosOff(group);
            group.insert(offKey, enabled ? off & ~qint64(radios) : off | radios);
        });
}

} // namespace ConnUi
