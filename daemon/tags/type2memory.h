// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TYPE2MEMORY_H
#define CONNUI_DAEMON_TAGS_TYPE2MEMORY_H

#include <optional>

#include <QByteArray>
#include <QHash>

#include "daemon/tags/carddialogue.h"

/** The memory of a Type 2 tag, of which each 16 bytes are read at most once. */
class Type2Memory
{
public:
    static constexpr int pageSize = 4;
    /** Readers address a page by one byte; what lies beyond takes a command that they do not offer. */
    static constexpr int size = 256 * pageSize;

    explicit Type2Memory(Exchange &exchange);

    /** The byte at \a address; nothing, with a fault(), when it cannot be read. */
    std::optional<quint8> at(int address);

    /** Writes four bytes to the page that begins at \a address; returns whether the tag has taken them. */
    bool writePage(int address, const QByteArray &bytes);

    /** Why at() or writePage() has failed last. */
    TagStatus fault() const;

private:
    CardDialogue card;
    QHash<int, QByteArray> blocks; // by their number
    TagStatus lastFault = TagStatus::Done;
};

#endif
