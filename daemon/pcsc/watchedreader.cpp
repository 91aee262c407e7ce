// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/watchedreader.h"

namespace {

/** Looks at a card that is not counted yet. A pcscd that counts at all is quicker than that. */
constexpr int mostLooks = 100;

/** The upper half is a counter: between two looks a card may have left and another one come. */
DWORD events(DWORD state)
{
    return state >> 16;
}

} // namespace

WatchedReader::WatchedReader(const QByteArray &name) : reader(name) {}

const QByteArray &WatchedReader::name() const
{
    return reader;
}

DWORD WatchedReader::state() const
{
    return reported;
}

QByteArray WatchedReader::atr() const
{
    return answer;
}

void WatchedReader::look(DWORD state, const QByteArray &atr)
{
    const DWORD newState = state & ~DWORD(SCARD_STATE_CHANGED);
    // As long as the old state is kept, pcscd reports again at once.
    if (!isCounted(newState) && ++looksBeforeTheCount < mostLooks)
        return;
    looksBeforeTheCount = 0;
    reported = newState;
    answer = atr;
}

bool WatchedReader::isUsable() const
{
    return reported != SCARD_STATE_UNAWARE && !(reported & (SCARD_STATE_UNKNOWN | SCARD_STATE_UNAVAILABLE));
}

bool WatchedReader::hasCard() const
{
    return isUsable() && (reported & SCARD_STATE_PRESENT) && !(reported & SCARD_STATE_MUTE) &&
           !answer.isEmpty();
}

bool WatchedReader::hasLostCard(const WatchedReader &before) const
{
    return before.hasCard() && (!hasCard() || events(reported) != events(before.reported));
}

bool WatchedReader::hasNewCard(const WatchedReader &before) const
{
    return hasCard() && (!before.hasCard() || events(reported) != events(before.reported));
}

// pcscd shows a card that comes, and counts it a moment later. To a look in between, the count would be
// another card.
bool WatchedReader::isCounted(DWORD newState) const
{
    const bool wasEmpty = isUsable() && !(reported & SCARD_STATE_PRESENT);
    const bool isTaken = newState & SCARD_STATE_PRESENT;
    return !wasEmpty || !isTaken || events(newState) != events(reported);
}
