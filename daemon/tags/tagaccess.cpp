// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/tagaccess.h"

#include <memory>

#include "daemon/tags/cardcommand.h"
#include "daemon/tags/carddialogue.h"
#include "daemon/tags/ndefrecords.h"
#include "daemon/tags/type2tag.h"
#include "daemon/tags/type4tag.h"

namespace {

constexpr int statusSize = 2;

// Of any length.
QByteArray uidOf(Exchange &exchange)
{
    const QByteArray answer = exchange.transceive(CardCommand::uid()).value_or(QByteArray());
    return answer.size() > statusSize && answer.endsWith(QByteArrayView("\x90\x00", statusSize))
               ? answer.chopped(statusSize)
               : QByteArray();
}

CardKind askedKind(Exchange &exchange, const QByteArray &uid)
{
    constexpr int length = 16;
    const std::optional<QByteArray> page3 = CardDialogue(exchange).ask(CardCommand::readPages(3), length);
    return page3 && mayBeType2(uid, *page3) ? CardKind::Type2 : CardKind::Foreign;
}

std::unique_ptr<Tag> tagOf(CardKind kind, Exchange &exchange)
{
    if (kind == CardKind::Type2)
        return std::make_unique<Type2Tag>(exchange);
    if (kind == CardKind::Type4)
        return std::make_unique<Type4Tag>(exchange);
    return nullptr;
}

} // namespace

TagReading readTag(Exchange &exchange, CardKind kind, const LimitedExchange::Clock &clock)
{
    TagReading reading{kind, {}, {TagStatus::Unsupported, {}}};
    if (kind == CardKind::Foreign || kind == CardKind::Unsupported)
        return reading;
    LimitedExchange limited(exchange, clock);
    const QByteArray uid = uidOf(limited);
    if (!isRandom(uid))
        reading.uid = uid;
    if (kind == CardKind::Untold)
        reading.kind = askedKind(limited, uid);
    if (const std::unique_ptr<Tag> tag = tagOf(reading.kind, limited))
        reading.contents = tag->read();
    if (reading.contents.status == TagStatus::Done && !ndefRecords(reading.contents.message))
        reading.contents = {TagStatus::Malformed, {}};
    if (limited.isExhausted())
        reading.contents = {TagStatus::Unsupported, {}};
    return reading;
}

TagReading writeTag(Exchange &exchange, CardKind kind, const QByteArray &message,
                    const LimitedExchange::Clock &clock)
{
    if (kind == CardKind::Untold) {
        LimitedExchange limited(exchange, clock);
        kind = askedKind(limited, uidOf(limited));
    }
    LimitedExchange limited(exchange, clock);
    const std::unique_ptr<Tag> tag = tagOf(kind, limited);
    if (!tag)
        return {kind, {}, {TagStatus::Unsupported, {}}};
    TagStatus written = tag->write(message);
    if (written != TagStatus::Done && limited.isExhausted())
        written = TagStatus::Refused;
    if (written != TagStatus::Done)
        return {kind, {}, {written, {}}};
    TagReading reading = readTag(exchange, kind, clock);
    if (reading.contents.status == TagStatus::Gone)
        reading.contents.status = TagStatus::Torn;
    else if (reading.contents.message != message)
        reading.contents = {TagStatus::Refused, {}};
    return reading;
}
