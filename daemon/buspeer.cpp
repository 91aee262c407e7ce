// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/buspeer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

BusPeer::BusPeer(const QString &name, QObject *parent)
    : QObject(parent)
    , busName(name)
    , watcher(name, QDBusConnection::systemBus(), QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, &BusPeer::left);
    // Nobody reports a process that had left before it was watched.
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question.setArguments({name});
    auto *presence = new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(question), this);
    connect(presence, &QDBusPendingCallWatcher::finished, this, &BusPeer::checkPresence);
}

QString BusPeer::name() const
{
    return busName;
}

void BusPeer::checkPresence(QDBusPendingCallWatcher *presence)
{
    const QDBusPendingReply<bool> reply = *presence;
    presence->deleteLater();
    if (!reply.isError() && !reply.value())
        Q_EMIT left();
}
