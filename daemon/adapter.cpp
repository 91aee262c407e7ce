// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/adapter.h"

#include <utility>

#include "daemon/uiagent.h"

namespace {

QString stateName(bool powered)
{
    return powered ? QStringLiteral("on") : QStringLiteral("off");
}

QString error(const char *name)
{
    return QStringLiteral("com.tavix.nfc.Error.") + QLatin1String(name);
}

} // namespace

Adapter::Adapter(QObject *parent) : QObject(parent) {}

bool Adapter::isPowered() const
{
    return powered;
}

void Adapter::setPowered(bool on)
{
    if (on == powered)
        return;
    powered = on;
    qInfo("the adapter is %s", qUtf8Printable(stateName(on)));
    Q_EMIT PropertyChanged(QStringLiteral("State"), QDBusVariant(stateName(on)));
    if (!on && handover)
        handover->fail(QStringLiteral("The adapter was switched off"));
    Q_EMIT poweredChanged(on);
}

void Adapter::showProperty(const QString &name, const QVariant &value)
{
    if (shownProperties.value(name) == value)
        return;
    shownProperties.insert(name, value);
    Q_EMIT PropertyChanged(name, QDBusVariant(value));
}

UiAgent *Adapter::agent() const
{
    return uiAgent;
}

void Adapter::dropAgent()
{
    if (!uiAgent)
        return;
    qInfo("agent %s is gone", qUtf8Printable(uiAgent->name()));
    std::exchange(uiAgent, nullptr)->deleteLater();
}

Handover *Adapter::acceptHandover(const QString &carrier, const Handover::Requestor &requestor,
                                  QString &reason)
{
    if (!powered)
        reason = QStringLiteral("The adapter is switched off");
    else if (handover)
        reason = QStringLiteral("Another handover is in progress");
    else if (carrier != QLatin1String("bluetooth"))
        reason = QStringLiteral("No carrier named '%1'").arg(carrier);
    if (!reason.isEmpty())
        return nullptr;

    handover = new Handover(carrier, requestor, this);
    connect(handover, &Handover::started, this, &Adapter::HandoverStarted);
    connect(handover, &Handover::carrierSelected, this, &Adapter::HandoverCarrierSelected);
    connect(handover, &Handover::completed, this, &Adapter::HandoverCompleted);
    connect(handover, &Handover::failed, this, &Adapter::HandoverFailed);
    connect(handover, &Handover::completed, this, &Adapter::endHandover);
    connect(handover, &Handover::failed, this, &Adapter::endHandover);
    Q_EMIT handoverAccepted(handover);
    return handover;
}

Handover *Adapter::currentHandover() const
{
    return handover;
}

void Adapter::endHandover()
{
    std::exchange(handover, nullptr)->deleteLater();
}

QVariantMap Adapter::GetProperties() const
{
    QVariantMap properties = shownProperties;
    properties.insert(QStringLiteral("State"), stateName(powered));
    return properties;
}

void Adapter::SetProperty(const QString &name, const QDBusVariant &value)
{
    const QString state = value.variant().toString();
    if (name != QLatin1String("State") || (state != stateName(true) && state != stateName(false))) {
        sendErrorReply(error("InvalidArguments"),
                       QStringLiteral("'%1' cannot be set to '%2'").arg(name, state));
        return;
    }
    setPowered(state == stateName(true));
}

void Adapter::RegisterUIAgent(const QDBusObjectPath &path)
{
    const QString caller = message().service();
    if (uiAgent && uiAgent->is(caller, path))
        return;
    if (uiAgent) {
        sendErrorReply(error("AlreadyExists"), QStringLiteral("Agent %1 is registered").arg(uiAgent->name()));
        return;
    }
    uiAgent = new UiAgent(caller, path, this);
    connect(uiAgent, &UiAgent::left, this, &Adapter::dropAgent);
    qInfo("agent %s is registered", qUtf8Printable(uiAgent->name()));
}

void Adapter::UnregisterUIAgent(const QDBusObjectPath &path)
{
    if (uiAgent && uiAgent->is(message().service(), path))
        dropAgent();
}

void Adapter::RequestHandover(const QDBusObjectPath &requestor, const QString &carrier, const QString &type)
{
    QString reason;
    if (!acceptHandover(carrier, {message().service(), requestor}, reason)) {
        sendErrorReply(error("HandoverRefused"), reason);
        return;
    }
    qInfo("handover to %s (%s) requested", qUtf8Printable(carrier), qUtf8Printable(type));
}

void Adapter::CancelHandoverRequest(const QString &carrier)
{
    if (handover && handover->carrier() == carrier)
        handover->fail(QStringLiteral("Canceled"));
    else
        sendErrorReply(error("NoHandover"),
                       QStringLiteral("No handover to '%1' is in progress").arg(carrier));
}
