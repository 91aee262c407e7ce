// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/carddialogue.h"

#include "daemon/tags/exchange.h"

namespace {

constexpr QByteArrayView successStatus("\x90\x00", 2);

} // namespace

CardDialogue::CardDialogue(Exchange &exchange) : exchange(exchange) {}

std::optional<QByteArray> CardDialogue::ask(const QByteArray &command, int length)
{
    std::optional<QByteArray> answer = done(command);
    if (!answer || answer->size() == length)
        return answer;
    lastFault = TagStatus::Malformed;
    return std::nullopt;
}

bool CardDialogue::tell(const QByteArray &command)
{
    return done(command).has_value();
}

TagStatus CardDialogue::fault() const
{
    return lastFault;
}

std::optional<QByteArray> CardDialogue::done(const QByteArray &command)
{
    std::optional<QByteArray> answer = transceive(command);
    if (answer && firstDone.isEmpty())
        firstDone = command;
    if (answer || lastFault != TagStatus::Refused || firstDone.isEmpty())
        return answer;
    if (transceive(firstDone))
        lastFault = TagStatus::Refused;
    else if (lastFault == TagStatus::Refused)
        lastFault = TagStatus::Gone;
    return std::nullopt;
}

// Returns the answer without its status.
std::optional<QByteArray> CardDialogue::transceive(const QByteArray &command)
{
    const std::optional<QByteArray> answer = exchange.transceive(command);
    if (!answer)
        lastFault = TagStatus::Gone;
    else if (answer->size() < successStatus.size())
        lastFault = TagStatus::Malformed;
    else if (!answer->endsWith(successStatus))
        lastFault = TagStatus::Refused;
    else
        return answer->chopped(successStatus.size());
    return std::nullopt;
}
