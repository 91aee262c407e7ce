// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/readerworker.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include <condition_variable>

#include "daemon/pcsc/cardconnection.h"
#include "daemon/pcsc/pcsccontext.h"

/** The job of the working thread, as the other one sets it. */
struct ReaderWorker::Work
{
    explicit Work(const QByteArray &reader) : reader(reader) {}

    void run();

    const QByteArray reader;
    std::mutex mutex;
    std::condition_variable hasNews;
    std::optional<Job> next;
    bool isOver = false;
    SCARDCONTEXT context = 0; // of the job that is under way
    std::atomic<bool> isInterrupted = false;
    std::atomic<bool> isWaiting = false; // for the card, which another program has

private:
    std::optional<Job> nextJob();
    Outcome perform(const Job &job);
};

void ReaderWorker::Work::run()
{
    while (const std::optional<Job> job = nextJob())
        job->ended(perform(*job));
}

std::optional<ReaderWorker::Job> ReaderWorker::Work::nextJob()
{
    std::unique_lock lock(mutex);
    hasNews.wait(lock, [this] { return isOver || next; });
    if (isOver)
        return std::nullopt;
    isInterrupted = false;
    return std::exchange(next, std::nullopt);
}

ReaderWorker::Outcome ReaderWorker::Work::perform(const Job &job)
{
    const PcscContext ours;
    {
        const std::lock_guard lock(mutex);
        context = ours.handle();
    }
    CardConnection connection(ours.handle(), reader, isInterrupted, isWaiting);
    if (connection.result() == SCARD_S_SUCCESS) {
        job.begun();
        job.talk(connection);
    }
    {
        // Its handle may be somebody else's soon.
        const std::lock_guard lock(mutex);
        context = 0;
    }
    switch (connection.result()) {
    case SCARD_S_SUCCESS:
        return Outcome::Talked;
    // It was held until the job was interrupted, or has been reset in between.
    case LONG(SCARD_E_INVALID_HANDLE):
    case LONG(SCARD_W_RESET_CARD):
    case LONG(SCARD_E_NOT_TRANSACTED):
    case LONG(SCARD_E_SHARING_VIOLATION):
        return Outcome::Held;
    default:
        return Outcome::Gone;
    }
}

ReaderWorker::ReaderWorker(const QByteArray &reader) : work(std::make_shared<Work>(reader))
{
    std::thread([work = work] { work->run(); }).detach();
}

ReaderWorker::~ReaderWorker()
{
    {
        const std::lock_guard lock(work->mutex);
        work->isOver = true;
    }
    work->hasNews.notify_all();
    cancel();
}

void ReaderWorker::start(const Job &job)
{
    {
        const std::lock_guard lock(work->mutex);
        work->next = job;
    }
    work->hasNews.notify_all();
}

void ReaderWorker::interrupt()
{
    work->isInterrupted = true;
    const std::lock_guard lock(work->mutex);
    // The library tries on and on to begin a transaction, as long as there is a context. During any other
    // call that takes long its release would hold up every other thread, too.
    if (work->context != 0 && work->isWaiting)
        std::thread([context = work->context] { SCardReleaseContext(context); }).detach();
}

void ReaderWorker::cancel()
{
    {
        const std::lock_guard lock(work->mutex);
        work->next.reset();
    }
    interrupt();
}
