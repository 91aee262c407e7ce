// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_AGENTPROCESS_H
#define CONNUI_AGENTPROCESS_H

#include <QDBusObjectPath>
#include <QTest>

#include "fakeservice.h"

/** A client of the daemon with an agent, in a process of its own. */
class AgentProcess : public FakeService
{
public:
    explicit AgentProcess(const QString &name = QStringLiteral("org.connui.test.Client"))
        : FakeService(QDBusConnection::SystemBus, name)
    {
        start();
    }

    static QString path() { return QStringLiteral("/test/agent"); }

    /** Calls the adapter and returns its reply. */
    FakeReply callAdapter(const QString &member, const QVariantList &arguments)
    {
        const int id = call(QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
                            QStringLiteral("com.tavix.nfc.Adapter"), member, arguments);
        FakeReply reply;
        const auto hasReply = [this, id, &reply] {
            const QList<FakeReply> all = replies();
            for (const FakeReply &candidate : all)
                if (candidate.id == id)
                    reply = candidate;
            return reply.id == id;
        };
        if (!QTest::qWaitFor(hasReply, 30000))
            reply.error = QStringLiteral("no reply");
        return reply;
    }

    FakeReply registerAgent(const QString &agent = path())
    {
        return callAdapter(QStringLiteral("RegisterUIAgent"), {QVariant::fromValue(QDBusObjectPath(agent))});
    }

    FakeReply unregisterAgent(const QString &agent = path())
    {
        return callAdapter(QStringLiteral("UnregisterUIAgent"),
                           {QVariant::fromValue(QDBusObjectPath(agent))});
    }
};

#endif
