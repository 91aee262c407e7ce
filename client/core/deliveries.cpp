// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/deliveries.h"

#include <algorithm>
#include <utility>

#include <NfcApplication>
#include <NfcForeignText>
#include <NfcPendingCall>

#include "core/clientlog.h"
#include "core/notices.h"
#include "core/questionqueue.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NfcApplication;
using ConnUi::NfcPendingCall;

namespace {

QString nameOf(const NdefMessageHandler &handler)
{
    return ConnUi::foreignName(NfcApplication(handler.applicationId()).name(), handler.service());
}

} // namespace

Deliveries::Deliveries(QuestionQueue *queue) : queue(queue) {}

void Deliveries::deliver(const NdefMessageHandler &handler, const QDBusObjectPath &tag,
                         const QByteArray &data, const HandedOver &handedOver)
{
    const bool isBusy =
        std::any_of(deliveries.cbegin(), deliveries.cend(),
                    [&handler](const Delivery &earlier) { return earlier.handler == handler; });
    const auto added = deliveries.insert(deliveries.end(), {handler, tag, data, handedOver});
    added->timer = std::make_unique<QTimer>();
    added->timer->setSingleShot(true);
    connect(added->timer.get(), &QTimer::timeout, this, [this, added] { show(added); });
    added->timer->start(moment);
    if (!isBusy)
        begin(added);
}

void Deliveries::begin(Place delivery)
{
    delivery->isOnItsWay = true;
    NfcPendingCall *call = delivery->handler.forwardDataAsync(delivery->tag, delivery->data);
    connect(call, &NfcPendingCall::finished, this, [this, delivery] { end(delivery); });
}

void Deliveries::show(Place delivery)
{
    Question opening;
    opening.kind = Question::Opening;
    opening.title = qtTrId("qtn_nfc_opening_tit").arg(nameOf(delivery->handler));
    opening.no = qtTrId("qtn_comm_close");
    QTimer *timer = delivery->timer.get();
    timer->disconnect(this);
    connect(timer, &QTimer::timeout, this, [this, delivery] { giveUp(delivery); });
    timer->start(patience - moment);
    delivery->shown = queue->begin(opening, [delivery](const Answer &) { delivery->shown.reset(); });
}

void Deliveries::hide(Place delivery)
{
    if (const std::optional<int> number = std::exchange(delivery->shown, std::nullopt))
        queue->end(*number);
}

// The daemon may forget the tag now.
void Deliveries::report(Place delivery)
{
    if (!std::exchange(delivery->isReported, true))
        delivery->handedOver();
}

void Deliveries::giveUp(Place delivery)
{
    qCWarning(clientLog, "%s does not answer", qUtf8Printable(delivery->handler.applicationId()));
    report(delivery);
    // First, while the user may be looking at what is hidden then.
    queue->tellBeside(notice(qtTrId("qtn_nfc_noanswer_tit"),
                             qtTrId("qtn_nfc_noanswer_text").arg(nameOf(delivery->handler))));
    hide(delivery);
}

void Deliveries::end(Place delivery)
{
    delivery->timer.reset();
    hide(delivery);
    report(delivery);
    const NdefMessageHandler handler = delivery->handler;
    deliveries.erase(delivery);
    const auto next = std::find_if(deliveries.begin(), deliveries.end(), [&handler](const Delivery &later) {
        return later.handler == handler && !later.isOnItsWay;
    });
    if (next != deliveries.end())
        begin(next);
}
