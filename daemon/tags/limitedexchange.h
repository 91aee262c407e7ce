// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_LIMITEDEXCHANGE_H
#define CONNUI_DAEMON_TAGS_LIMITEDEXCHANGE_H

#include <functional>

#include "daemon/tags/exchange.h"

/**
 * An exchange that a tag cannot drag out.
 *
 * It ends as if the tag had gone after 300 commands, after 64 KiB of answers, or 5 seconds after it was made.
 * An answer without a byte ends it too: some drivers report in that way that the tag has gone.
 */
class LimitedExchange : public Exchange
{
public:
    /** Milliseconds of a clock that never goes back. */
    using Clock = std::function<qint64()>;

    static constexpr int mostCommands = 300;
    static constexpr qint64 mostBytes = qint64(64) * 1024;
    static constexpr qint64 mostMilliseconds = 5000;

    LimitedExchange(Exchange &exchange, const Clock &clock);

    std::optional<QByteArray> transceive(const QByteArray &command) override;

    /** Whether it ended because of a limit. */
    bool isExhausted() const;

private:
    Exchange &exchange;
    const Clock clock;
    const qint64 end;
    int commands = 0;
    qint64 bytes = 0;
    bool ended = false;
    bool exhausted = false;
};

#endif
