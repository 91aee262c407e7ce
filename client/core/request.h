// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_REQUEST_H
#define CONNUI_CLIENT_REQUEST_H

#include <functional>
#include <memory>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include "core/question.h"

namespace ConnUi {
class NfcReplyOrder;
}

/** The reply that the daemon waits for. */
class PendingReply
{
public:
    using Reply = std::function<void()>;

    /** Takes the next place of \a target in \a order. One of \a grant and \a reject sends the reply in the
     * end.
     */
    PendingReply(const std::shared_ptr<ConnUi::NfcReplyOrder> &order, const QString &target,
                 const Reply &grant, const Reply &reject);

    void grant() const;
    void reject() const;

private:
    std::weak_ptr<ConnUi::NfcReplyOrder>
        order; // goes with the agent, and with it everything that could be replied
    QString target;
    quint64 place;
    Reply granting;
    Reply rejecting;
};

/** Something that the daemon asks of the user, from the time that it comes until it has had its answer. */
class Request : public QObject
{
    Q_OBJECT

public:
    enum Kind { Pairing, Connection, Disconnection, Delivery, Sharing, Selection };

    /** Two requests of one kind with the same \a content are asked once. */
    Request(Kind kind, const QString &target, const QByteArray &content, const PendingReply &reply);

    /** Returns whether \a other asks the same. */
    bool isSameAs(const Request &other) const;

    /** Returns whether \a other is of the same kind and about the same target. */
    bool isReplacedBy(const Request &other) const;

    /** Gives \a other the answer of this one, too. */
    void join(const Request &other);

    /** Begins when its turn has come: emits asks(), or done() when there is nothing to ask. */
    virtual void begin() = 0;

    /** Takes the user's answer to what asks() has asked. Emits done() in the end. */
    virtual void decide(const Answer &answer) = 0;

    /** Replies that the user does not want it. */
    void reject();

    /** Has it decide nothing any more: what it still waits for comes too late. */
    void abandon();

Q_SIGNALS:
    /** The user is to be asked. */
    void asks(const Question &question);
    /** The user is to see a notice. */
    void tells(const Question &notice);
    /** It has been answered. */
    void done();

protected:
    /** Returns whether an answer that has been waited for comes too late. */
    bool isAbandoned() const;

    /** Replies that the user wants it. */
    void grant();

    /** Leaves the replies to the caller, who gives them when this has gone. */
    QList<PendingReply> takeReplies();

    const Kind kind;
    const QString target;

private:
    const QByteArray content;
    QList<PendingReply> replies;
    bool abandoned = false;
};

#endif
