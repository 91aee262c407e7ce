// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_READERWORKER_H
#define CONNUI_DAEMON_PCSC_READERWORKER_H

#include <functional>
#include <memory>

#include <QByteArray>

class Exchange;

/** A thread that talks to the cards in one reader, one at a time. It sleeps while there is nothing to talk
 * about. */
class ReaderWorker
{
public:
    /** The end of a job. */
    enum class Outcome {
        Talked, ///< The card was talked to, as far as it answered.
        Held,   ///< Another program has the card.
        Gone    ///< There is no card, or no reader, or no pcscd.
    };

    /** Functions that are called on the worker's thread. */
    struct Job
    {
        std::function<void()> begun; ///< The card is ours now.
        std::function<void(Exchange &)> talk;
        std::function<void(Outcome)> ended;
    };

    explicit ReaderWorker(const QByteArray &reader);

    /** Interrupts its job, and ends the thread, without waiting for it. */
    ~ReaderWorker();

    ReaderWorker(const ReaderWorker &) = delete;
    ReaderWorker &operator=(const ReaderWorker &) = delete;

    /** Does \a job as soon as the one that is under way has ended, in the place of any other that waits for
     * that. */
    void start(const Job &job);

    /**
     * Has the job that is under way end as soon as pcscd lets it: for who talks it is as if the card had
     * gone.
     *
     * An answer of the card that is under way is waited for, a transaction that cannot begin is not. pcscd
     * does not let go of who connects to a card that is in another one's transaction, until that ends.
     */
    void interrupt();

    /** Interrupts the job that is under way, and forgets the one that waits. */
    void cancel();

private:
    struct Work;

    const std::shared_ptr<Work> work;
};

#endif
