// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/daemonowner.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include "bus/busdaemon.h"
#include "bus/nfcservice.h"
#include "bus/whenanswered.h"

namespace ConnUi {

DaemonOwner::DaemonOwner()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    auto *watcher =
        new QDBusServiceWatcher(NfcService::name(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &DaemonOwner::ownerChanged);

    whenAnswered(BusDaemon::owner(bus, NfcService::name()), this, [this](const QDBusPendingCall &answer) {
        const QDBusPendingReply<QString> reply = answer;
        if (reply.isValid() && !hasChanged)
            owner = reply.value();
    });
}

bool DaemonOwner::isSenderOf(const QDBusMessage &message) const
{
    return !owner.isEmpty() && message.service() == owner;
}

void DaemonOwner::ownerChanged(const QString &, const QString &, const QString &newOwner)
{
    owner = newOwner;
    hasChanged = true;
}

} // namespace ConnUi
