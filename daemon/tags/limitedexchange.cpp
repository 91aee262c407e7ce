// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/limitedexchange.h"

LimitedExchange::LimitedExchange(Exchange &exchange, const Clock &clock)
    : exchange(exchange)
    , clock(clock)
    , end(clock() + mostMilliseconds)
{}

std::optional<QByteArray> LimitedExchange::transceive(const QByteArray &command)
{
    exhausted = exhausted || commands == mostCommands;
    if (ended || exhausted)
        return std::nullopt;
    ++commands;
    std::optional<QByteArray> answer = exchange.transceive(command);
    ended = !answer || answer->isEmpty();
    if (ended)
        return std::nullopt;
    bytes += answer->size();
    exhausted = bytes > mostBytes || clock() >= end;
    if (exhausted)
        return std::nullopt;
    return answer;
}

bool LimitedExchange::isExhausted() const
{
    return exhausted;
}
