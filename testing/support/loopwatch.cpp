// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Watches the event loop of the program that it is loaded into with LD_PRELOAD:
//
// - A call through QtDBus whose reply the main thread waits for, while the event loop runs, aborts the
// program. The bus
//   itself may be waited for: QtDBus asks it for the owner of a name when a proxy is made.
// - With the environment variable CONNUI_LOOP_GAPS it only measures: to the file of that name, a dot and the
//   process's id it adds every time between two turns of that loop, a line in milliseconds. The first is the
//   time from the start to the first turn. Time in which other processes had the processors does not count.

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <poll.h>
#include <string>
#include <unistd.h>

#include <QMutex>
#include <QThread>
#include <QWaitCondition>

struct DBusConnection;
struct DBusMessage;
struct DBusPendingCall;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double shortest = 1; // milliseconds: shorter gaps are not worth a line

// The time so far in which this thread could have run, and had no processor.
std::chrono::nanoseconds delayed()
{
    unsigned long long delay = 0;
    if (std::FILE *file = std::fopen("/proc/thread-self/schedstat", "r")) {
        if (std::fscanf(file, "%*u %llu", &delay) != 1)
            delay = 0;
        std::fclose(file);
    }
    return std::chrono::nanoseconds(delay);
}

struct Turn
{
    Clock::time_point time = Clock::now();
    std::chrono::nanoseconds delay = delayed();
};

Turn lastTurn;
std::atomic<bool> lastCallWasToTheBus = false; // set on QtDBus's own thread

bool isMainThread()
{
    return gettid() == getpid();
}

bool isIn(const void *address, const char *library)
{
    Dl_info info;
    return dladdr(address, &info) != 0 && std::strstr(info.dli_fname, library) != nullptr;
}

// The event loop's own wait: other libraries wait for their sockets by the same function.
bool isEventLoop(const void *caller)
{
    return isMainThread() && (isIn(caller, "libglib") || isIn(caller, "libQt6Core"));
}

std::FILE *gaps()
{
    static const char *const prefix = std::getenv("CONNUI_LOOP_GAPS");
    static const std::string path = std::string(prefix ? prefix : "") + '.' + std::to_string(getpid());
    static std::FILE *const file = prefix ? std::fopen(path.c_str(), "a") : nullptr;
    return file;
}

void beginWait()
{
    if (!gaps())
        return;
    const Turn now;
    const std::chrono::duration<double, std::milli> gap =
        now.time - lastTurn.time - (now.delay - lastTurn.delay);
    if (gap.count() < shortest)
        return;
    std::fprintf(gaps(), "%.1f\n", gap.count());
    std::fflush(gaps());
}

template <typename Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// The programs that this one starts are not watched.
[[gnu::constructor]] void begin()
{
    unsetenv("LD_PRELOAD");
}

// After the wait: only then QtDBus has sent the call, and it has sent none since.
void refuseWait()
{
    if (gaps() || QThread::currentThread()->loopLevel() == 0 || lastCallWasToTheBus)
        return;
    std::fputs("loop-watch: the event loop has waited for the reply to a D-Bus call\n", stderr);
    void *frames[32];
    backtrace_symbols_fd(frames, backtrace(frames, 32), STDERR_FILENO);
    std::abort();
}

} // namespace

// The names under which the C library has these; the headers may declare checked forms of them.
extern "C" [[gnu::visibility("default")]] int watchedPoll(pollfd *descriptors, nfds_t count,
                                                          int timeout) __asm__("poll");
extern "C" [[gnu::visibility("default")]] int watchedPpoll(pollfd *descriptors, nfds_t count,
                                                           const timespec *timeout,
                                                           const sigset_t *signals) __asm__("ppoll");

int watchedPoll(pollfd *descriptors, nfds_t count, int timeout)
{
    static const auto wait = original<int(pollfd *, nfds_t, int)>("poll");
    const bool isTurn = isEventLoop(__builtin_return_address(0));
    if (isTurn)
        beginWait();
    const int ready = wait(descriptors, count, timeout);
    if (isTurn && gaps())
        lastTurn = Turn();
    return ready;
}

int watchedPpoll(pollfd *descriptors, nfds_t count, const timespec *timeout, const sigset_t *signals)
{
    static const auto wait = original<int(pollfd *, nfds_t, const timespec *, const sigset_t *)>("ppoll");
    const bool isTurn = isEventLoop(__builtin_return_address(0));
    if (isTurn)
        beginWait();
    const int ready = wait(descriptors, count, timeout, signals);
    if (isTurn && gaps())
        lastTurn = Turn();
    return ready;
}

extern "C" [[gnu::visibility("default")]] int dbus_connection_send_with_reply(DBusConnection *connection,
                                                                              DBusMessage *message,
                                                                              DBusPendingCall **pending,
                                                                              int timeout)
{
    static const auto destination = original<const char *(DBusMessage *)>("dbus_message_get_destination");
    static const auto send = original<int(DBusConnection *, DBusMessage *, DBusPendingCall **, int)>(
        "dbus_connection_send_with_reply");
    if (isIn(__builtin_return_address(0), "libQt6DBus"))
        lastCallWasToTheBus = qstrcmp(destination(message), "org.freedesktop.DBus") == 0;
    return send(connection, message, pending, timeout);
}

// All of QtDBus's ways to wait for a reply end here.
[[gnu::visibility("default")]] bool QWaitCondition::wait(QMutex *mutex, QDeadlineTimer deadline)
{
    const bool isForReply = isMainThread() && isIn(__builtin_return_address(0), "libQt6DBus");
    static const auto wait = original<bool(QWaitCondition *, QMutex *, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    const bool isWoken = wait(this, mutex, deadline);
    if (isForReply)
        refuseWait();
    return isWoken;
}
