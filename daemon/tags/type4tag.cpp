// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/type4tag.h"

#include <algorithm>

#include "daemon/tags/cardcommand.h"
#include "daemon/tags/limitedexchange.h"

namespace {

constexpr char applicationName[] = "\xd2\x76\x00\x00\x85\x01\x01";
constexpr quint16 containerFile = 0xe103;
constexpr int lengthSize = 2;
/** The largest payload of a short command. */
constexpr int longestTransfer = 255;
/** The part of a file that its offsets reach. */
constexpr int reach = 0x8000;
/** Of the commands of one try, those that do not carry a part of the message. */
constexpr int otherCommands = 10;

} // namespace

Type4Tag::Type4Tag(Exchange &exchange) : card(exchange) {}

TagContents Type4Tag::read()
{
    const TagStatus status = selectMessage();
    if (status != TagStatus::Done)
        return {status, {}};
    const std::optional<QByteArray> lengthBytes =
        card.ask(CardCommand::readBinary(0, lengthSize), lengthSize);
    if (!lengthBytes)
        return {malformed(), {}};
    const int length = quint8(lengthBytes->at(0)) << 8 | quint8(lengthBytes->at(1));
    if (length == 0)
        return {TagStatus::Empty, {}};
    if (length > capabilities.fileSize - lengthSize)
        return {TagStatus::Malformed, {}};
    if (length > reach - lengthSize)
        return {TagStatus::Unsupported, {}};

    QByteArray message;
    while (message.size() < length) {
        const int part = std::min({length - int(message.size()), capabilities.longestRead, longestTransfer});
        const std::optional<QByteArray> bytes =
            card.ask(CardCommand::readBinary(lengthSize + int(message.size()), part), part);
        if (!bytes)
            return {malformed(), {}};
        message += *bytes;
    }
    return {TagStatus::Done, message};
}

TagStatus Type4Tag::write(const QByteArray &message)
{
    const TagStatus status = selectMessage();
    if (status != TagStatus::Done)
        return status;
    if (!capabilities.isWritable)
        return TagStatus::ReadOnly;
    const int part = std::min(capabilities.longestWrite, longestTransfer);
    const qsizetype room = std::min({capabilities.fileSize - lengthSize, reach - lengthSize,
                                     part * (LimitedExchange::mostCommands - otherCommands)});
    if (message.size() > room)
        return TagStatus::TooSmall;

    if (!update(0, QByteArray(lengthSize, '\0')))
        return writeFault(true);
    for (int offset = 0; offset < message.size(); offset += part)
        if (!update(lengthSize + offset, message.mid(offset, part)))
            return writeFault(false);
    const QByteArray length = QByteArray(1, char(message.size() >> 8)) + char(message.size());
    return update(0, length) ? TagStatus::Done : writeFault(false);
}

// Has the file of the message selected.
TagStatus Type4Tag::selectMessage()
{
    if (!card.tell(CardCommand::selectApplication(QByteArray::fromRawData(applicationName, 7))))
        return card.fault() == TagStatus::Gone ? TagStatus::Gone : TagStatus::Unsupported;
    if (!card.tell(CardCommand::selectFile(containerFile)))
        return malformed();
    const std::optional<QByteArray> container =
        card.ask(CardCommand::readBinary(0, Type4Capabilities::size), Type4Capabilities::size);
    if (!container)
        return malformed();
    const std::optional<Type4Capabilities> found = Type4Capabilities::from(*container);
    if (!found)
        return TagStatus::Malformed;
    capabilities = *found;
    const bool isKnownVersion = capabilities.majorVersion >= 1 && capabilities.majorVersion <= 3;
    if (!isKnownVersion || capabilities.isExtended || !capabilities.isReadable)
        return TagStatus::Unsupported;
    return card.tell(CardCommand::selectFile(capabilities.file)) ? TagStatus::Done : malformed();
}

TagStatus Type4Tag::malformed() const
{
    return card.fault() == TagStatus::Gone ? TagStatus::Gone : TagStatus::Malformed;
}

TagStatus Type4Tag::writeFault(bool isUntouched) const
{
    if (card.fault() == TagStatus::Gone)
        return TagStatus::Torn;
    return isUntouched ? TagStatus::ReadOnly : TagStatus::Refused;
}

bool Type4Tag::update(int offset, const QByteArray &data)
{
    return card.tell(CardCommand::updateBinary(offset, data));
}
