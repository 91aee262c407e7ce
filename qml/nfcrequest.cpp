// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcrequest.h"

#include <utility>

#include <QPointer>

#include <NfcReplyOrder>

using ConnUi::NfcReplyOrder;

NfcRequest::Place::Place(const std::shared_ptr<NfcReplyOrder> &order, const QString &line)
    : order(order)
    , line(line)
    , number(order->takePlace(line))
{}

void NfcRequest::Place::send(const std::function<void()> &reply) const
{
    if (const std::shared_ptr<NfcReplyOrder> existing = order.lock())
        existing->reply(line, number, reply);
}

NfcRequest::NfcRequest(const QString &target, const Place &place, const Replies &replies)
    : place(place)
    , replies(replies)
    , device(target)
{}

NfcRequest::~NfcRequest()
{
    if (!hasEnded)
        place.send(replies.cancel);
}

QString NfcRequest::target() const
{
    return device;
}

bool NfcRequest::isExpired() const
{
    return hasExpired;
}

void NfcRequest::prepare()
{
    becomeReady();
}

bool NfcRequest::isReady() const
{
    return isPrepared;
}

void NfcRequest::becomeReady()
{
    isPrepared = true;
    Q_EMIT ready();
}

void NfcRequest::expire()
{
    if (!end())
        return;
    hasExpired = true;
    const QPointer<NfcRequest> guard(this);
    Q_EMIT expiredChanged();
    if (guard)
        Q_EMIT ended();
}

void NfcRequest::accept()
{
    answer(replies.grant);
}

void NfcRequest::reject()
{
    answer(replies.reject);
}

void NfcRequest::cancel()
{
    answer(replies.cancel);
}

bool NfcRequest::end()
{
    return !std::exchange(hasEnded, true);
}

void NfcRequest::answer(const std::function<void()> &reply)
{
    if (!end())
        return;
    place.send(reply);
    Q_EMIT ended();
}
