// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TERMINATIONSIGNALS_H
#define CONNUI_CLIENT_TERMINATIONSIGNALS_H

#include <memory>

#include <QSocketNotifier>

/**
 * Ends the application in good order at SIGHUP, SIGINT and SIGTERM. There is one at a time.
 *
 * The signals are caught, not blocked: what a program starts would inherit a mask, and could not be ended by
 * them.
 */
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    Q_DISABLE_COPY_MOVE(TerminationSignals)

    /** Ends the application's event loop at such a signal, also at one that has come since this was made. */
    void watch();

private:
    std::unique_ptr<QSocketNotifier> notifier;
};

#endif
