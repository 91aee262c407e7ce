// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCREPLYORDER_H
#define CONNUI_NFCREPLYORDER_H

#include <connui_nfc_core_export.h>
#include <functional>
#include <memory>

#include <QString>

namespace ConnUi {

class NfcReplyOrderPrivate;

/**
 * Sends the replies to the requests for one target in the order in which the requests came.
 *
 * NfcAgent answers the oldest request for a target, whichever was meant. A program that can decide about a
 * request before an older one takes a place for each request when it comes, and replies through its place:
 *
 * @code
 * connect(agent, &NfcAgent::btPairingRequested, this, [=](const QDBusObjectPath &target) {
 *     const quint64 place = order->takePlace(target.path());
 *     ask([=] { order->reply(target.path(), place, [=] { agent->btPairingRequestGranted(target); }); });
 * });
 * @endcode
 *
 * Each agent has an order of its own, which must not outlive it. Nothing blocks.
 */
class CONNUI_NFC_CORE_EXPORT NfcReplyOrder
{
public:
    /** Sends a reply. */
    using Reply = std::function<void()>;

    /** Makes an order without places. */
    NfcReplyOrder();

    /** Forgets the replies that wait, unsent. */
    ~NfcReplyOrder();

    NfcReplyOrder(const NfcReplyOrder &) = delete;
    NfcReplyOrder &operator=(const NfcReplyOrder &) = delete;

    /** Takes the next place of \a target, for a request that has come, and returns its number, which no other
     * place of this order has. */
    quint64 takePlace(const QString &target);

    /**
     * Calls \a reply for the request at \a place of \a target as soon as all older requests for \a target
     * have had their replies, now or inside a later call of this function.
     *
     * A place that was never taken, or whose reply was called, has no effect. Another reply for a place whose
     * first one waits replaces that.
     */
    void reply(const QString &target, quint64 place, const Reply &reply);

private:
    const std::unique_ptr<NfcReplyOrderPrivate> d;
};

} // namespace ConnUi

#endif
