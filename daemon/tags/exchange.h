// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_EXCHANGE_H
#define CONNUI_DAEMON_TAGS_EXCHANGE_H

#include <optional>

#include <QByteArray>

/** Carries commands to a tag, and its answers back. */
class Exchange
{
public:
    virtual ~Exchange() = default;

    /** Sends \a command and returns the answer, status bytes included; nothing once the tag has gone. */
    virtual std::optional<QByteArray> transceive(const QByteArray &command) = 0;
};

#endif
