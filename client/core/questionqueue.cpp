// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/questionqueue.h"

#include <algorithm>
#include <utility>

#include <QElapsedTimer>

#include "core/clientlog.h"
#include "core/face.h"
#include "core/request.h"

namespace {

constexpr int glance = 1000; // milliseconds: how often the waiting requests are looked through

bool saysTheSame(const Question &one, const Question &other)
{
    return one.kind == other.kind && one.title == other.title && one.notes == other.notes &&
           one.data == other.data;
}

} // namespace

QuestionQueue::QuestionQueue(Face *face, const Clock &clock, QObject *parent)
    : QObject(parent)
    , face(face)
    , now(clock)
{
    staleness.setInterval(glance);
    connect(&staleness, &QTimer::timeout, this, &QuestionQueue::dropStale);
    connect(face, &Face::answered, this, &QuestionQueue::answer);
}

QuestionQueue::~QuestionQueue()
{
    clear();
}

QuestionQueue::Clock QuestionQueue::monotonicClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

void QuestionQueue::add(std::unique_ptr<Request> request)
{
    for (const auto &entry : requests) {
        if (!entry->isAnswered && entry->request->isSameAs(*request)) {
            entry->request->join(*request);
            return;
        }
    }
    makeRoomFor(*request);
    if (std::count_if(requests.cbegin(), requests.cend(),
                      [this](const auto &entry) { return isWaiting(*entry); }) >= capacity) {
        qCWarning(clientLog, "Too many requests are waiting: rejecting another one");
        request->reject();
        return;
    }

    auto added = std::make_unique<Entry>();
    Entry *entry = added.get();
    entry->arrival = now();
    entry->request = request.release();
    entry->request->setParent(this);
    connect(
        entry->request, &Request::asks, this,
        [this, entry](const Question &question) { ask(entry, question); });
    connect(
        entry->request, &Request::tells, this, [this](const Question &notice) { tell(notice); });
    connect(entry->request, &Request::done, this, [this, entry] { remove(requests, entry); });
    requests.push_back(std::move(added));
    staleness.start();
    advance();
}

// The request that a newer one replaces is rejected before anything else is answered.
void QuestionQueue::makeRoomFor(const Request &request)
{
    const auto replaced = std::find_if(requests.cbegin(), requests.cend(), [&](const auto &entry) {
        return isWaiting(*entry) && entry->request->isReplacedBy(request);
    });
    if (replaced == requests.cend())
        return;
    (*replaced)->request->reject();
    remove(requests, replaced->get());
}

void QuestionQueue::tell(const Question &notice, const Answered &answered)
{
    const bool isTold = std::any_of(notices.cbegin(), notices.cend(), [&notice](const auto &entry) {
        return saysTheSame(entry->question, notice);
    });
    if (isTold || qsizetype(notices.size()) > capacity)
        return;
    append(notices, notice, answered);
    advance();
}

void QuestionQueue::tellBeside(const Question &notice, const Answered &answered,
                               std::unique_ptr<DesktopNotification> replaced)
{
    if (paused || face->isInFront()) {
        tell(notice, answered);
        return;
    }
    // A device that sends a lot does not fill the desktop.
    if (beside.size() >= capacity)
        forget(beside.constFirst());
    DesktopNotification *notification = replaced ? replaced.release() : new DesktopNotification;
    notification->setParent(this);
    beside.append(notification);
    connect(
        notification, &DesktopNotification::pressed, this,
        [this, notification, notice, answered] {
            forget(notification);
            if (paused)
                tell(notice, answered);
            else if (answered)
                answered({Answer::Yes, {}});
        });
    connect(notification, &DesktopNotification::closed, this, [this, notification] { forget(notification); });
    connect(notification, &DesktopNotification::failed, this, [this, notification, notice, answered] {
        forget(notification);
        tell(notice, answered);
    });
    notification->show(notice);
}

void QuestionQueue::forget(DesktopNotification *notification)
{
    beside.removeOne(notification);
    notification->disconnect(this);
    notification->deleteLater();
}

int QuestionQueue::begin(const Question &notice, const Answered &answered)
{
    const int number = append(ongoing, notice, answered);
    advance();
    return number;
}

int QuestionQueue::append(Entries &entries, const Question &question, const Answered &answered)
{
    auto entry = std::make_unique<Entry>();
    entry->number = nextNumber++;
    entry->question = question;
    entry->answered = answered;
    entries.push_back(std::move(entry));
    return entries.back()->number;
}

