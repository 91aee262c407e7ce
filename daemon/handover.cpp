// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/handover.h"

#include <utility>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariant>

#include "daemon/buspeer.h"

Handover::Handover(const QString &carrier, const Requestor &requestor, QObject *parent)
    : QObject(parent)
    , carrierName(carrier)
    , requestor(requestor)
{
    if (requestor.service.isEmpty())
        return;
    const auto *process = new BusPeer(requestor.service, this);
    connect(process, &BusPeer::left, this, [this] { fail(QStringLiteral("The requestor has left")); });
}

QString Handover::carrier() const
{
    return carrierName;
}

void Handover::begin()
{
    reportToRequestor(QStringLiteral("HandoverStarted"));
    Q_EMIT started();
}

void Handover::selectCarrier()
{
    reportToRequestor(QStringLiteral("HandoverCarrierSelected"), {carrierName});
    Q_EMIT carrierSelected(carrierName);
}

void Handover::complete(const BluetoothPeer &peer)
{
    if (std::exchange(isOver, true))
        return;
    const QDBusVariant data(QVariant::fromValue(peer));
    reportToRequestor(QStringLiteral("HandoverCompleted"), {carrierName, QVariant::fromValue(data)});
    Q_EMIT completed(carrierName, data);
}

void Handover::fail(const QString &reason)
{
    // The requestor may leave at any time.
    if (std::exchange(isOver, true))
        return;
    reportToRequestor(QStringLiteral("HandoverFailed"), {reason});
    Q_EMIT failed(reason);
}

void Handover::reportToRequestor(const QString &method, const QVariantList &arguments) const
{
    if (requestor.service.isEmpty())
        return;
    QDBusMessage message = QDBusMessage::createMethodCall(
        requestor.service, requestor.path.path(), QStringLiteral("com.tavix.nfc.HandoverRequestor"), method);
    message.setArguments(arguments);
    QDBusConnection::systemBus().send(message);
}
