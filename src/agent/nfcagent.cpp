// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcagent.h"

#include <memory>

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QString>

#include "agent/daemonowner.h"
#include "agent/dbusnames.h"
#include "agent/nfcagent_p.h"

namespace ConnUi {

namespace {

QString rejectedError()
{
    return QStringLiteral("com.tavix.nfc.UIAgent.Rejected");
}

QString canceledError()
{
    return QStringLiteral("com.tavix.nfc.UIAgent.Canceled");
}

// QtDBus looks the types of an adaptor's method up by the plain names that stand in its signature;
// a method with a type of an unknown name is not exported. Its own types are not known either as long as
// nobody in the process has used them.
void registerArgumentTypes()
{
    qRegisterMetaType<QDBusObjectPath>();
    qRegisterMetaType<QDBusVariant>();
    qRegisterMetaType<NdefMessageHandler>("NdefMessageHandler");
    qDBusRegisterMetaType<NdefMessageHandler>();
    qRegisterMetaType<NdefMessageHandlerList>("NdefMessageHandlerList");
    qDBusRegisterMetaType<NdefMessageHandlerList>();
}

} // namespace

NfcAgent::NfcAgent(QObject *parent) : QObject(parent), d(new NfcAgentPrivate(this))
{
    registerArgumentTypes();
    QDBusConnection::systemBus().registerObject(d->path, this, QDBusConnection::ExportAdaptors);
}

NfcAgent::~NfcAgent()
{
    delete d;
}

QString NfcAgent::path() const
{
    return d->path;
}

bool NfcAgent::isDaemonOnly() const
{
    return d->daemon != nullptr;
}

void NfcAgent::setDaemonOnly(bool daemonOnly)
{
    if (daemonOnly == isDaemonOnly())
        return;
    d->daemon = daemonOnly ? std::make_unique<DaemonOwner>() : nullptr;
}

void NfcAgent::btPairingRequestGranted(const QDBusObjectPath &target)
{
    d->replyRequest(NfcAgentPrivate::BtPairingRequest, target.path());
}

void NfcAgent::btConnectionRequestGranted(const QDBusObjectPath &target)
{
    d->replyRequest(NfcAgentPrivate::BtConnectionRequest, target.path());
}

void NfcAgent::btDisconnectionRequestGranted(const QDBusObjectPath &target)
{
    d->replyRequest(NfcAgentPrivate::BtDisconnectionRequest, target.path());
}

void NfcAgent::dataDeliveryGranted(const QDBusObjectPath &target)
{
    d->replyRequest(NfcAgentPrivate::DataDeliveryRequest, target.path());
}

void NfcAgent::rejectDevice(const QDBusObjectPath &target)
{
    replyError(target, rejectedError());
}

void NfcAgent::replyError(const QDBusObjectPath &target, const QString &error)
{
    QString name = error;
    if (!name.isEmpty() && !DBusNames::isErrorName(name)) {
        qWarning("NfcAgent: '%s' is not a D-Bus error name, replying %s", qUtf8Printable(name),
                 qUtf8Printable(rejectedError()));
        name = rejectedError();
    }
    d->replyRequest(NfcAgentPrivate::AnyRequest, target.path(), QVariant(), name);
}

void NfcAgent::acceptSharing(const QVariant &info)
{
    d->replyRequest(NfcAgentPrivate::SharingRequest, info);
}

void NfcAgent::rejectSharing(const QVariant &info)
{
    d->replyRequest(NfcAgentPrivate::SharingRequest, info, QVariant(), rejectedError());
}

void NfcAgent::cancelSharing(const QVariant &info)
{
    d->replyRequest(NfcAgentPrivate::SharingRequest, info, QVariant(), canceledError());
}

} // namespace ConnUi
