// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "handover.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariant>

#include "bluetoothpeer.h"
#include "peers.h"

Handover::Handover(const QString &carrier, int stepTime, QObject *parent)
    : QObject(parent)
    , carrierName(carrier)
{
    timer.setInterval(stepTime);
    connect(&timer, &QTimer::timeout, this, &Handover::takeStep);
}

void Handover::setRequestor(const QString &service, const QDBusObjectPath &path)
{
    requestorService = service;
    requestorPath = path;
}

QString Handover::carrier() const
{
    return carrierName;
}

void Handover::start()
{
    timer.start();
}

void Handover::takeStep()
{
    static constexpr void (Handover::*steps[])() = {&Handover::begin, &Handover::selectCarrier,
                                                    &Handover::complete};
    (this->*steps[nextStep++])();
}

void Handover::begin()
{
    tellRequestor(QStringLiteral("HandoverStarted"));
    Q_EMIT started();
}

void Handover::selectCarrier()
{
    tellRequestor(QStringLiteral("HandoverCarrierSelected"), {carrierName});
    Q_EMIT carrierSelected(carrierName);
}

void Handover::complete()
{
    timer.stop();
    const QDBusVariant data(QVariant::fromValue(Peers::bluetooth()));
    tellRequestor(QStringLiteral("HandoverCompleted"), {carrierName, QVariant::fromValue(data)});
    Q_EMIT completed(carrierName, data);
}

void Handover::fail(const QString &reason)
{
    timer.stop();
    tellRequestor(QStringLiteral("HandoverFailed"), {reason});
    Q_EMIT failed(reason);
}

void Handover::tellRequestor(const QString &method, const QVariantList &arguments) const
{
    if (requestorService.isEmpty())
        return;
    QDBusMessage message = QDBusMessage::createMethodCall(
        requestorService, requestorPath.path(), QStringLiteral("com.tavix.nfc.HandoverRequestor"), method);
    message.setArguments(arguments);
    QDBusConnection::systemBus().send(message);
}
