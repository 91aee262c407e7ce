// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_ADAPTER_H
#define CONNUI_SIM_ADAPTER_H

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

class Handover;
class UiAgent;

/** The simulated NFC adapter: its power, the one agent, and the handover on its way. */
class Adapter : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    /** An adapter whose handovers take steps of \a handoverStep milliseconds. */
    explicit Adapter(int handoverStep, QObject *parent = nullptr);

    bool isPowered() const;
    void setPowered(bool on);

    /** The registered agent, or null. */
    UiAgent *agent() const;

    /** Drops the agent; its open calls may still be answered. */
    void dropAgent();

    /** Starts a handover to \a carrier and returns it; null, with a \a reason, when that is not possible. */
    Handover *startHandover(const QString &carrier, QString &reason);

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

private:
    void endHandover();

    const int handoverStep;
    bool powered = true;
    UiAgent *uiAgent = nullptr;
    Handover *handover = nullptr;
};

#endif
