// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/deliveryrequest.h"

#include <algorithm>

#include <QStringList>

#include <NfcAdapter>
#include <NfcApplication>
#include <NfcPendingCall>

#include "core/clientlog.h"
#include "core/deliveries.h"
#include "core/notices.h"
#include "core/questionqueue.h"
#include "core/tagquestion.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcApplication;
using ConnUi::NfcDeliveryDecision;
using ConnUi::NfcPendingCall;
using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

DeliveryRequest::DeliveryRequest(const Surroundings &surroundings, const NdefMessageHandlerList &handlers,
                                 const QDBusObjectPath &tag, const QByteArray &data,
                                 const PendingReply &reply)
    : Request(Delivery, tag.path(), data, reply)
    , surroundings(surroundings)
    , cameLocked(surroundings.queue->isPaused())
    , handlers(handlers)
    , tag(tag)
    , data(data)
{}

void DeliveryRequest::begin()
{
    const NfcTagContent content(data);
    decision = NfcDeliveryDecision(content);
    QStringList ids;
    for (const NdefMessageHandler &handler : handlers)
        ids.append(handler.applicationId());
    decision.setHandlers(ids);
    if (content.records().isEmpty() || handlers.isEmpty())
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
            if (isAbandoned())
                return;
            const int inFront = decision.foregroundHandler();
            if (answered->value().toBool() && (inFront < 0 || i < inFront))
                decision.setForegroundHandler(i);
            if (--unknown == 0)
                decideWithout();
        });
    }
}

// Makes the decisions that need no user.
void DeliveryRequest::decideWithout()
{
    const QList<NfcTagRecord> records = decision.content().records();
    if (!records.isEmpty() && records.constFirst().kind() == NfcTagRecord::Uri)
        decision.setDefaultApplication(NfcApplication::defaultForUri(records.constFirst().text()).id());
    decision.setConfirmationEnabled(surroundings.adapter->isConfirmationEnabled());
    // It may have been locked since.
    decision.setSessionLocked(cameLocked || surroundings.queue->isPaused());
    switch (decision.outcome()) {
    case NfcDeliveryDecision::Ask:
        Q_EMIT asks(tagQuestion(decision));
        return;
    case NfcDeliveryDecision::Forward: {
        const QString application = decision.applications().constFirst();
        qCInfo(clientLog, "%s goes to %s unasked", qUtf8Printable(target), qUtf8Printable(application));
        forward(application);
        break;
    }
    case NfcDeliveryDecision::AcceptEmpty:
        grant();
        Q_EMIT tells(emptyTagNotice());
        break;
    case NfcDeliveryDecision::Refuse:
        reject();
        Q_EMIT tells(unreadableTagNotice());
        break;
    }
    Q_EMIT done();
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
    const bool isNamed = decision.question() == NfcDeliveryDecision::OtherContent;
    const QStringList applications = decision.applications();
    const QString application = isNamed ? named : applications.constFirst();
    if (!applications.contains(application)) {
        qCWarning(clientLog, "No application '%s' was offered", qUtf8Printable(application));
        reject();
    } else if (!handlers.isEmpty()) {
        forward(application);
    } else if (decision.hasDirectAction()) {
        grant();
        Q_EMIT tells(contentNotice(decision));
    } else {
        openOnDesktop();
    }
}

void DeliveryRequest::openOnDesktop()
{
    grant();
    NfcApplication::openUri(decision.content().records().constFirst().text());
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
