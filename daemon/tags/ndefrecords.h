// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_NDEFRECORDS_H
#define CONNUI_DAEMON_TAGS_NDEFRECORDS_H

#include <optional>

#include <QByteArray>
#include <QList>

/** One record of an NDEF message, put together when it came in chunks. */
struct NdefRecord
{
    /** The type name formats, numbered as NDEF 1.0 has them. */
    enum Format { Empty, WellKnown, Mime, Uri, External, Unknown, Unchanged };

    int format = Empty;
    QByteArray type;
    QByteArray id;
    QByteArray payload;
};

/**
 * Takes \a message apart as strictly as NDEF 1.0 allows: nothing when it is not just one conforming message.
 *
 * A decoder that forgives would have two programs see two messages in the same bytes.
 */
std::optional<QList<NdefRecord>> ndefRecords(const QByteArray &message);

#endif
