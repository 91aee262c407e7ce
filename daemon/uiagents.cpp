// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/uiagents.h"

#include <algorithm>
#include <utility>

#include <QDBusMessage>

#include "daemon/authority.h"
#include "daemon/uiagent.h"

UiAgents::UiAgents(Authority *judge, QObject *parent) : QObject(parent), judge(judge)
{
    connect(&polkit, &PolkitWatch::changed, this, &UiAgents::review);
}

UiAgent *UiAgents::inUse() const
{
    return used;
}

UiAgent *UiAgents::find(const QString &service, const QDBusObjectPath &path) const
{
    const auto agent = std::find_if(agents.cbegin(), agents.cend(),
                                    [&](const UiAgent *known) { return known->is(service, path); });
    return agent == agents.cend() ? nullptr : *agent;
}

void UiAgents::use(const QString &service, const QDBusObjectPath &path, uint user)
{
    UiAgent *agent = find(service, path);
    if (agent) {
        takeUp(agent);
        return;
    }
    agent = new UiAgent(service, path, user, this);
    connect(agent, &UiAgent::left, this, [this, agent] { remove(agent); });
    agents.append(agent);
    used = agent;
    qInfo("agent %s is registered", qUtf8Printable(agent->name()));
}

void UiAgents::remove(UiAgent *agent)
{
    qInfo("agent %s is gone", qUtf8Printable(agent->name()));
    agent->disconnect(this);
    agent->deleteLater();
    agents.removeOne(agent);
    if (agent != used)
        return;
    used = nullptr;
    review();
}

void UiAgents::reviewBefore(const QDBusMessage &call, const std::function<void()> &next)
{
    if (!used || used->busName() == call.service()) {
        next();
        return;
    }
    judge->reviewBefore(call, used->busName(), used->user(),
                        [this, reviewed = QPointer(used), next](std::optional<bool> allowed) {
                            settle(reviewed, allowed);
                            next();
                        });
}

void UiAgents::review()
{
    if (used) {
        judge->review(used->busName(), used->user(),
                      [this, reviewed = QPointer(used)](std::optional<bool> allowed) {
                          settle(reviewed, allowed);
                          if (!used)
                              review();
                      });
        return;
    }
    for (UiAgent *agent : std::as_const(agents))
        judge->review(
            agent->busName(), agent->user(),
            [this, reviewed = QPointer(agent)](std::optional<bool> allowed) { settle(reviewed, allowed); });
}

// Acts on polkit's decision about an agent. Meanwhile it may have gone, or others may have come.
void UiAgents::settle(const QPointer<UiAgent> &reviewed, std::optional<bool> allowed)
{
    if (!agents.contains(reviewed) || !allowed)
        return;
    if (reviewed == used && !*allowed)
        putAside();
    else if (!used && *allowed)
        takeUp(reviewed);
}

void UiAgents::takeUp(UiAgent *agent)
{
    if (agent == used)
        return;
    used = agent;
    qInfo("agent %s is in use again", qUtf8Printable(agent->name()));
}

void UiAgents::putAside()
{
    UiAgent *agent = std::exchange(used, nullptr);
    qInfo("agent %s is put aside", qUtf8Printable(agent->name()));
    Q_EMIT agent->putAside();
    const auto isSecond = [agent](const UiAgent *other) {
        return other != agent && other->user() == agent->user();
    };
    if (std::none_of(agents.cbegin(), agents.cend(), isSecond))
        return;
    // Else a user's agents would pile up.
    agent->call(QStringLiteral("Release"));
    remove(agent);
}
