// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_QUESTIONQUEUE_H
#define CONNUI_CLIENT_QUESTIONQUEUE_H

#include <functional>
#include <memory>
#include <vector>

#include <QList>
#include <QObject>
#include <QTimer>

#include "core/desktopnotification.h"
#include "core/question.h"

class Face;
class Request;

/**
 * Shows questions and notices to the user, one at a time.
 *
 * Requests have their turns in the order in which they came, and nothing covers their questions. Notices come
 * when no request is left, after them what goes on for some time, the newest first; either makes way for a
 * question and comes back after it.
 */
class QuestionQueue : public QObject
{
    Q_OBJECT

public:
    /** Returns the time in milliseconds, from any beginning. */
    using Clock = std::function<qint64()>;
    /** Takes the user's answer to a notice. */
    using Answered = std::function<void(const Answer &)>;

    /** At most so many requests wait for their turn; further ones are rejected. */
    static constexpr qsizetype capacity = 5;
    /** A request that has waited for so many milliseconds is rejected, unseen. */
    static constexpr qint64 patience = 60000;

    explicit QuestionQueue(Face *face, const Clock &clock = monotonicClock(), QObject *parent = nullptr);
    ~QuestionQueue() override;

    /** Takes a request, which has its turn after those that came before. */
    void add(std::unique_ptr<Request> request);

    /** Shows \a notice once; one that already waits or is visible is not shown again. */
    void tell(const Question &notice, const Answered &answered = {});

    /**
     * Shows \a notice in a notification of the desktop, in place of \a replaced, where no window of ours is
     * in front and the desktop has notifications; otherwise as tell(). Its button is taken as Answer::Yes.
     */
    void tellBeside(const Question &notice, const Answered &answered = {},
                    std::unique_ptr<DesktopNotification> replaced = {});

    /** Shows \a notice while there is nothing else to show, until it is answered or ended; returns its
     * number. */
    int begin(const Question &notice, const Answered &answered);

    /** Ends what begin() began. */
    void end(int number);

    /** Changes how much of a file has been received, in bytes, of what begin() began. */
    void setProgress(int number, quint64 received);

    /** Drops everything, unanswered. */
    void clear();

    /** Shows nothing, and lets nothing have its turn, while \a paused. */
    void setPaused(bool paused);
    bool isPaused() const;

    /** Returns how many requests and notices wait behind what is shown. */
    qsizetype waiting() const;

private:
    struct Entry
    {
        int number = 0; // of notices
        Question question;
        Answered answered;
        Request *request = nullptr; // of those that the daemon waits for
        qint64 arrival = 0;
        bool hasBegun = false;
        bool isReady = false;    // the question is there
        bool isAnswered = false; // and the request is busy with the answer
    };
    using Entries = std::vector<std::unique_ptr<Entry>>;

    static Clock monotonicClock();
    int append(Entries &entries, const Question &question, const Answered &answered);
    Entry *nextToShow() const;
    bool isWaiting(const Entry &entry) const;
    void makeRoomFor(const Request &request);
    void ask(Entry *entry, const Question &question);
    void forget(DesktopNotification *notification);
    void remove(Entries &entries, const Entry *entry);
    void release(Request *request);
    void answer(const Answer &answer);
    void advance();
    void dropStale();

    Face *const face;
    const Clock now;
    Entries requests;
    Entries notices;
    Entries ongoing;
    Entry *shown = nullptr;
    QTimer staleness;
    int nextNumber = 0;
    bool paused = false;
    QList<DesktopNotification *> beside; // the oldest first
};

#endif
