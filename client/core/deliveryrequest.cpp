// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/deliveryrequest.h"

#include <algorithm>

#include <ContentAction>
#include <NfcAdapter>
#include <NfcPendingCall>

#include "core/clientlog.h"
#include "core/deliveries.h"
#include "core/desktopapplication.h"
#include "core/notices.h"
#include "core/tagquestion.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcPendingCall;

DeliveryRequest::DeliveryRequest(const Surroundings &surroundings, const NdefMessageHandlerList &handlers,
                                 const QDBusObjectPath &tag, const QByteArray &data,
                                 const PendingReply &reply)
    : Request(Delivery, tag.path(), data, reply)
    , surroundings(surroundings)
    , handlers(handlers)
    , tag(tag)
    , data(data)
{}

void DeliveryRequest::begin()
{
    content = readTag(data);
    if (content.records.isEmpty() || handlers.isEmpty())
        decideWithout();
    else
        findHandlerInFront();
}

void DeliveryRequest::findHandlerInFront()
{
    unknown = int(handlers.size());
    for (int i = 0; i < handlers.size(); ++i) {
        const NfcPendingCall *call = handlers[i].isRunningOnForegroundAsync();
        connect(call, &NfcPendingCall::finished, this, [this, i](const NfcPendingCall *answered) {
            if (answered->value().toBool() && (inFront < 0 || i < inFront))
                inFront = i;
            if (--unknown == 0)
                decideWithout();
        });
    }
}

// Makes the decisions that need no user.
void DeliveryRequest::decideWithout()
{
    decision = ::decide(content, circumstances());
    switch (decision.outcome) {
    case Decision::Ask:
        Q_EMIT asks(tagQuestion(content, decision));
        return;
    case Decision::Forward:
        qCInfo(clientLog, "%s goes to %s unasked", qUtf8Printable(target),
               qUtf8Printable(decision.applications.constFirst()));
        forward(decision.applications.constFirst());
        break;
    case Decision::AcceptEmpty:
        grant();
        Q_EMIT tells(emptyTagNotice());
        break;
    case Decision::Refuse:
        reject();
        Q_EMIT tells(unreadableTagNotice());
        break;
    }
    Q_EMIT done();
}

Circumstances DeliveryRequest::circumstances() const
{
    Circumstances now;
    for (const NdefMessageHandler &handler : handlers)
        now.handlers.append(handler.applicationId());
    now.inFront = inFront;
    if (!content.records.isEmpty() && content.records.constFirst().kind == TagRecord::Uri)
        now.desktop = ContentAction::Action::defaultActionForScheme(content.records.constFirst().text).name();
    now.wantsToBeAsked = surroundings.adapter->isConfirmationEnabled();
    now.isLocked = surroundings.isLocked;
    return now;
}

void DeliveryRequest::decide(const Answer &answer)
{
    if (answer.choice == Answer::No)
        reject();
    else if (answer.choice == Answer::Direct)
        openOnDesktop();
    else
        open(answer.application);
    Q_EMIT done();
}

// Where the question names an application, that one gets it and no other.
void DeliveryRequest::open(const QString &named)
{
    const bool isNamed = decision.question == Question::OtherContent;
    const QString application = isNamed ? named : decision.applications.constFirst();
    if (!decision.applications.contains(application)) {
        qCWarning(clientLog, "No application '%s' was offered", qUtf8Printable(application));
        reject();
    } else if (!handlers.isEmpty()) {
        forward(application);
    } else if (decision.hasDirectAction) {
        grant();
        Q_EMIT tells(contentNotice(content, decision));
    } else {
        openOnDesktop();
    }
}

void DeliveryRequest::openOnDesktop()
{
    grant();
    openLink(content.records.constFirst().text);
}

void DeliveryRequest::forward(const QString &application)
{
    const auto handler =
        std::find_if(handlers.cbegin(), handlers.cend(), [&application](const NdefMessageHandler &candidate) {
            return candidate.applicationId() == application;
        });
    // The daemon may forget the tag once it has its answer.
    surroundings.deliveries->deliver(*handler, tag, data, [replies = takeReplies()] {
        for (const PendingReply &reply : replies)
            reply.grant();
    });
}
