// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SCREENCLIENT_H
#define CONNUI_SCREENCLIENT_H

#include <optional>

#include <QObject>

#include <NfcAdapter>
#include <NfcOverlay>

#include "screen/dialogqueue.h"

namespace ConnUi {
class NfcAgent;
}

/** The client with a screen: an agent while there is a daemon, and the dialogs for what it asks. */
class ScreenClient : public QObject
{
    Q_OBJECT

public:
    explicit ScreenClient(QObject *parent = nullptr);
    ~ScreenClient() override;

    /** Returns whether there is a daemon that knows the agent. */
    bool hasDaemon() const;

Q_SIGNALS:
    /** The agent is registered, or there is none any more. */
    void daemonHere(bool here);

private:
    void meetDaemon();
    void leaveDaemon();

    DialogQueue queue;
    ConnUi::NfcAdapter adapter;
    // Made when there is a daemon that may want it, and kept.
    std::optional<ConnUi::NfcOverlay> overlay;
    ConnUi::NfcAgent *agent = nullptr;
};

#endif
