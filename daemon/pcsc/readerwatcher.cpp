// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/readerwatcher.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>
#include <winscard.h>

#include <QList>

#include <condition_variable>

#include "daemon/pcsc/mailbox.h"
#include "daemon/pcsc/pcsccontext.h"
#include "daemon/pcsc/watchedreader.h"

using namespace std::chrono_literals;

namespace {

/** The name under which pcscd reports readers that come and go. */
constexpr char anyReader[] = "\\\\?PnP?\\Notification";
/** As many as pcscd looks at in one call, without that one. */
constexpr qsizetype mostReaders = PCSCLITE_MAX_READERS_CONTEXTS - 1;

QList<QByteArray> listReaders(SCARDCONTEXT context, LONG *result)
{
    auto size = SCARD_AUTOALLOCATE;
    char *names = nullptr;
    *result = SCardListReaders(context, nullptr, reinterpret_cast<char *>(&names), &size);
    if (*result == LONG(SCARD_E_NO_READERS_AVAILABLE))
        *result = SCARD_S_SUCCESS;
    if (!names)
        return {};
    QList<QByteArray> readers = QByteArray(names, qsizetype(size)).split('\0');
    SCardFreeMemory(context, names);
    readers.removeAll(QByteArray());
    readers.resize(std::min(readers.size(), mostReaders));
    return readers;
}

} // namespace

/** The work of the watching thread, which the other one ends. */
struct ReaderWatcher::Watch
{
    void run();
    void end();

    ReaderWatcher *watcher = nullptr;
    std::shared_ptr<Mailbox> mailbox;

private:
    LONG watch();
    LONG listAgain(SCARDCONTEXT context);
    LONG wait(SCARDCONTEXT context, DWORD milliseconds);
    void tellCard(const WatchedReader &before, const WatchedReader &reader);
    void tellReaders();

    template <typename... Arguments>
    void tell(void (ReaderWatcher::*signal)(Arguments...), const std::decay_t<Arguments> &...arguments)
    {
        mailbox->post([watcher = watcher, signal, arguments...] { (watcher->*signal)(arguments...); });
    }

    QList<WatchedReader> readers;
    QStringList told;
    bool isListTold = false;

    std::mutex mutex;
    std::condition_variable hasEnded;
    bool isEnded = false;
    SCARDCONTEXT waitsFor = 0;
    std::atomic<bool> isOver = false;
};

void ReaderWatcher::Watch::run()
{
    const LONG result = watch();
    {
        const std::lock_guard lock(mutex);
        isEnded = true;
    }
    hasEnded.notify_all();
    tell(&ReaderWatcher::ended, result);
}

// A cancellation that comes before the thread waits is lost.
void ReaderWatcher::Watch::end()
{
    isOver = true;
    std::unique_lock lock(mutex);
    while (!isEnded) {
        SCardCancel(waitsFor);
        hasEnded.wait_for(lock, 10ms);
    }
}

LONG ReaderWatcher::Watch::watch()
{
    const PcscContext context;
    {
        const std::lock_guard lock(mutex);
        waitsFor = context.handle();
    }
    LONG result = context.result();
    // pcscd does not report a reader that comes between the list and the waiting: the list is made again a
    // while after each event.
    constexpr DWORD awhile = 1000;
    bool isQuiet = false;
    while (result == SCARD_S_SUCCESS && !isOver) {
        result = listAgain(context.handle());
        if (result != SCARD_S_SUCCESS)
            break;
        result = wait(context.handle(), isQuiet ? INFINITE : awhile);
        isQuiet = result == LONG(SCARD_E_TIMEOUT);
        if (isQuiet || result == LONG(SCARD_E_UNKNOWN_READER))
            result = SCARD_S_SUCCESS;
    }
    return result;
}

LONG ReaderWatcher::Watch::listAgain(SCARDCONTEXT context)
{
    LONG result = SCARD_S_SUCCESS;
    const QList<QByteArray> names = listReaders(context, &result);
    QList<WatchedReader> listed;
    for (const QByteArray &name : names) {
        const auto known =
            std::find_if(readers.cbegin(), readers.cend(),
                         [&name](const WatchedReader &reader) { return reader.name() == name; });
        listed.append(known == readers.cend() ? WatchedReader(name) : *known);
    }
    for (const WatchedReader &reader : std::as_const(readers))
        if (reader.hasCard() && !names.contains(reader.name()))
            tell(&ReaderWatcher::cardLeft, QString::fromUtf8(reader.name()));
    readers = listed;
    tellReaders();
    return result;
}

LONG ReaderWatcher::Watch::wait(SCARDCONTEXT context, DWORD milliseconds)
{
    std::vector<SCARD_READERSTATE> states(size_t(readers.size()) + 1);
    for (qsizetype i = 0; i < readers.size(); ++i) {
        states[size_t(i)].szReader = readers[i].name().constData();
        states[size_t(i)].dwCurrentState = readers[i].state();
    }
    states.back().szReader = anyReader;
    const LONG result = SCardGetStatusChange(context, milliseconds, states.data(), DWORD(states.size()));
    if (result != SCARD_S_SUCCESS)
        return result;
    const QList<WatchedReader> before = readers;
    for (qsizetype i = 0; i < readers.size(); ++i) {
        const SCARD_READERSTATE &seen = states[size_t(i)];
        readers[i].look(seen.dwEventState,
                        QByteArray(reinterpret_cast<const char *>(seen.rgbAtr), qsizetype(seen.cbAtr)));
    }
    // A reader is known before its card is.
    tellReaders();
    for (qsizetype i = 0; i < readers.size(); ++i)
        tellCard(before[i], readers[i]);
    return result;
}

void ReaderWatcher::Watch::tellCard(const WatchedReader &before, const WatchedReader &reader)
{
    const QString name = QString::fromUtf8(reader.name());
    if (reader.hasLostCard(before))
        tell(&ReaderWatcher::cardLeft, name);
    if (reader.hasNewCard(before))
        tell(&ReaderWatcher::cardCame, name, reader.atr());
}

void ReaderWatcher::Watch::tellReaders()
{
    QStringList usable;
    for (const WatchedReader &reader : std::as_const(readers))
        if (reader.isUsable())
            usable.append(QString::fromUtf8(reader.name()));
    if (std::exchange(isListTold, true) && usable == told)
        return;
    told = usable;
    tell(&ReaderWatcher::readersSeen, usable);
}

ReaderWatcher::ReaderWatcher(QObject *parent)
    : QObject(parent)
    , mailbox(std::make_shared<Mailbox>(this))
    , watch(std::make_shared<Watch>())
{
    watch->watcher = this;
    watch->mailbox = mailbox;
    std::thread([watch = watch] { watch->run(); }).detach();
}

ReaderWatcher::~ReaderWatcher()
{
    mailbox->close();
    // To cancel means to talk with pcscd.
    std::thread([watch = watch] { watch->end(); }).detach();
}
