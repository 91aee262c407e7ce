// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TAGCONTENT_H
#define CONNUI_CLIENT_TAGCONTENT_H

#include <optional>

#include <QByteArray>
#include <QList>
#include <QString>

#include "core/link.h"

/** A record of a tag, as far as asking about it goes. */
struct TagRecord
{
    enum Kind { Uri, Text, ContactCard, StoreLink, Other };

    Kind kind = Other;
    /** The record's type: a MIME type, or the name of a type of the NFC Forum or of somebody else. */
    QString type;
    QByteArray payload;
    /** The text of a Text; the URI of a Uri, without blanks before it and with its scheme in lower case. */
    QString text;
    /** Whether everything in it is understood: a smart poster may hold more than a link. */
    bool isUnderstood = true;
    /** Where a web link leads. */
    std::optional<Link> link = {};
};

/** The content of a tag. */
struct TagContent
{
    /** Whether the bytes are one NDEF message, and nothing else. */
    bool isWellFormed = true;
    /** The records that are not empty. */
    QList<TagRecord> records;
};

/** Reads the NDEF message (NFC Forum NDEF 1.0) in \a data. No bytes at all are an empty tag. */
TagContent readTag(const QByteArray &data);

/** Returns the scheme of \a uri, without its colon; empty when it has none. */
QString schemeOf(const QString &uri);

#endif
