// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/sessionlock.h"

#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "support/whenanswered.h"

namespace {

constexpr QLatin1String managerService("org.freedesktop.login1");
constexpr QLatin1String managerPath("/org/freedesktop/login1");
constexpr QLatin1String managerInterface("org.freedesktop.login1.Manager");
constexpr QLatin1String sessionInterface("org.freedesktop.login1.Session");
constexpr QLatin1String lockedHint("LockedHint");
constexpr QLatin1String saverService("org.freedesktop.ScreenSaver");
constexpr QLatin1String saverPath("/org/freedesktop/ScreenSaver");
constexpr QLatin1String properties("org.freedesktop.DBus.Properties");

// Hands the answer, if there is one, to answered: neither service is started for this.
template <typename Value>
void ask(const QDBusConnection &bus, QDBusMessage message, const QVariantList &arguments, QObject *context,
         const std::function<void(const Value &)> &answered)
{
    message.setArguments(arguments);
    message.setAutoStartService(false);
    Support::whenAnswered(bus.asyncCall(message), context, [answered](const QDBusPendingReply<Value> &reply) {
        if (!reply.isError())
            answered(reply.value());
    });
}

} // namespace

SessionLock::SessionLock(QObject *parent)
    : QObject(parent)
    , manager(managerService, QDBusConnection::systemBus())
    , screenSaver(saverService, QDBusConnection::sessionBus())
{
    QDBusConnection::sessionBus().connect(saverService, saverPath, saverService,
                                          QStringLiteral("ActiveChanged"), this, SLOT(setSaver(bool)));
    watch(manager, &SessionLock::askManager, &SessionLock::forgetManager);
    watch(screenSaver, &SessionLock::askSaver, &SessionLock::forgetSaver);
}

bool SessionLock::isLocked() const
{
    return hint || saver;
}

void SessionLock::watch(QDBusServiceWatcher &watcher, void (SessionLock::*ask)(),
                        void (SessionLock::*forget)())
{
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, this, ask);
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, forget);
    std::invoke(ask, this);
}

void SessionLock::askManager()
{
    ask<QDBusObjectPath>(
        QDBusConnection::systemBus(),
        QDBusMessage::createMethodCall(managerService, managerPath, managerInterface,
                                       QStringLiteral("GetSession")),
        {QStringLiteral("auto")}, this, [this](const QDBusObjectPath &session) { follow(session); });
}

void SessionLock::follow(const QDBusObjectPath &session)
{
    // A second connection of the same would only hear the same again.
    QDBusConnection::systemBus().connect(managerService, session.path(), properties,
                                         QStringLiteral("PropertiesChanged"), this,
                                         SLOT(readHint(QString, QVariantMap)));
    ask<QDBusVariant>(
        QDBusConnection::systemBus(),
        QDBusMessage::createMethodCall(managerService, session.path(), properties, QStringLiteral("Get")),
        {QString(sessionInterface), QString(lockedHint)}, this,
        [this](const QDBusVariant &locked) { set(&hint, locked.variant().toBool()); });
}

void SessionLock::readHint(const QString &interface, const QVariantMap &now)
{
    if (interface == sessionInterface && now.contains(lockedHint))
        set(&hint, now.value(lockedHint).toBool());
}

void SessionLock::forgetManager()
{
    set(&hint, false);
}

void SessionLock::askSaver()
{
    ask<bool>(
        QDBusConnection::sessionBus(),
        QDBusMessage::createMethodCall(saverService, saverPath, saverService, QStringLiteral("GetActive")),
        {}, this, [this](bool active) { setSaver(active); });
}

void SessionLock::setSaver(bool active)
{
    set(&saver, active);
}

void SessionLock::forgetSaver()
{
    set(&saver, false);
}

void SessionLock::set(bool *state, bool now)
{
    const bool wasLocked = isLocked();
    *state = now;
    if (isLocked() != wasLocked)
        Q_EMIT changed(isLocked());
}
