// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "support/foreigntext.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

#include <QChar>
#include <QStringList>

namespace Support {

namespace {

constexpr char32_t zeroWidthNonJoiner = 0x200c;
constexpr char32_t zeroWidthJoiner = 0x200d;
constexpr char32_t leftToRightEmbedding = 0x202a;
constexpr char32_t popDirectionalFormatting = 0x202c;
constexpr char32_t leftToRightIsolate = 0x2066;
constexpr char32_t popDirectionalIsolate = 0x2069;
constexpr char32_t enclosingKeycap = 0x20e3;
constexpr char32_t brailleBlank = 0x2800;
constexpr char32_t firstPictograph = 0x2190;
constexpr char32_t lastAscii = 0x7f;
constexpr int virama = 9; // As a combining class

struct Range
{
    char32_t first;
    char32_t last;
};

// Characters that are default ignorable in Unicode, but neither control nor format.
constexpr Range fillers[] = {{0x034f, 0x034f}, {0x115f, 0x1160}, {0x17b4, 0x17b5}, {0x2065, 0x2065},
                             {0x3164, 0x3164}, {0xffa0, 0xffa0}, {0xfff0, 0xfff8}, {0xe0000, 0xe0fff}};
// Format characters that are drawn, such as the signs that stand under a number.
constexpr Range drawnFormats[] = {{0x0600, 0x0605}, {0x06dd, 0x06dd},   {0x070f, 0x070f},  {0x0890, 0x0891},
                                  {0x08e2, 0x08e2}, {0x110bd, 0x110bd}, {0x110cd, 0x110cd}};
constexpr Range variationSelectors[] = {
    {0x180b, 0x180d}, {0x180f, 0x180f}, {0xfe00, 0xfe0f}, {0xe0100, 0xe01ef}};
constexpr Range skinTones[] = {{0x1f3fb, 0x1f3ff}};

template <size_t size>
bool isIn(const Range (&ranges)[size], char32_t character)
{
    return std::any_of(
        std::begin(ranges), std::end(ranges),
        [character](const Range &range) { return character >= range.first && character <= range.last; });
}

bool isPictograph(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return isIn(skinTones, character) || isIn(variationSelectors, character) ||
           (character >= firstPictograph &&
            (category == QChar::Symbol_Other || category == QChar::Symbol_Math));
}

bool isCursive(char32_t character)
{
    const QChar::JoiningType type = QChar::joiningType(character);
    return type == QChar::Joining_Dual || type == QChar::Joining_Right || type == QChar::Joining_Left;
}

// Indic scripts form clusters with a joiner, cursive ones end a stem, emoji are put together.
bool isNeededJoiner(char32_t before, char32_t character, char32_t after)
{
    if (QChar::combiningClass(before) == virama)
        return QChar::isLetter(after) || character == zeroWidthJoiner;
    if (character == zeroWidthNonJoiner)
        return isCursive(before) && isCursive(after);
    return isPictograph(before) && isPictograph(after) && !isIn(variationSelectors, after);
}

// The scripts and symbols that have variants; digits have one in a keycap.
bool isNeededSelector(char32_t before, char32_t after)
{
    if (before <= lastAscii)
        return after == enclosingKeycap;
    const QChar::Category category = QChar::category(before);
    return category == QChar::Letter_Other ||
           (QChar::script(before) == QChar::Script_Common && category != QChar::Other_Format &&
            category != QChar::Other_Control && category != QChar::Separator_Space);
}

bool isDrawable(char32_t before, char32_t character, char32_t after)
{
    if (character == zeroWidthJoiner || character == zeroWidthNonJoiner)
        return isNeededJoiner(before, character, after);
    if (isIn(variationSelectors, character))
        return isNeededSelector(before, after);
    if (isIn(fillers, character) || QChar::isNonCharacter(character))
        return false;
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Surrogate:
        return false;
    case QChar::Other_Format:
        return isIn(drawnFormats, character);
    default:
        return true;
    }
}

bool isBlank(const std::u32string &line)
{
    return std::all_of(
        line.cbegin(), line.cend(),
        [](char32_t character) { return QChar::isSpace(character) || character == brailleBlank; });
}

std::u32string drawableLine(const std::u32string &line)
{
    std::u32string drawable = line;
    for (size_t i = 0; i < line.size(); ++i) {
        const char32_t before = i > 0 ? line[i - 1] : 0;
        const char32_t after = i + 1 < line.size() ? line[i + 1] : 0;
        if (!isDrawable(before, line[i], after))
            drawable[i] = QChar::ReplacementCharacter;
    }
    return drawable;
}

// Lets what is between the first U+202A and the last U+202C be an isolate in drawable.
void isolateEmbedding(const std::u32string &line, std::u32string *drawable)
{
    const size_t begin = line.find(leftToRightEmbedding);
    const size_t end = line.rfind(popDirectionalFormatting);
    if (end == std::u32string::npos || end < begin)
        return;
    (*drawable)[begin] = leftToRightIsolate;
    (*drawable)[end] = popDirectionalIsolate;
}

} // namespace

QStringList paragraphs(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const QChar &end : {QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        text.replace(end, QChar(u'\n'));
    return text.split(QChar(u'\n'));
}

QString drawableForeignText(const QString &text)
{
    QStringList drawable;
    bool embeddingSeen = false;
    bool blankBefore = false;
    const QStringList lines = paragraphs(text);
    for (const QString &line : lines) {
        const std::u32string characters = line.toStdU32String();
        const bool blank = isBlank(characters);
        if (blank && blankBefore)
            continue;
        blankBefore = blank;
        std::u32string result = drawableLine(characters);
        if (!embeddingSeen && characters.find(leftToRightEmbedding) != std::u32string::npos) {
            isolateEmbedding(characters, &result);
            embeddingSeen = true;
        }
        drawable.append(QString::fromStdU32String(result));
    }
    return drawable.join(QLatin1Char('\n'));
}

} // namespace Support
