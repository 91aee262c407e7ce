// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/adapter.h"

#include <utility>

#include <QDBusConnection>
#include <QDBusMessage>

#include "daemon/uiagent.h"

namespace {

QString stateName(bool powered)
{
    return powered ? QStringLiteral("on") : QStringLiteral("off");
}

void answer(const QDBusMessage &call)
{
    QDBusConnection::systemBus().send(call.createReply());
}

void refuse(const QDBusMessage &call, const char *error, const QString &reason)
{
    const QString name = QStringLiteral("com.tavix.nfc.Error.") + QLatin1String(error);
    QDBusConnection::systemBus().send(call.createErrorReply(name, reason));
}

} // namespace

Adapter::Adapter(const QSet<uint> &trusted, QObject *parent) : QObject(parent), judge(trusted), agents(&judge)
{}

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

Authority &Adapter::authority()
{
    return judge;
}

UiAgent *Adapter::agent() const
{
    return agents.inUse();
}

void Adapter::dropAgent()
{
    if (agents.inUse())
        agents.remove(agents.inUse());
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
    const bool isState = state == stateName(true) || state == stateName(false);
    carryOut([this, name, state, isState](const QDBusMessage &call, uint) {
        if (name == QLatin1String("State") && isState) {
            setPowered(state == stateName(true));
            answer(call);
        } else {
            refuse(call, "InvalidArguments", QStringLiteral("'%1' cannot be set to '%2'").arg(name, state));
        }
    });
}

void Adapter::RegisterUIAgent(const QDBusObjectPath &path)
{
    carryOut([this, path](const QDBusMessage &call, uint user) {
        // The user of the agent in use may have left the seat to the one of this.
        agents.reviewBefore(
            call, [this, path, call, user] { registerAgent(path, call, user); });
    });
}

void Adapter::registerAgent(const QDBusObjectPath &path, const QDBusMessage &call, uint user)
{
    const UiAgent *other = agents.inUse();
    if (other && !other->is(call.service(), path)) {
        refuse(call, "AlreadyExists", QStringLiteral("Agent %1 is registered").arg(other->name()));
        return;
    }
    agents.use(call.service(), path, user);
    answer(call);
}

void Adapter::UnregisterUIAgent(const QDBusObjectPath &path)
{
    const Authority::Action unregister = [this, path](const QDBusMessage &call, uint) {
        if (UiAgent *agent = agents.find(call.service(), path))
            agents.remove(agent);
        answer(call);
    };
    // A user who has left the seat may still end the agent.
    if (!agents.find(message().service(), path)) {
        carryOut(unregister);
        return;
    }
    setDelayedReply(true);
    judge.permit(message(), unregister);
}

void Adapter::RequestHandover(const QDBusObjectPath &requestor, const QString &carrier, const QString &type)
{
    carryOut([this, requestor, carrier, type](const QDBusMessage &call, uint) {
        QString reason;
        if (!acceptHandover(carrier, {call.service(), requestor}, reason)) {
            refuse(call, "HandoverRefused", reason);
            return;
        }
        qInfo("handover to %s (%s) requested", qUtf8Printable(carrier), qUtf8Printable(type));
        answer(call);
    });
}

void Adapter::CancelHandoverRequest(const QString &carrier)
{
    carryOut([this, carrier](const QDBusMessage &call, uint) {
        if (!handover || handover->carrier() != carrier) {
            refuse(call, "NoHandover", QStringLiteral("No handover to '%1' is in progress").arg(carrier));
            return;
        }
        handover->fail(QStringLiteral("Canceled"));
        answer(call);
    });
}

// Lets the caller of the method that is being called wait for the decision about it.
void Adapter::carryOut(const Authority::Action &action)
{
    setDelayedReply(true);
    judge.decide(message(), action);
}
