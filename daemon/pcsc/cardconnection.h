// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_CARDCONNECTION_H
#define CONNUI_DAEMON_PCSC_CARDCONNECTION_H

#include <atomic>
#include <winscard.h>

#include <QByteArray>

#include "daemon/tags/exchange.h"

/**
 * A card in a reader that this thread talks to, alone while the connection lasts, and shared with other
 * programs otherwise. The card is left with a reset.
 *
 * Each of its calls may wait for pcscd, for the card, or for another program that has the card.
 */
class CardConnection : public Exchange
{
public:
    /**
     * Connects to the card in \a reader, with \a isWaiting set while another program has it that may be
     * waited for as long as there is a \a context. Nothing is sent to the card any more once \a isCanceled.
     */
    CardConnection(SCARDCONTEXT context, const QByteArray &reader, const std::atomic<bool> &isCanceled,
                   std::atomic<bool> &isWaiting);
    ~CardConnection() override;

    CardConnection(const CardConnection &) = delete;
    CardConnection &operator=(const CardConnection &) = delete;

    /** SCARD_S_SUCCESS, or why there is no connection. */
    LONG result() const;

    std::optional<QByteArray> transceive(const QByteArray &command) override;

private:
    const std::atomic<bool> &isCanceled;
    SCARDHANDLE card = 0;
    DWORD protocol = SCARD_PROTOCOL_UNDEFINED;
    LONG connected;
    LONG begun = SCARD_E_NOT_TRANSACTED;
};

#endif
