// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcpendingcall.h"

#include <QCoreApplication>

#include "bus/nfcpendingcall_p.h"

namespace ConnUi {

NfcPendingCall::NfcPendingCall(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<NfcPendingCallPrivate>())
{}

NfcPendingCall::~NfcPendingCall() = default;

bool NfcPendingCall::isFinished() const
{
    return d->finished;
}

bool NfcPendingCall::isError() const
{
    return d->error.isValid();
}

QDBusError NfcPendingCall::error() const
{
    return d->error;
}

QVariant NfcPendingCall::value() const
{
    return d->value;
}

NfcPendingCall *NfcPendingCallPrivate::create(QObject *parent)
{
    return new NfcPendingCall(parent ? parent : QCoreApplication::instance());
}

NfcPendingCall *NfcPendingCallPrivate::createFinished(QObject *parent, const QVariant &value,
                                                      const QDBusError &error)
{
    NfcPendingCall *call = create(parent);
    finishLater(call, value, error);
    return call;
}

void NfcPendingCallPrivate::finish(const QPointer<NfcPendingCall> &call, const QVariant &value,
                                   const QDBusError &error)
{
    if (!call)
        return;
    call->d->setOutcome(value, error);
    // A slot may delete the call, and an event loop in a slot would, if it was to be deleted by then. The
    // pointer that was handed over may go with the call.
    NfcPendingCall *announced = call;
    const QPointer<NfcPendingCall> left(announced);
    Q_EMIT announced->finished(announced);
    if (left)
        left->deleteLater();
}

void NfcPendingCallPrivate::finishLater(NfcPendingCall *call, const QVariant &value, const QDBusError &error)
{
    call->d->setOutcome(value, error);
    const auto announce = [call] { finish(call, call->value(), call->error()); };
    QMetaObject::invokeMethod(call, announce, Qt::QueuedConnection);
}

QDBusError NfcPendingCallPrivate::noDaemon()
{
    return QDBusError(QDBusError::ServiceUnknown, QStringLiteral("The NFC daemon is not there"));
}

void NfcPendingCallPrivate::setOutcome(const QVariant &newValue, const QDBusError &newError)
{
    finished = true;
    value = newValue;
    error = newError;
}

} // namespace ConnUi
