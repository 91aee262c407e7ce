// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_TYPE4TAG_H
#define CONNUI_DAEMON_TAGS_TYPE4TAG_H

#include "daemon/tags/carddialogue.h"
#include "daemon/tags/tag.h"
#include "daemon/tags/type4capabilities.h"

/**
 * A tag of NFC Forum Type 4 (NFCForum-TS-Type-4-Tag 2.0): an application with files, one of which
 * holds the message behind its length.
 */
class Type4Tag : public Tag
{
public:
    explicit Type4Tag(Exchange &exchange);

    TagContents read() override;
    TagStatus write(const QByteArray &message) override;

private:
    TagStatus selectMessage();
    TagStatus malformed() const;
    TagStatus writeFault(bool isUntouched) const;
    bool update(int offset, const QByteArray &data);

    CardDialogue card;
    Type4Capabilities capabilities;
};

#endif
