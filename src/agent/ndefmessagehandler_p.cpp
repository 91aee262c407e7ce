// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/ndefmessagehandler_p.h"

#include "applicationtracker.h"

namespace ConnUi {

ApplicationTracker *NdefMessageHandlerPrivate::applicationTracker = nullptr;
int NdefMessageHandlerPrivate::refCount = 0;

NdefMessageHandlerPrivate::NdefMessageHandlerPrivate()
{
    if (refCount == 0)
        applicationTracker = new ApplicationTracker(nullptr);
    ++refCount;
}

NdefMessageHandlerPrivate::~NdefMessageHandlerPrivate()
{
    if (--refCount >= 1)
        return;
    refCount = 0;
    delete applicationTracker;
    applicationTracker = nullptr;
}

bool NdefMessageHandlerPrivate::isOnSystemBus() const
{
    return busType == QLatin1String("system");
}

QDBusConnection NdefMessageHandlerPrivate::bus() const
{
    return isOnSystemBus() ? QDBusConnection::systemBus() : QDBusConnection::sessionBus();
}

bool NdefMessageHandlerPrivate::isInFront(uint pid)
{
    return pid != 0 && pid == applicationTracker->currentForegroundApplicationPid();
}

} // namespace ConnUi
