// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_CARDDIALOGUE_H
#define CONNUI_DAEMON_TAGS_CARDDIALOGUE_H

#include <optional>

#include <QByteArray>

#include "daemon/tags/tagstatus.h"

class Exchange;

/** Puts commands to a card, and knows why the last one has failed. */
class CardDialogue
{
public:
    explicit CardDialogue(Exchange &exchange);

    /** Sends \a command and returns the \a length bytes that the card answers; nothing, with a fault(), else.
     */
    std::optional<QByteArray> ask(const QByteArray &command, int length);

    /** Sends \a command and returns whether the card has done it, whatever it answers besides. */
    bool tell(const QByteArray &command);

    /**
     * The reason why ask() or tell() failed last.
     *
     * Gone; Malformed for an answer of another length; Refused for a status other than success.
     * Some readers give such a status when the tag has gone: one that refuses even what it did first is Gone.
     */
    TagStatus fault() const;

private:
    std::optional<QByteArray> done(const QByteArray &command);
    std::optional<QByteArray> transceive(const QByteArray &command);

    Exchange &exchange;
    QByteArray firstDone;
    TagStatus lastFault = TagStatus::Done;
};

#endif
