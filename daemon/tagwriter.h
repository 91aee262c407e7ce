// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGWRITER_H
#define CONNUI_DAEMON_TAGWRITER_H

#include <optional>

#include <QByteArray>
#include <QDBusAbstractAdaptor>
#include <QDBusMessage>

#include "daemon/tags/tagstatus.h"

class Adapter;
class BusPeer;

/**
 * com.tavix.nfc.TagWriter on the adapter: keeps a message until a tag comes that it can be written onto.
 *
 * The code that drives the reader takes the message when a tag is touched, writes it and reports the end.
 */
class TagWriter : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.TagWriter")

public:
    explicit TagWriter(Adapter *adapter);

    /**
     * Hands over the message that waits, for the tag that is here; nothing when none waits.
     *
     * finish() or putBack() is to follow. A message that is given up meanwhile has its end then;
     * Adapter::messageGivenUp() reports it, for those that can still put it back.
     */
    std::optional<QByteArray> take();

    /** Lets the message that was taken wait for another tag: nothing has been written onto this one. */
    void putBack();

    /** Answers the caller whose message was taken: it was written and read back equal, or \a status says why
     * not. */
    void finish(TagStatus status);

public Q_SLOTS:
    void WriteNdef(const QByteArray &data, const QDBusMessage &message);
    void Cancel(const QDBusMessage &message);

private:
    struct Job
    {
        const QDBusMessage call;
        const QByteArray data;
        BusPeer *const caller;
        bool isTaken = false;
        bool isGivenUp = false;
    };

    void begin(const QByteArray &data, const QDBusMessage &call);
    Job endJob();
    void giveUp();

    Adapter *const adapter;
    std::optional<Job> job;
};

#endif
