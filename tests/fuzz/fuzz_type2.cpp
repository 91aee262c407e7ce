// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Takes the input for a tag of Type 2: for its answers, or for its memory, which is read, written to up to
// the moment when the tag leaves, and read again.
#include <algorithm>

#include "tags.h"
#include "virtualtype2.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t headerSize = 3;
    if (size < headerSize)
        return 0;
    const QByteArray input = inputBytes(data + headerSize, size - headerSize);
    if (data[0] == 0) {
        meetAnswers(CardKind::Type2, input);
        return 0;
    }
    VirtualType2 tag((input + QByteArray(64, '\0')).first(std::min<qsizetype>(input.size() + 64, 2048)));
    meetTag(CardKind::Type2, tag, data[2] == 255 ? never : data[2], fuzzedMessage(data[1]));
    return 0;
}
