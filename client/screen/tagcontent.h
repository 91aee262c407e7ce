// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TAGCONTENT_H
#define CONNUI_TAGCONTENT_H

#include <QByteArray>
#include <QString>

/** What a tag holds, as far as asking about it goes: the first record of its message. */
struct TagContent
{
    enum Kind { Empty, Uri, Text, ContactCard, File, StoreLink, Other };

    Kind kind = Empty;
    /** The record's type: a MIME type for File and ContactCard. */
    QString type;
    /** The record's payload; of a Smart Poster, that of the URI in it. */
    QByteArray payload;
    /** The text of a Text, the URI of a Uri. */
    QString text;

    /**
     * Returns whether an application may get this without a question, when the user does not want to be
     * asked: plain text, web links and contact cards, which are only shown. A call or a message costs money,
     * and what unknown data does is up to the application.
     */
    bool isHarmless() const;

    /** Returns whether the question about this Uri shows what it leads to; of others it names the application
     * alone. */
    bool isShownWhenAsked() const;
};

/** Reads the NDEF message \a message. One that cannot be read, but is not empty either, is of the kind Other.
 */
TagContent readTag(const QByteArray &message);

#endif
