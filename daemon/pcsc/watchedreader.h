// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_WATCHEDREADER_H
#define CONNUI_DAEMON_PCSC_WATCHEDREADER_H

#include <winscard.h>

#include <QByteArray>

/** A reader, as pcscd reported it last. */
class WatchedReader
{
public:
    explicit WatchedReader(const QByteArray &name);

    /** Lives as long as this object. */
    const QByteArray &name() const;

    /** The state to compare with at the next look: SCARD_STATE_UNAWARE before the first one. */
    DWORD state() const;

    /** The answer to reset of the card, or nothing. */
    QByteArray atr() const;

    /** Takes what pcscd reports: \a state, and the answer to reset of the card. */
    void look(DWORD state, const QByteArray &atr);

    bool isUsable() const;

    /** Whether there is a card that answers. */
    bool hasCard() const;

    /** Whether the card that was there \a before is not any more. */
    bool hasLostCard(const WatchedReader &before) const;

    /** Whether there is a card that was not there \a before. */
    bool hasNewCard(const WatchedReader &before) const;

private:
    bool isCounted(DWORD newState) const;

    QByteArray reader;
    DWORD reported = SCARD_STATE_UNAWARE;
    QByteArray answer;
    int looksBeforeTheCount = 0;
};

#endif
