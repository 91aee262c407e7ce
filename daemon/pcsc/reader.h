// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_READER_H
#define CONNUI_DAEMON_PCSC_READER_H

#include <functional>
#include <memory>

#include <QObject>
#include <QTimer>

#include "daemon/pcsc/readerworker.h"

class Mailbox;

/**
 * One reader, whose cards are talked to on a thread of its own.
 *
 * Nothing here waits. A card that another program has is tried again and again, one that does not answer is
 * given up after five seconds.
 */
class Reader : public QObject
{
    Q_OBJECT

public:
    /** A function for the worker's thread, which is over when it returns. */
    using Talk = std::function<void(Exchange &)>;

    explicit Reader(const QString &name, QObject *parent = nullptr);
    ~Reader() override;

    /** Has \a talk made to the card in the reader as soon as it can be had, in the place of any other talk.
     */
    void start(const Talk &talk);

    /** Ends the talk that is under way, or still to begin. */
    void stop();

Q_SIGNALS:
    /** The card has not answered in time; its talk is over for this thread. */
    void gaveUp();

private:
    void tryToTalk();
    void begun(int number);
    void ended(int number, ReaderWorker::Outcome outcome);
    void runOutOfPatience();

    const std::shared_ptr<Mailbox> mailbox;
    ReaderWorker worker;
    Talk talk; // empty when there is none
    int tries = 0;
    bool isTalking = false;
    QTimer patience;
    QTimer pause;
};

#endif
