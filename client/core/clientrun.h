// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CLIENTRUN_H
#define CONNUI_CLIENT_CLIENTRUN_H

#include <functional>

class Session;
class Terminal;
class TerminationSignals;

/**
 * Runs a client: connects to the buses, becomes the only client of the session, and calls \a run, which shows
 * the questions and returns the exit code. The application object has to exist.
 *
 * Where it cannot be, prints the reason and returns the exit code for that. \a termination ends it from then
 * on, and so does the loss of a bus.
 */
int runClient(TerminationSignals *termination, const std::function<int()> &run);

/** Prints on \a terminal when the daemon of \a session comes and goes. */
void printRegistration(const Session &session, Terminal *terminal);

#endif
