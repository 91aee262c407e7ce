// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/ndefmessagehandler_p.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QVariant>

#include "applicationtracker.h"
#include "ndefhandlerproxy.h"

namespace ConnUi {

ApplicationTracker *NdefMessageHandlerPrivate::applicationTracker = nullptr;
bool NdefMessageHandlerPrivate::trackerWaits = true;
int NdefMessageHandlerPrivate::refCount = 0;

NdefMessageHandlerPrivate::NdefMessageHandlerPrivate()
{
    if (refCount == 0)
        applicationTracker = new ApplicationTracker(nullptr);
    ++refCount;
}

NdefMessageHandlerPrivate::~NdefMessageHandlerPrivate()
{
    releaseTracker();
}

void NdefMessageHandlerPrivate::releaseTracker()
{
    if (--refCount >= 1)
        return;
    refCount = 0;
    delete applicationTracker;
    applicationTracker = nullptr;
    trackerWaits = true;
}

bool NdefMessageHandlerPrivate::isOnSystemBus() const
{
    return busType == QLatin1String("system");
}

QDBusConnection NdefMessageHandlerPrivate::bus() const
{
    return isOnSystemBus() ? QDBusConnection::systemBus() : QDBusConnection::sessionBus();
}

QDBusPendingCall NdefMessageHandlerPrivate::deliver(const QDBusObjectPath &target,
                                                    const QByteArray &data) const
{
    // QtDBus would log a warning of its own about a message without a path.
    if (path.path().isEmpty())
        return QDBusPendingCall::fromError(
            QDBusError(QDBusError::InvalidObjectPath, QStringLiteral("Object path cannot be empty")));
    QDBusMessage delivery = QDBusMessage::createMethodCall(
        service, path.path(), QLatin1String(NdefHandlerProxy::staticInterfaceName()),
        QStringLiteral("NDEFData"));
    delivery << QVariant::fromValue(target) << data;
    return bus().asyncCall(delivery);
}

bool NdefMessageHandlerPrivate::isInFront(uint pid)
{
    return pid != 0 && applicationTracker && pid == applicationTracker->currentForegroundApplicationPid();
}

} // namespace ConnUi
