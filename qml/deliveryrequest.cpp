// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "deliveryrequest.h"

#include <algorithm>

#include <QStringList>
#include <QtGlobal>

#include <NfcApplication>
#include <NfcForeignText>
#include <NfcPendingCall>
#include <NfcTagContent>

#include "arraybuffer.h"

using ConnUi::foreignName;
using ConnUi::foreignText;
using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NdefRecord;
using ConnUi::NfcApplication;
using ConnUi::NfcDeliveryDecision;
using ConnUi::NfcLink;
using ConnUi::NfcPendingCall;
using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

namespace {

constexpr int hostLength = 40; // characters

QStringList idsOf(const NdefMessageHandlerList &handlers)
{
    QStringList ids;
    for (const NdefMessageHandler &handler : handlers)
        ids.append(handler.applicationId());
    return ids;
}

} // namespace

DeliveryRequest::DeliveryRequest(const QDBusObjectPath &tag, const QByteArray &data,
                                 const NdefMessageHandlerList &handlers, const Circumstances &circumstances,
                                 const Place &place, const Replies &replies)
    : NfcRequest(tag.path(), place, replies)
    , tag(tag)
    , bytes(data)
    , takers(handlers)
    , decision(NfcTagContent(data))
{
    decision.setHandlers(idsOf(handlers));
    decision.setConfirmationEnabled(circumstances.isConfirmationEnabled);
    decision.setSessionLocked(circumstances.isSessionLocked);
}

void DeliveryRequest::prepare()
{
    unknown = int(takers.size());
    for (int i = 0; i < takers.size(); ++i) {
        const NfcPendingCall *call = takers[i].isRunningOnForegroundAsync();
        connect(call, &NfcPendingCall::finished, this, [this, i](const NfcPendingCall *answered) {
            if (answered->value().toBool() && (inFront < 0 || i < inFront))
                inFront = i;
            if (--unknown == 0)
                decide();
        });
    }
    if (takers.isEmpty())
        decide();
}

void DeliveryRequest::decide()
{
    decision.setForegroundHandler(inFront);
    if (firstRecord().kind() == NfcTagRecord::Uri)
        decision.setDefaultApplication(NfcApplication::defaultForUri(uri()).id());
    const QStringList applications = decision.applications();
    for (const QString &application : applications)
        offered.append(new NfcHandler(application, this));
    becomeReady();
}

QString DeliveryRequest::title() const
{
    const NfcTagRecord record = firstRecord();
    if (!host().isEmpty())
        return host();
    return foreignName(record.displayText(), foreignName(record.type(), {}));
}

DeliveryRequest::Outcome DeliveryRequest::outcome() const
{
    return Outcome(decision.outcome());
}

DeliveryRequest::Kind DeliveryRequest::kind() const
{
    return Kind(decision.question());
}

QString DeliveryRequest::text() const
{
    return foreignText(firstRecord().displayText());
}

QString DeliveryRequest::uri() const
{
    return firstRecord().link().uri();
}

QString DeliveryRequest::host() const
{
    return ConnUi::leftToRight(firstRecord().link().shortHost(hostLength));
}

bool DeliveryRequest::isEncrypted() const
{
    return firstRecord().link().isEncrypted();
}

bool DeliveryRequest::isSuspicious() const
{
    return firstRecord().link().suspicion() != NfcLink::NotSuspicious;
}

bool DeliveryRequest::hasMore() const
{
    return decision.content().records().size() > 1 || !firstRecord().isUnderstood() ||
           !firstRecord().link().isShownWhole();
}

bool DeliveryRequest::isActionable() const
{
    return decision.hasDirectAction();
}

QQmlListProperty<NfcHandler> DeliveryRequest::handlers()
{
    return {this, &offered};
}

QByteArray DeliveryRequest::data() const
{
    return arrayBuffer(bytes);
}

QList<NdefRecord> DeliveryRequest::records() const
{
    return NdefRecord::fromMessage(bytes);
}

void DeliveryRequest::accept()
{
    if (offered.isEmpty())
        NfcRequest::accept();
    else
        open(offered.constFirst()->applicationId());
}

void DeliveryRequest::acceptWith(NfcHandler *handler)
{
    if (!handler || handler->parent() != this) {
        qWarning("DeliveryRequest: the handler is not one of the request's");
        return;
    }
    open(handler->applicationId());
}

void DeliveryRequest::act()
{
    if (!isActionable())
        qWarning("DeliveryRequest: there is nothing to call or to send");
    else
        openOnDesktop();
}

// The one that the question is about; of an empty tag, one without a text.
NfcTagRecord DeliveryRequest::firstRecord() const
{
    return decision.content().records().value(0);
}

// An application that is not a handler is the desktop's.
void DeliveryRequest::open(const QString &application)
{
    const auto handler =
        std::find_if(takers.cbegin(), takers.cend(), [&application](const NdefMessageHandler &candidate) {
            return candidate.applicationId() == application;
        });
    if (handler == takers.cend())
        openOnDesktop();
    else
        forward(*handler);
}

// The daemon may forget the tag once it has its answer.
void DeliveryRequest::forward(const NdefMessageHandler &handler)
{
    if (!end())
        return;
    NfcPendingCall *call = handler.forwardDataAsync(tag, bytes);
    // The call outlives the request.
    connect(call, &NfcPendingCall::finished, call,
            [place = place, grant = replies.grant] { place.send(grant); });
    Q_EMIT ended();
}

void DeliveryRequest::openOnDesktop()
{
    if (!end())
        return;
    place.send(replies.grant);
    NfcApplication::openUri(uri());
    Q_EMIT ended();
}
