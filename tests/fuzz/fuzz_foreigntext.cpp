// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Takes the input for a text on a tag and for the name of a device or a file, and stops where it could steer
// how the sentences around it are drawn, or hide a part of itself.
#include <algorithm>

#include <QTextBoundaryFinder>

#include <NfcForeignText>

#include "support.h"

namespace {

constexpr int mostCharacters = 64;
constexpr char32_t firstStrongIsolate = 0x2068;
constexpr char32_t popDirectionalIsolate = 0x2069;

// Controls of terminals and lines, of direction, and letters that nobody sees.
bool mayHideOrSteer(char32_t character)
{
    return character < 0x20 || (character >= 0x7f && character < 0xa0) || character == 0xad ||
           character == 0x34f || character == 0x61c || character == 0x180e || character == 0x200b ||
           (character >= 0x200e && character <= 0x200f) || (character >= 0x2028 && character <= 0x202e) ||
           (character >= 0x2060 && character <= 0x206f) || character == 0xfeff || character == 0x3164 ||
           (character >= 0xe0000 && character < 0xe0100);
}

int charactersOf(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int found = 0;
    while (finder.toNextBoundary() > 0)
        ++found;
    return found;
}

bool isOrdinary(const QString &name)
{
    return !name.isEmpty() && name.size() <= mostCharacters && name == name.simplified() &&
           std::all_of(
               name.cbegin(), name.cend(), [](QChar c) { return c.unicode() > 0x1f && c.unicode() < 0x7f; });
}

void checkName(const QString &name)
{
    const QString fit = ConnUi::foreignName(name, QStringLiteral("nobody"));
    require(!fit.isEmpty());
    require(!isOrdinary(name) || fit == name);
    std::u32string inside = fit.toStdU32String();
    // It is isolated as a whole or not at all.
    if (inside.front() == firstStrongIsolate) {
        require(inside.size() > 2 && inside.back() == popDirectionalIsolate);
        inside = inside.substr(1, inside.size() - 2);
    }
    require(std::none_of(inside.cbegin(), inside.cend(), mayHideOrSteer));
    require(charactersOf(QString::fromStdU32String(inside)) <= mostCharacters);
}

void checkText(const QString &text)
{
    const QString drawn = ConnUi::foreignText(text);
    require(!drawn.contains(QStringLiteral("\n\n\n")));
    int isolates = 0;
    for (const char32_t character : drawn.toStdU32String()) {
        // A number of ours may be isolated in it, once.
        if (character == 0x2066)
            ++isolates;
        else if (character == popDirectionalIsolate)
            --isolates;
        else
            require(character == '\n' || !mayHideOrSteer(character));
        require(isolates == 0 || isolates == 1);
    }
    require(isolates == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(inputBytes(data, size));
    checkName(text);
    checkText(text);
    return 0;
}
