// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/type4capabilities.h"

#include <algorithm>
#include <iterator>

namespace {

// Identifiers that ISO 7816-4 and the NFC Forum keep for other things.
constexpr quint16 reservedFiles[] = {0x0000, 0x3f00, 0x3fff, 0xe102, 0xe103, 0xffff};
constexpr int leastFileSize = 5;
constexpr int reservedFileSize = 0xffff;
constexpr int leastRead = 15;
constexpr int freeAccess = 0x00;

enum ControlBlock { FileControl = 0x04, ExtendedFileControl = 0x06 };
constexpr int fileControlLength = 6;
constexpr int extendedFileControlLength = 8;

bool isReserved(quint16 file)
{
    return std::find(std::begin(reservedFiles), std::end(reservedFiles), file) != std::end(reservedFiles);
}

} // namespace

std::optional<Type4Capabilities> Type4Capabilities::from(const QByteArray &container)
{
    if (container.size() < size)
        return std::nullopt;
    const auto byte = [&container](int i) { return int(quint8(container.at(i))); };
    const auto word = [&byte](int i) { return byte(i) << 8 | byte(i + 1); };

    Type4Capabilities found;
    found.majorVersion = byte(2) >> 4;
    found.longestRead = word(3);
    found.longestWrite = word(5);
    found.isExtended = byte(7) == ExtendedFileControl && byte(8) == extendedFileControlLength;
    found.file = quint16(word(9));
    found.fileSize = word(11);
    found.isReadable = byte(13) == freeAccess;
    found.isWritable = byte(14) == freeAccess;
    const bool isPlain = byte(7) == FileControl && byte(8) == fileControlLength;
    const bool isSound = word(0) >= size && found.longestRead >= leastRead && found.longestWrite > 0 &&
                         (isPlain || found.isExtended) && !isReserved(found.file) &&
                         found.fileSize >= leastFileSize && found.fileSize != reservedFileSize;
    return isSound ? std::optional(found) : std::nullopt;
}
