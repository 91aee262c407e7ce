// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_SESSION_H
#define CONNUI_CLIENT_SESSION_H

#include <memory>

#include <QObject>

#include <NfcAdapter>

#include "core/questionqueue.h"
#include "core/sessionlock.h"

namespace ConnUi {
class NfcAgent;
}

class AgentRequests;
class Face;
class Registration;
class Transfers;

/**
 * The client: an agent for as long as there is a daemon, and a face that puts its questions before the user.
 *
 * Each daemon that comes gets an agent of its own: what an old one left open can never be mistaken for a
 * question of a new one.
 */
class Session : public QObject
{
    Q_OBJECT

public:
    explicit Session(Face *face, QObject *parent = nullptr);

    /** Takes the agent back; deleting it cancels what is still open. */
    ~Session() override;

    /** Returns whether there is a daemon that knows the agent. */
    bool isRegistered() const;

    /** Returns how many files arrive that the user has put away. */
    uint hiddenTransfers() const;

    /** Shows them again. */
    void showTransfers();

Q_SIGNALS:
    /** The daemon knows the agent, or does not any more. */
    void registeredChanged(bool registered);
    /** So many files arrive that the user has put away. */
    void hiddenTransfersChanged(uint hidden);

private:
    void createAgent();
    void dropAgent();
    void welcome(const QString &adapterPath);

    Face *const face;
    QuestionQueue queue;
    SessionLock lock;
    const std::unique_ptr<ConnUi::NfcAdapter> adapter;
    // Once the daemon knows the agent: nothing delays that, and no tag waits for the rest.
    bool isPrepared = false;
    std::unique_ptr<ConnUi::NfcAgent> agent;
    std::unique_ptr<AgentRequests> requests;
    std::unique_ptr<Registration> registration;
    std::unique_ptr<Transfers> transfers;
};

#endif
