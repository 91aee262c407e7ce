// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "radiostate.h"
#include "settingsstore_p.h"

#include <QCborValue>

namespace ConnUi {

// The radios that are switched off, joined by "|". So a radio that is not mentioned is on.
static constexpr QLatin1String Group("radios");
static constexpr QLatin1String Off("off");

// Anything but a whole number switches nothing off.
static qint64 radiosOff(const QCborMap &group)
{
    const QCborValue off = group.value(Off);
    return off.isInteger() ? off.toInteger() : 0;
}

RadioState::RadioState(int radios, QObject *parent) : QObject(parent), m_radios(radios) {}

bool RadioState::enabled() const
{
    return !(radiosOff(SettingsStore::read(Group)) & m_radios);
}

void RadioState::setEnabled(bool enabled)
{
    SettingsStore::change(Group, [&](QCborMap &group) {
        const qint64 off = radiosOff(group);
        group.insert(Off, enabled ? off & ~qint64(m_radios) : off | m_radios);
    });
}

} // namespace ConnUi
