// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_NFCREQUEST_H
#define CONNUI_QML_NFCREQUEST_H

#include <functional>
#include <memory>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace ConnUi {
class NfcReplyOrder;
}

/**
 * Something that the daemon asks of the user: the QML type NfcRequest, which the types of requests extend.
 *
 * It has one answer, the first of accept(), reject() and cancel(); later ones have no effect. Destroying it
 * without an answer cancels it.
 */
class NfcRequest : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The daemon makes requests; NfcAgent has them")
    /** The object path of the tag or device; empty for sharing. */
    Q_PROPERTY(QString target READ target CONSTANT FINAL)
    /** One line of at most 64 characters that names the device or the content, as others have written it,
     * with every character visible. */
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    /** Whether the daemon has left before the request had an answer. */
    Q_PROPERTY(bool expired READ isExpired NOTIFY expiredChanged FINAL)

public:
    /** The functions that send each answer to the daemon. */
    struct Replies
    {
        std::function<void()> grant;
        std::function<void()> reject;
        std::function<void()> cancel;
    };

    /** A place among the requests whose answers keep their order. */
    class Place
    {
    public:
        /** Takes the next place of \a line in \a order. */
        Place(const std::shared_ptr<ConnUi::NfcReplyOrder> &order, const QString &line);

        /** Sends \a reply in its turn, unless the agent has gone. */
        void send(const std::function<void()> &reply) const;

    private:
        std::weak_ptr<ConnUi::NfcReplyOrder> order; // goes with the agent
        QString line;
        quint64 number;
    };

    ~NfcRequest() override;

    QString target() const;
    virtual QString title() const = 0;
    bool isExpired() const;

    /** Finds out all that has to be known before the user is asked; emits ready(), at once or later. */
    virtual void prepare();

    /** Returns whether ready() was emitted. */
    bool isReady() const;

    /** Ends the request without an answer: its daemon has left. */
    void expire();

    /** Grants the request. */
    Q_INVOKABLE virtual void accept();
    /** Refuses the request, for the user. */
    Q_INVOKABLE void reject();
    /** Answers that nobody has decided. */
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    /** The user can be asked. */
    void ready();
    void expiredChanged();
    /** The request has had its answer, or has expired. It is deleted when the event loop returns. */
    void ended();

protected:
    NfcRequest(const QString &target, const Place &place, const Replies &replies);

    /** Makes the request ready. */
    void becomeReady();

    /** Ends the request and returns whether this was the first time. */
    bool end();

    const Place place;
    const Replies replies;

private:
    void answer(const std::function<void()> &reply);

    const QString device;
    bool isPrepared = false;
    bool hasEnded = false;
    bool hasExpired = false;
};

#endif
