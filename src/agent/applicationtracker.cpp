// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "applicationtracker.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QPointer>
#include <QString>

#include "agent/ndefmessagehandler_p.h"
#include "applicationtrackerproxy.h"
#include "bus/nfcpendingcall_p.h"
#include "support/whenanswered.h"

namespace ConnUi {

using Support::whenAnswered;

namespace {

ApplicationTrackerProxy *newProxy()
{
    return new ApplicationTrackerProxy(QStringLiteral("org.freedesktop.ohm"),
                                       QStringLiteral("/com/tavix/ApplicationTracker"),
                                       QDBusConnection::systemBus());
}

// Called by name: the reply is judged by its number of arguments, of which only the fourth counts.
QString subscribe()
{
    return QStringLiteral("Subscribe");
}

} // namespace

ApplicationTracker::ApplicationTracker(QObject *parent) : QObject(parent), interface(newProxy())
{
    connectNotifications();
    setSubscription(interface->call(subscribe()));
}

ApplicationTracker::ApplicationTracker(NfcPendingCall &subscription) : interface(newProxy())
{
    connectNotifications();
    whenAnswered(interface->asyncCall(subscribe()), this,
                 [this, pending = QPointer(&subscription)](const QDBusPendingCall &answer) {
                     setSubscription(answer.reply());
                     NfcPendingCallPrivate::finish(pending, {}, answer.error());
                 });
}

ApplicationTracker::~ApplicationTracker()
{
    const bool waits =
        NdefMessageHandlerPrivate::applicationTracker != this || NdefMessageHandlerPrivate::trackerWaits;
    interface->call(waits ? QDBus::Block : QDBus::NoBlock, QStringLiteral("Unsubscribe"), int(0));
    delete interface;
}

NfcPendingCall *ApplicationTracker::subscribeAsync(QObject *holder)
{
    NfcPendingCall *call = NfcPendingCallPrivate::create(holder);
    ApplicationTracker *&shared = NdefMessageHandlerPrivate::applicationTracker;
    if (shared)
        NfcPendingCallPrivate::finishLater(call, {});
    else
        shared = new ApplicationTracker(*call);
    NdefMessageHandlerPrivate::trackerWaits = false;
    ++NdefMessageHandlerPrivate::refCount;
    connect(holder, &QObject::destroyed, &NdefMessageHandlerPrivate::releaseTracker);
    return call;
}

uint ApplicationTracker::currentForegroundApplicationPid() const
{
    return pid;
}

void ApplicationTracker::connectNotifications()
{
    interface->connection().connect(interface->service(), interface->path(), interface->interface(),
                                    QStringLiteral("CurrentActiveApplication"), QStringLiteral("sssu"), this,
                                    SLOT(notify(QString, QString, QString, uint)));
}

void ApplicationTracker::setSubscription(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage || reply.arguments().size() <= 3) {
        qWarning("ApplicationTracker: Unable to subscribe to track applications");
        return;
    }
    pid = reply.arguments().at(3).toUInt();
}

void ApplicationTracker::notify(const QString &, const QString &, const QString &, uint pid)
{
    this->pid = pid;
}

} // namespace ConnUi
