// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/cardkind.h"

#include <algorithm>
#include <iterator>

namespace {

// "3B 8F 80 01 80 4F 0C A0 00 00 03 06 SS NN NN 00 00 00 00 TCK": a storage card named NN NN.
constexpr QByteArrayView storageCard("\x3b\x8f\x80\x01\x80\x4f\x0c\xa0\x00\x00\x03\x06", 12);
constexpr int storageCardSize = 20;
constexpr int storageCardName = 13;
constexpr quint16 type2Names[] = {
    0x0003, // Ultralight
    0x003a, // Ultralight C
    0x003d, // Ultralight EV1
};

// "3B 8n 80 01 H... TCK": a card that speaks ISO 14443-4, with n historical bytes of its own.
constexpr int historyOffset = 4;
constexpr QByteArrayView type4Histories[] = {
    {"", 0},     // most tags of Type 4, and phones that act as one
    {"\x80", 1}, // DESFire and its smaller kin, NTAG 4xx among them
};

// No answer, from readers that are told apart by their name.
constexpr QByteArrayView noAnswer("\x3b\x00", 2);
constexpr QLatin1String silentReaders[] = {QLatin1String("ACR122")};

template <typename List, typename Value>
bool contains(const List &list, const Value &value)
{
    return std::find(std::begin(list), std::end(list), value) != std::end(list);
}

bool speaksIso14443(const QByteArray &atr)
{
    return atr.size() > historyOffset && quint8(atr[0]) == 0x3b && (quint8(atr[1]) & 0xf0) == 0x80 &&
           quint8(atr[2]) == 0x80 && quint8(atr[3]) == 0x01 &&
           atr.size() == historyOffset + (atr[1] & 0x0f) + 1;
}

bool isSilent(const QString &reader)
{
    return std::any_of(
        std::begin(silentReaders), std::end(silentReaders),
        [&reader](QLatin1String name) { return reader.contains(name); });
}

} // namespace

CardKind cardKind(const QByteArray &atr, const QString &reader)
{
    if (atr.startsWith(storageCard) && atr.size() == storageCardSize) {
        const quint16 name = quint8(atr[storageCardName]) << 8 | quint8(atr[storageCardName + 1]);
        return contains(type2Names, name) ? CardKind::Type2 : CardKind::Unsupported;
    }
    if (speaksIso14443(atr)) {
        const QByteArrayView history = QByteArrayView(atr).sliced(historyOffset).chopped(1);
        return contains(type4Histories, history) ? CardKind::Type4 : CardKind::Foreign;
    }
    return atr == noAnswer && isSilent(reader) ? CardKind::Untold : CardKind::Foreign;
}

bool mayBeType2(const QByteArray &uid, const QByteArray &page3)
{
    constexpr int uidSize = 7;
    constexpr char formatted = '\xe1';
    return uid.size() == uidSize && page3.startsWith(formatted);
}

bool isRandom(const QByteArray &uid)
{
    return uid.size() == 4 && uid.front() == '\x08';
}
