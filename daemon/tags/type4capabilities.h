// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TYPE4CAPABILITIES_H
#define CONNUI_DAEMON_TAGS_TYPE4CAPABILITIES_H

#include <optional>

#include <QByteArray>

/** The capability container of a Type 4 tag (NFCForum-TS-Type-4-Tag 2.0, section 5.1). */
struct Type4Capabilities
{
    /** The bytes of the container that are read: all of it up to the end of the first control block. */
    static constexpr int size = 15;

    int majorVersion = 0;
    int longestRead = 0;
    int longestWrite = 0;
    bool isExtended = false; ///< The message's file is of the kind that may be longer than 64 KiB.
    quint16 file = 0;        ///< The message's file.
    int fileSize = 0;        ///< Its size, the two bytes of the message's length included.
    bool isReadable = false;
    bool isWritable = false;

    /** Reads them from the \a container's first bytes; nothing when it contradicts itself. */
    static std::optional<Type4Capabilities> from(const QByteArray &container);
};

#endif
