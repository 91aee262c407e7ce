// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TAG_H
#define CONNUI_DAEMON_TAGS_TAG_H

#include <QByteArray>

#include "daemon/tags/tagstatus.h"

/** The result of reading a tag: the message when the status is Done, and nothing otherwise. */
struct TagContents
{
    TagStatus status = TagStatus::Gone;
    QByteArray message;
};

/** A tag of one of the NFC Forum's types, at the other end of an exchange. */
class Tag
{
public:
    virtual ~Tag() = default;

    /** Reads the message, whatever bytes it is of. */
    virtual TagContents read() = 0;

    /**
     * Puts \a message in the place of what the tag holds.
     *
     * The message's length is cleared first and written last, so a tag that is Torn away in between is empty.
     */
    virtual TagStatus write(const QByteArray &message) = 0;
};

#endif
