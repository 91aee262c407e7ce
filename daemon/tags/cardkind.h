// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_CARDKIND_H
#define CONNUI_DAEMON_TAGS_CARDKIND_H

#include <QByteArray>
#include <QString>

/** How a card that has come to a reader is treated. */
enum class CardKind {
    Foreign,     ///< Another program's: it gets no command at all.
    Unsupported, ///< A tag for sure, of a kind that this daemon does not know: it gets no command either.
    Type2,
    Type4,
    Untold, ///< The reader does not say; it is one of those whose tags may be asked (see mayBeType2()).
};

/**
 * Determines the kind of a card from its answer to reset \a atr, as PC/SC part 3 has contactless readers make
 * it up, and from the name of its reader.
 *
 * Contact cards, security keys, bank and identity cards are Foreign: their answers have another form, or name
 * a card that is not on the list of those that are made as tags.
 */
CardKind cardKind(const QByteArray &atr, const QString &reader);

/** Whether the answers of an Untold card to CardCommand::uid() and to a read of page 3 are those of a tag of
 * Type 2. */
bool mayBeType2(const QByteArray &uid, const QByteArray &page3);

/** Whether a card makes up another \a uid for each touch, so that it says nothing about the card. */
bool isRandom(const QByteArray &uid);

#endif
