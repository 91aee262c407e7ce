// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "terminationsignals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

int openDescriptor()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    sigaddset(&signalSet, SIGINT);
    sigaddset(&signalSet, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signalSet, nullptr);
    return signalfd(-1, &signalSet, SFD_CLOEXEC);
}

} // namespace

TerminationSignals::TerminationSignals() : descriptor(openDescriptor()) {}

TerminationSignals::~TerminationSignals()
{
    notifier.reset();
    close(descriptor);
}

void TerminationSignals::watch()
{
    notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this] {
        notifier->setEnabled(false);
        Q_EMIT received();
    });
}
