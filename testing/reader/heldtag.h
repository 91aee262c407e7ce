// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTING_HELDTAG_H
#define CONNUI_TESTING_HELDTAG_H

#include <atomic>
#include <chrono>
#include <thread>

#include <QByteArray>
#include <QString>

#include "virtualtag.h"

/**
 * A tag that is held against a reader of with-reader, from its construction until it leaves.
 *
 * It answers on a thread of its own: the \a tag must not be looked at before it has left.
 */
class HeldTag
{
public:
    /** The events on the reader. Commands are counted from 0. */
    struct Fate
    {
        int leavesAt = -1; ///< The command that it does not answer any more.
        int hangsAt = -1;  ///< The command that it answers late.
        std::chrono::milliseconds hangsFor{};
    };

    /** Holds \a tag against the reader \a number. */
    HeldTag(VirtualTag &tag, const Fate &fate, int number = 0);
    explicit HeldTag(VirtualTag &tag, int number = 0);
    ~HeldTag();

    HeldTag(const HeldTag &) = delete;
    HeldTag &operator=(const HeldTag &) = delete;

    /** Takes it away, if it has not left. */
    void leave();

    /** The number of commands so far. */
    int commands() const;

private:
    void live();
    bool answer(const QByteArray &command);

    VirtualTag &tag;
    const Fate fate;
    const int socket;
    std::atomic<int> count = 0;
    std::thread life;
};

/** A hand that has pulled a reader's plug, for as long as it lives. */
class PulledReader
{
public:
    explicit PulledReader(int number = 0);
    ~PulledReader();

    PulledReader(const PulledReader &) = delete;
    PulledReader &operator=(const PulledReader &) = delete;

private:
    const int socket;
};

#endif
