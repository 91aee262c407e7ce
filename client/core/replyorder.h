// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_REPLYORDER_H
#define CONNUI_CLIENT_REPLYORDER_H

#include <functional>

#include <QHash>
#include <QList>
#include <QString>

/**
 * Gives the replies to the requests for one target in the order in which the requests came.
 *
 * The agent answers the oldest request for a target, whichever was meant: a reply that is ready before an
 * older one waits for it.
 */
class ReplyOrder
{
public:
    /** Sends a reply. */
    using Reply = std::function<void()>;

    /** Takes the next place of \a target, for a request that has come, and returns its number. */
    quint64 takePlace(const QString &target);

    /** Gives \a reply to the request at \a place of \a target, as soon as all older ones have theirs. */
    void reply(const QString &target, quint64 place, const Reply &reply);

private:
    struct Place
    {
        quint64 number;
        Reply reply;
    };

    QHash<QString, QList<Place>> lines; // by target, the oldest first
    quint64 next = 0;
};

#endif
