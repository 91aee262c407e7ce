// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/uiagent.h"

#include <limits>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

UiAgent::UiAgent(const QString &service, const QDBusObjectPath &path, QObject *parent)
    : QObject(parent)
    , service(service)
    , path(path)
    , watcher(service, QDBusConnection::systemBus(), QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, &UiAgent::left);
    // Nobody reports a process that had left before it was watched.
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question.setArguments({service});
    auto *presence = new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(question), this);
    connect(presence, &QDBusPendingCallWatcher::finished, this, &UiAgent::checkPresence);
}

bool UiAgent::is(const QString &otherService, const QDBusObjectPath &otherPath) const
{
    return service == otherService && path == otherPath;
}

QString UiAgent::name() const
{
    return QStringLiteral("%1 of %2").arg(path.path(), service);
}

void UiAgent::checkPresence(QDBusPendingCallWatcher *presence)
{
    const QDBusPendingReply<bool> reply = *presence;
    presence->deleteLater();
    if (!reply.isError() && !reply.value())
        Q_EMIT left();
}

QDBusPendingCall UiAgent::call(const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path.path(), QStringLiteral("com.tavix.nfc.UIAgent"), method);
    message.setArguments(arguments);
    constexpr int noTimeLimit = std::numeric_limits<int>::max();
    return QDBusConnection::systemBus().asyncCall(message, noTimeLimit);
}
