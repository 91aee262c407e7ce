// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TAGSTATUS_H
#define CONNUI_DAEMON_TAGS_TAGSTATUS_H

/** The end of a try to read or to write a tag. */
enum class TagStatus {
    Done,         ///< Read, or written and read back equal.
    Empty,        ///< There is room for a message, and none in it.
    NotFormatted, ///< The tag's memory has not been laid out for messages.
    Malformed,    ///< The tag contradicts itself, or its content is not an NDEF message.
    Unsupported,  ///< A tag that this daemon does not know how to read.
    ReadOnly,     ///< The tag takes no message.
    TooSmall,     ///< The message is longer than the tag's room for it.
    Refused,      ///< The tag is there, and has refused a command or kept something else than was written.
    Gone,         ///< The tag left before the end, and before anything was written.
    Torn,         ///< The tag left in mid-write: it holds what it held, nothing, or the message.
};

#endif
