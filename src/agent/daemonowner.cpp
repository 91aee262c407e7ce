// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/daemonowner.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include "bus/nfcservice.h"

namespace ConnUi {

DaemonOwner::DaemonOwner()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    auto *watcher =
        new QDBusServiceWatcher(NfcService::name(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &DaemonOwner::ownerChanged);

    // Not through the connection's interface, which would wait.
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    question << NfcService::name();
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, &DaemonOwner::ownerAnswered);
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

void DaemonOwner::ownerAnswered(QDBusPendingCallWatcher *answer)
{
    answer->deleteLater();
    const QDBusPendingReply<QString> reply = *answer;
    if (reply.isValid() && !hasChanged)
        owner = reply.value();
}

} // namespace ConnUi
