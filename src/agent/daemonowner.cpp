// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/daemonowner.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

#include "bus/busdaemon.h"
#include "bus/nfcservice.h"

namespace ConnUi {

DaemonOwner::DaemonOwner()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    auto *watcher =
        new QDBusServiceWatcher(NfcService::name(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &DaemonOwner::ownerChanged);
    firstOwner = BusDaemon::owner(bus, NfcService::name());
}

bool DaemonOwner::isSenderOf(const QDBusMessage &message) const
{
    // The reply itself is looked at: the event that announces it may come behind the owner's first call.
    const bool isFirstKnown = firstOwner.isFinished() && firstOwner.isValid();
    const QString owner = laterOwner.value_or(isFirstKnown ? firstOwner.value() : QString());
    return !owner.isEmpty() && message.service() == owner;
}

void DaemonOwner::ownerChanged(const QString &, const QString &, const QString &newOwner)
{
    laterOwner = newOwner;
}

} // namespace ConnUi
