// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FUZZ_TAGS_H
#define CONNUI_FUZZ_TAGS_H

#include <optional>

#include <QByteArray>

#include "daemon/tags/ndefrecords.h"
#include "daemon/tags/tagaccess.h"
#include "support.h"
#include "virtualtag.h"

/** A card whose answers are the input: a byte for the length of each, an odd one for success besides. */
class FuzzedAnswers : public Exchange
{
public:
    explicit FuzzedAnswers(const QByteArray &input) : input(input) {}

    std::optional<QByteArray> transceive(const QByteArray &) override
    {
        ++commands;
        if (position >= input.size())
            return std::nullopt;
        const int length = quint8(input[position++]);
        const QByteArray answer = input.mid(position, length / 2);
        position += length / 2;
        return length % 2 ? answer + QByteArray::fromHex("9000") : answer;
    }

    int commands = 0;

private:
    const QByteArray input;
    qsizetype position = 0;
};

/** A virtual tag that leaves before the command of a number. */
class LeavingTag : public Exchange
{
public:
    LeavingTag(VirtualTag &tag, int leavesAt) : tag(tag), leavesAt(leavesAt) {}

    std::optional<QByteArray> transceive(const QByteArray &command) override
    {
        return commands++ < leavesAt ? std::optional(tag.answer(command)) : std::nullopt;
    }

    int commands = 0;

private:
    VirtualTag &tag;
    const int leavesAt;
};

constexpr int never = 10000;

inline qint64 noTime()
{
    return 0;
}

/** Reads a card whose answers are \a input, and tries to write it. */
inline void meetAnswers(CardKind kind, const QByteArray &input)
{
    FuzzedAnswers reading(input);
    const TagContents contents = readTag(reading, kind, noTime).contents;
    require(reading.commands <= LimitedExchange::mostCommands);
    require((contents.status == TagStatus::Done) == ndefRecords(contents.message).has_value());
    FuzzedAnswers writing(input);
    writeTag(writing, kind, QByteArray::fromHex("d1010455036f7267"), noTime);
    require(writing.commands <= 2 * LimitedExchange::mostCommands);
}

inline TagContents contentsOf(VirtualTag &tag, CardKind kind)
{
    LeavingTag whole(tag, never);
    const TagContents contents = readTag(whole, kind, noTime).contents;
    require(whole.commands <= LimitedExchange::mostCommands);
    return contents;
}

/** A message of one text record with a payload of \a size bytes. */
inline QByteArray fuzzedMessage(uint8_t size)
{
    return QByteArray::fromHex("d101") + char(size) + 'T' + QByteArray(size, 'a');
}

/** Writes \a message to \a tag, which leaves at the command \a leavesAt: it holds what it held, nothing, or
 * it. */
inline void meetTag(CardKind kind, VirtualTag &tag, int leavesAt, const QByteArray &message)
{
    const TagContents before = contentsOf(tag, kind);
    LeavingTag leaving(tag, leavesAt);
    const TagStatus status = writeTag(leaving, kind, message, noTime).contents.status;
    const TagContents after = contentsOf(tag, kind);
    require(status != TagStatus::Done || after.message == message);
    require(after.message.isEmpty() || after.message == before.message || after.message == message);
}

#endif
