// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_ADAPTER_H
#define CONNUI_DAEMON_ADAPTER_H

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QSet>
#include <QVariantMap>

#include "daemon/authority.h"
#include "daemon/handover.h"
#include "daemon/uiagents.h"

class UiAgent;

/** The NFC adapter: its properties, its agents, and the handover on its way. */
class Adapter : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    /** One that lets \a trusted users pass unasked. */
    explicit Adapter(const QSet<uint> &trusted = Authority::usersOfTheSystem(), QObject *parent = nullptr);

    bool isPowered() const;
    void setPowered(bool on);

    /** Shows \a value as the property \a name, which nobody but the daemon changes. */
    void showProperty(const QString &name, const QVariant &value);

    /** The one who decides about calls; for interfaces beside the adapter's own. */
    Authority &authority();

    /** The agent in use, or null. */
    UiAgent *agent() const;

    /** Drops the agent in use; its open calls may still be answered. */
    void dropAgent();

    /**
     * Accepts a handover to \a carrier, whose steps \a requestor hears of, and returns it; null, with a
     * \a reason, when that is not possible.
     *
     * handoverAccepted() hands it to whoever takes its steps.
     */
    Handover *acceptHandover(const QString &carrier, const Handover::Requestor &requestor, QString &reason);

    /** The handover on its way, or null. */
    Handover *currentHandover() const;

    QVariantMap GetProperties() const;
    void SetProperty(const QString &name, const QDBusVariant &value);
    void RegisterUIAgent(const QDBusObjectPath &path);
    void UnregisterUIAgent(const QDBusObjectPath &path);
    void RequestHandover(const QDBusObjectPath &requestor, const QString &carrier, const QString &type);
    void CancelHandoverRequest(const QString &carrier);

Q_SIGNALS:
    void PropertyChanged(const QString &name, const QDBusVariant &value);
    void HandoverStarted();
    void HandoverCarrierSelected(const QString &carrier);
    void HandoverCompleted(const QString &carrier, const QDBusVariant &data);
    void HandoverFailed(const QString &reason);

    // For the daemon itself.
    void poweredChanged(bool on);
    void handoverAccepted(Handover *handover);
    /** The message that was taken for a tag: see TagWriter::take(). */
    void messageGivenUp();

private:
    void carryOut(const Authority::Action &action);
    void registerAgent(const QDBusObjectPath &path, const QDBusMessage &call, uint user);
    void endHandover();

    Authority judge;
    UiAgents agents;
    bool powered = true;
    QVariantMap shownProperties;
    Handover *handover = nullptr;
};

#endif