void QuestionQueue::end(int number)
{
    const auto ended = std::find_if(ongoing.cbegin(), ongoing.cend(),
                                    [number](const auto &entry) { return entry->number == number; });
    if (ended != ongoing.cend())
        remove(ongoing, ended->get());
}

void QuestionQueue::setProgress(int number, quint64 received)
{
    for (const auto &entry : ongoing) {
        if (entry->number != number)
            continue;
        entry->question.file.received = received;
        if (shown == entry.get())
            face->setProgress(received, entry->question.file.size);
    }
}

void QuestionQueue::clear()
{
    // Before it is gone: nothing points to it afterwards, even if the face should answer.
    if (std::exchange(shown, nullptr))
        face->withdraw();
    notices.clear();
    ongoing.clear();
    for (const auto &entry : std::exchange(requests, {}))
        release(entry->request);
    staleness.stop();
    advance();
}

void QuestionQueue::setPaused(bool pause)
{
    // A message that makes way waits again.
    if (pause && shown)
        shown->arrival = now();
    paused = pause;
    advance();
}

bool QuestionQueue::isPaused() const
{
    return paused;
}

qsizetype QuestionQueue::waiting() const
{
    const bool isOngoing = std::any_of(ongoing.cbegin(), ongoing.cend(),
                                       [this](const auto &entry) { return entry.get() == shown; });
    // A request that is being handled without a question does not wait for the user.
    const auto questions = std::count_if(requests.cbegin(), requests.cend(), [](const auto &entry) {
        return !entry->hasBegun || entry->isReady;
    });
    const qsizetype all = qsizetype(questions) + qsizetype(notices.size());
    return shown && !isOngoing ? all - 1 : all;
}

bool QuestionQueue::isWaiting(const Entry &entry) const
{
    return !entry.hasBegun || (paused && !entry.isAnswered);
}

void QuestionQueue::ask(Entry *entry, const Question &question)
{
    if (shown == entry) {
        face->withdraw();
        shown = nullptr;
    }
    entry->question = question;
    entry->isReady = true;
    advance();
}

void QuestionQueue::remove(Entries &entries, const Entry *entry)
{
    if (shown == entry) {
        face->withdraw();
        shown = nullptr;
    }
    const auto removed = std::find_if(entries.begin(), entries.end(),
                                      [entry](const auto &candidate) { return candidate.get() == entry; });
    release((*removed)->request);
    entries.erase(removed);
    if (requests.empty())
        staleness.stop();
    advance();
}

void QuestionQueue::release(Request *request)
{
    if (!request)
        return;
    // It may be the one that calls, so it lives on for a moment.
    request->abandon();
    request->disconnect(this);
    request->deleteLater();
}

void QuestionQueue::answer(const Answer &answer)
{
    Entry *entry = std::exchange(shown, nullptr);
    if (!entry)
        return;
    if (entry->request) {
        entry->isReady = false;
        entry->isAnswered = true;
        entry->request->decide(answer);
    } else {
        const Answered answered = entry->answered;
        const bool isNotice = std::any_of(notices.cbegin(), notices.cend(),
                                          [entry](const auto &other) { return other.get() == entry; });
        remove(isNotice ? notices : ongoing, entry);
        if (answered)
            answered(answer);
    }
    advance();
}

QuestionQueue::Entry *QuestionQueue::nextToShow() const
{
    if (paused)
        return nullptr;
    if (!requests.empty())
        return requests.front()->isReady ? requests.front().get() : shown;
    if (!notices.empty())
        return notices.front().get();
    return ongoing.empty() ? nullptr : ongoing.back().get();
}

void QuestionQueue::advance()
{
    if (!paused && !requests.empty() && !requests.front()->hasBegun) {
        requests.front()->hasBegun = true;
        // Comes back here when there is something to ask, or when there is not.
        requests.front()->request->begin();
    }
    Entry *next = nextToShow();
    if (next != shown) {
        if (shown)
            face->withdraw();
        shown = next;
        if (shown)
            face->show(shown->question);
    }
    face->setWaiting(waiting());
}

void QuestionQueue::dropStale()
{
    for (auto entry = requests.cbegin(); entry != requests.cend();) {
        if (!isWaiting(**entry) || now() - (*entry)->arrival < patience) {
            ++entry;
            continue;
        }
        qCWarning(clientLog, "A request has waited for too long and is rejected");
        (*entry)->request->reject();
        remove(requests, entry->get());
        entry = requests.cbegin();
    }
}
