// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_TAGEXCHANGE_H
#define CONNUI_TESTS_TAGEXCHANGE_H

#include <algorithm>
#include <functional>
#include <utility>

#include <QByteArrayList>

#include "daemon/tags/exchange.h"
#include "virtualtag.h"

/** A virtual tag on a reader that has no driver: it can leave at any command, and lie. */
class TagExchange : public Exchange
{
public:
    /** An answer in the place of the tag's \a answer to the command of that \a number; counted from 0. */
    using Lie = std::function<QByteArray(int number, const QByteArray &command, const QByteArray &answer)>;

    explicit TagExchange(VirtualTag &tag) : tag(tag) {}

    std::optional<QByteArray> transceive(const QByteArray &command) override
    {
        const int number = int(commands.size());
        commands.append(command);
        if (leavesAt >= 0 && number >= leavesAt)
            return std::nullopt;
        const QByteArray answer = tag.answer(command);
        return lie ? lie(number, command, answer) : answer;
    }

    /** The first command that was to write something. */
    int firstWrite() const
    {
        const auto writes = [](const QByteArray &command) { return command.at(1) == '\xd6'; };
        return int(std::find_if(commands.cbegin(), commands.cend(), writes) - commands.cbegin());
    }

    QByteArrayList commands;
    int leavesAt = -1; ///< The command that the tag does not get any more.
    Lie lie;

private:
    VirtualTag &tag;
};

#endif
