// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/request.h"

#include <utility>

#include <NfcReplyOrder>

using ConnUi::NfcReplyOrder;

PendingReply::PendingReply(const std::shared_ptr<NfcReplyOrder> &order, const QString &target,
                           const Reply &grant, const Reply &reject)
    : order(order)
    , target(target)
    , place(order->takePlace(target))
    , granting(grant)
    , rejecting(reject)
{}

void PendingReply::grant() const
{
    if (const std::shared_ptr<NfcReplyOrder> line = order.lock())
        line->reply(target, place, granting);
}

void PendingReply::reject() const
{
    if (const std::shared_ptr<NfcReplyOrder> line = order.lock())
        line->reply(target, place, rejecting);
}

Request::Request(Kind kind, const QString &target, const QByteArray &content, const PendingReply &reply)
    : kind(kind)
    , target(target)
    , content(content)
    , replies{reply}
{}

bool Request::isSameAs(const Request &other) const
{
    return kind == other.kind && content == other.content;
}

bool Request::isReplacedBy(const Request &other) const
{
    return kind == other.kind && target == other.target;
}

void Request::join(const Request &other)
{
    replies += other.replies;
}

void Request::abandon()
{
    abandoned = true;
}

bool Request::isAbandoned() const
{
    return abandoned;
}

QList<PendingReply> Request::takeReplies()
{
    return std::exchange(replies, {});
}

void Request::grant()
{
    for (const PendingReply &reply : std::exchange(replies, {}))
        reply.grant();
}

void Request::reject()
{
    for (const PendingReply &reply : std::exchange(replies, {}))
        reply.reject();
}
