// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_UIAGENTS_H
#define CONNUI_DAEMON_UIAGENTS_H

#include <functional>
#include <optional>

#include <QDBusObjectPath>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include "daemon/polkitwatch.h"

class Authority;
class QDBusMessage;
class UiAgent;

/**
 * The registered agents: at most one is in use; the others are put aside, because polkit does not let their
 * users manage NFC at present.
 *
 * Whenever polkit reports a change, such as another user at the seat, it is asked again. An agent that is put
 * aside comes back into use when it may manage NFC and no other one is in use.
 */
class UiAgents : public QObject
{
    Q_OBJECT

public:
    /** Asks \a judge, which must live longer, and hand on no answer after that. */
    explicit UiAgents(Authority *judge, QObject *parent = nullptr);

    /** The agent in use, or null. */
    UiAgent *inUse() const;

    /** The agent at \a path of the process \a service, in use or put aside; null when there is none. */
    UiAgent *find(const QString &service, const QDBusObjectPath &path) const;

    /**
     * Takes the agent at \a path of the process \a service, which belongs to \a user, into use, and registers
     * it if it is not yet. No other one may be in use.
     */
    void use(const QString &service, const QDBusObjectPath &path, uint user);

    /** Forgets \a agent; its open calls may still be answered. */
    void remove(UiAgent *agent);

    /**
     * Calls \a next after the agent in use has been put aside if it may not manage NFC any more; at once when
     * it belongs to the caller of \a call, or there is none. The caller's next calls wait.
     */
    void reviewBefore(const QDBusMessage &call, const std::function<void()> &next);

private:
    void review();
    void settle(const QPointer<UiAgent> &reviewed, std::optional<bool> allowed);
    void takeUp(UiAgent *agent);
    void putAside();

    Authority *const judge;
    const PolkitWatch polkit;
    QList<UiAgent *> agents;
    UiAgent *used = nullptr;
};

#endif
