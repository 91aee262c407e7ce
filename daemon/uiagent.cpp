// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/uiagent.h"

#include <limits>

#include <QDBusConnection>
#include <QDBusMessage>

UiAgent::UiAgent(const QString &service, const QDBusObjectPath &path, QObject *parent)
    : QObject(parent)
    , service(service)
    , path(path)
    , watcher(service, QDBusConnection::systemBus(), QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, &UiAgent::left);
}

bool UiAgent::is(const QString &otherService, const QDBusObjectPath &otherPath) const
{
    return service == otherService && path == otherPath;
}

QString UiAgent::name() const
{
    return QStringLiteral("%1 of %2").arg(path.path(), service);
}

QDBusPendingCall UiAgent::call(const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path.path(), QStringLiteral("com.tavix.nfc.UIAgent"), method);
    message.setArguments(arguments);
    constexpr int noTimeLimit = std::numeric_limits<int>::max();
    return QDBusConnection::systemBus().asyncCall(message, noTimeLimit);
}
