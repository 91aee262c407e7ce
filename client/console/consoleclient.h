// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CONSOLECLIENT_H
#define CONNUI_CLIENT_CONSOLECLIENT_H

#include <QObject>

#include <NfcAdapter>

#include "console/console.h"
#include "console/questionqueue.h"

namespace ConnUi {
class NfcAgent;
}

/**
 * The reference client on a terminal.
 *
 * Its agent lives from the daemon's coming to its going: what an old daemon left open can thus never be
 * mistaken for a question of a new one.
 */
class ConsoleClient : public QObject
{
    Q_OBJECT

public:
    explicit ConsoleClient(QObject *parent = nullptr);

    /** Unregisters the agent; deleting it cancels what is still open. */
    ~ConsoleClient() override;

Q_SIGNALS:
    /** The input has ended. */
    void finished();

private:
    void meetDaemon();
    void loseDaemon();
    void leaveDaemon();
    void tellPower();

    Console console;
    QuestionQueue questions;
    ConnUi::NfcAdapter adapter;
    ConnUi::NfcAgent *agent = nullptr;
};

#endif
