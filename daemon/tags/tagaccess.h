// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TAGACCESS_H
#define CONNUI_DAEMON_TAGS_TAGACCESS_H

#include "daemon/tags/cardkind.h"
#include "daemon/tags/limitedexchange.h"
#include "daemon/tags/tag.h"

/** The data that a card sent within the limits of LimitedExchange. */
struct TagReading
{
    CardKind kind = CardKind::Foreign; ///< Untold no more.
    QByteArray uid;                    ///< Empty when the reader does not report it, or the card makes it up.
    TagContents contents;
};

/**
 * Reads the card of \a kind.
 *
 * A message that does not conform to NDEF makes the tag Malformed, one that takes too long makes it
 * Unsupported. A card that is Foreign or Unsupported gets no command.
 */
TagReading readTag(Exchange &exchange, CardKind kind, const LimitedExchange::Clock &clock);

/**
 * Writes \a message to the card of \a kind and reads it back; both within the limits of LimitedExchange.
 *
 * Returns what is on the tag then, or why the message is not: the tag has Refused it when something else is
 * read. A card that is Foreign or Unsupported gets no command.
 */
TagReading writeTag(Exchange &exchange, CardKind kind, const QByteArray &message,
                    const LimitedExchange::Clock &clock);

#endif
