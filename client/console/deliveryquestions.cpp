// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/deliveryquestions.h"

#include <NfcAgent>

#include "console/console.h"
#include "console/messagetext.h"
#include "console/questionqueue.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAgent;

DeliveryQuestions::DeliveryQuestions(NfcAgent *agent, QuestionQueue *queue, Console *console)
    : QObject(agent)
    , agent(agent)
    , queue(queue)
    , console(console)
{
    connect(agent, &NfcAgent::dataDeliveryRequested, this, &DeliveryQuestions::ask);
}

void DeliveryQuestions::ask(const NdefMessageHandlerList &handlers, const QDBusObjectPath &target,
                            const QByteArray &data)
{
    const QString content = messageText(data);
    if (content.isEmpty()) {
        console->print(QStringLiteral("the tag is empty"));
        agent->dataDeliveryGranted(target);
        return;
    }
    if (handlers.isEmpty()) {
        console->print(QStringLiteral("no application takes %1").arg(content));
        agent->rejectDevice(target);
        return;
    }
    QStringList names;
    for (const NdefMessageHandler &handler : handlers)
        names.append(handler.applicationId());
    queue->ask({QStringLiteral("Open %1").arg(content), names,
                [this, handlers, target, data](int choice) { deliver(handlers[choice], target, data); },
                [this, target] { agent->rejectDevice(target); }});
}

void DeliveryQuestions::deliver(NdefMessageHandler handler, const QDBusObjectPath &target,
                                const QByteArray &data)
{
    handler.forwardData(target, data);
    agent->dataDeliveryGranted(target);
    console->print(QStringLiteral("delivered to %1").arg(handler.applicationId()));
}
