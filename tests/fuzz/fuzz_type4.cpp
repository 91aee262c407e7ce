// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Takes the input for a tag of Type 4: for its answers, or for its capability container and its file, which
// is read, written to up to the moment when the tag leaves, and read again.
#include "tags.h"
#include "virtualtype4.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t headerSize = 3;
    if (size < headerSize)
        return 0;
    const QByteArray input = inputBytes(data + headerSize, size - headerSize);
    if (data[0] == 0) {
        meetAnswers(CardKind::Type4, input);
        return 0;
    }
    constexpr int containerSize = 15;
    VirtualType4 tag({{VirtualType4::containerFile, input.left(containerSize)},
                      {VirtualType4::messageFile, input.mid(containerSize)}});
    meetTag(CardKind::Type4, tag, data[2] == 255 ? never : data[2], fuzzedMessage(data[1]));
    return 0;
}
