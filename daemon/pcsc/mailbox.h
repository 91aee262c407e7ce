// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_MAILBOX_H
#define CONNUI_DAEMON_PCSC_MAILBOX_H

#include <functional>
#include <memory>
#include <mutex>

class QObject;

/**
 * Brings calls from other threads to the thread of an object.
 *
 * Those threads may outlive the object, since a call of theirs into a driver cannot be ended: they share the
 * mailbox, and what comes after the object has gone is lost.
 */
class Mailbox
{
public:
    explicit Mailbox(QObject *receiver);

    /** Has \a call made on the receiver's thread, from its event loop; on no thread once it is closed. */
    void post(const std::function<void()> &call);

    /** To be called by the receiver before it goes. */
    void close();

private:
    std::mutex mutex;
    QObject *receiver;
};

#endif
