// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/terminationsignals.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QCoreApplication>

namespace {

constexpr int termination[] = {SIGHUP, SIGINT, SIGTERM};
int descriptor = -1;

// All that a signal handler may do is to write.
void notify(int)
{
    const int before = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(descriptor, &one, sizeof one);
    errno = before;
}

void handle(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigset_t caught;
    sigemptyset(&caught);
    for (const int number : termination) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        // As nohup does it.
        if (before.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
        sigaddset(&caught, number);
    }
    // The parent process may have blocked them.
    pthread_sigmask(SIG_UNBLOCK, &caught, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    handle(&notify);
}

TerminationSignals::~TerminationSignals()
{
    handle(SIG_DFL);
    notifier.reset();
    close(descriptor);
}

void TerminationSignals::watch()
{
    notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    // Not quit(): it closes the windows first, which is a user's way to refuse. Nobody reads the descriptor,
    // so that a loop which begins later ends as well: while the program starts, it waits in other loops than
    // that of the application.
    QObject::connect(notifier.get(), &QSocketNotifier::activated, qApp, [] { QCoreApplication::exit(); });
}
