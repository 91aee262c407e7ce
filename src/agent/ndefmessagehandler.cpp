// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefmessagehandler.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QPointer>
#include <QVariant>

#include "agent/dbusnames.h"
#include "agent/ndefmessagehandler_p.h"
#include "bus/busdaemon.h"
#include "bus/nfcpendingcall_p.h"
#include "ndefhandlerproxy.h"
#include "support/whenanswered.h"

namespace ConnUi {

using Support::whenAnswered;

namespace {

QDBusError invalidService(const QString &service)
{
    return QDBusError(QDBusError::InvalidService, QStringLiteral("Invalid service name: %1").arg(service));
}

void warnFailedDelivery(const QDBusError &error)
{
    qWarning("NfcAgentTagReadRequest: Calling NDEFData() for the handler fails: %s %s",
             qUtf8Printable(error.name()), qUtf8Printable(error.message()));
}

// Sent without a proxy: making one asks for the owner of the service, and nothing may block any more now that
// the handler has the data.
void launch(const QString &service)
{
    QDBusConnection::sessionBus().send(
        QDBusMessage::createMethodCall(service, QStringLiteral("/org/orvik/m"),
                                       QStringLiteral("com.tavix.MApplicationIf"), QStringLiteral("launch")));
}

} // namespace

NdefMessageHandler::NdefMessageHandler() : d(new NdefMessageHandlerPrivate) {}

NdefMessageHandler::NdefMessageHandler(const QString &applicationId, const QString &busType,
                                       const QString &service, const QDBusObjectPath &path)
    : NdefMessageHandler()
{
    d->applicationId = applicationId;
    d->busType = busType;
    d->service = service;
    d->path = path;
}

NdefMessageHandler::NdefMessageHandler(const NdefMessageHandler &other) : NdefMessageHandler()
{
    *this = other;
}

// Strings may be assigned to themselves.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
NdefMessageHandler &NdefMessageHandler::operator=(const NdefMessageHandler &other)
{
    d->busType = other.d->busType;
    d->service = other.d->service;
    // A path object has been checked when it was made, and may well be empty.
    d->path = other.d->path;
    d->applicationId = other.d->applicationId;
    return *this;
}

NdefMessageHandler::~NdefMessageHandler()
{
    delete d;
}

bool NdefMessageHandler::operator==(const NdefMessageHandler &other) const
{
    return d->busType == other.d->busType && d->service == other.d->service && d->path == other.d->path;
}

QString NdefMessageHandler::busType() const
{
    return d->busType;
}

QString NdefMessageHandler::service() const
{
    return d->service;
}

QDBusObjectPath NdefMessageHandler::path() const
{
    return d->path;
}

QString NdefMessageHandler::applicationId() const
{
    return d->applicationId;
}

bool NdefMessageHandler::isRunningOnForeground() const
{
    QDBusPendingReply<uint> pid = BusDaemon::processId(d->bus(), d->service);
    pid.waitForFinished();
    return pid.isValid() && NdefMessageHandlerPrivate::isInFront(pid.value());
}

void NdefMessageHandler::forwardData(const QDBusObjectPath &target, const QByteArray &data)
{
    // The daemon may name anything; an invalid name would end the process inside libdbus.
    if (!DBusNames::isBusName(d->service)) {
        warnFailedDelivery(invalidService(d->service));
        return;
    }

    NdefHandlerProxy handler(d->service, d->path.path(), d->bus());
    QDBusPendingReply<> reply = handler.NDEFData(target, data);
    reply.waitForFinished();
    if (reply.isError())
        warnFailedDelivery(reply.error());
    if (d->isOnSystemBus())
        return;

    launch(d->service);
}

NfcPendingCall *NdefMessageHandler::isRunningOnForegroundAsync() const
{
    NfcPendingCall *call = NfcPendingCallPrivate::create();
    whenAnswered(BusDaemon::processId(d->bus(), d->service), call, [call](const QDBusPendingCall &answer) {
        const QDBusPendingReply<uint> pid = answer;
        const bool inFront = pid.isValid() && NdefMessageHandlerPrivate::isInFront(pid.value());
        NfcPendingCallPrivate::finish(call, inFront, answer.error());
    });
    return call;
}

NfcPendingCall *NdefMessageHandler::forwardDataAsync(const QDBusObjectPath &target,
                                                     const QByteArray &data) const
{
    NfcPendingCall *call = NfcPendingCallPrivate::create();
    if (!DBusNames::isBusName(d->service)) {
        const QDBusError error = invalidService(d->service);
        warnFailedDelivery(error);
        NfcPendingCallPrivate::finishLater(call, {}, error);
        return call;
    }

    // The data is on its way whoever waits: the application is launched even when nobody does any more.
    whenAnswered(d->deliver(target, data), QCoreApplication::instance(),
                 [call = QPointer(call), service = d->service,
                  isApplication = !d->isOnSystemBus()](const QDBusPendingCall &answer) {
                     if (answer.isError())
                         warnFailedDelivery(answer.error());
                     if (isApplication)
                         launch(service);
                     NfcPendingCallPrivate::finish(call, {}, answer.error());
                 });
    return call;
}

} // namespace ConnUi

QDBusArgument &operator<<(QDBusArgument &argument, const ConnUi::NdefMessageHandler &handler)
{
    argument.beginStructure();
    argument << handler.busType() << handler.service() << handler.path() << handler.applicationId();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ConnUi::NdefMessageHandler &handler)
{
    QString busType;
    QString service;
    QDBusObjectPath path;
    QString applicationId;
    argument.beginStructure();
    argument >> busType >> service >> path >> applicationId;
    argument.endStructure();
    handler = ConnUi::NdefMessageHandler(applicationId, busType, service, path);
    return argument;
}
