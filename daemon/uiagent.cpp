// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/uiagent.h"

#include <limits>

#include <QDBusConnection>
#include <QDBusMessage>

UiAgent::UiAgent(const QString &service, const QDBusObjectPath &path, uint user, QObject *parent)
    : QObject(parent)
    , process(service)
    , path(path)
    , owner(user)
{
    connect(&process, &BusPeer::left, this, &UiAgent::left);
}

bool UiAgent::is(const QString &otherService, const QDBusObjectPath &otherPath) const
{
    return process.name() == otherService && path == otherPath;
}

QString UiAgent::name() const
{
    return QStringLiteral("%1 of %2").arg(path.path(), process.name());
}

QString UiAgent::busName() const
{
    return process.name();
}

uint UiAgent::user() const
{
    return owner;
}

QDBusPendingCall UiAgent::call(const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(process.name(), path.path(),
                                                          QStringLiteral("com.tavix.nfc.UIAgent"), method);
    message.setArguments(arguments);
    constexpr int noTimeLimit = std::numeric_limits<int>::max();
    return QDBusConnection::systemBus().asyncCall(message, noTimeLimit);
}
