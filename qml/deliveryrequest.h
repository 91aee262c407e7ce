// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_DELIVERYREQUEST_H
#define CONNUI_QML_DELIVERYREQUEST_H

#include <QByteArray>
#include <QDBusObjectPath>
#include <QList>
#include <QQmlListProperty>

#include <NdefMessageHandler>
#include <NdefRecord>
#include <NfcDeliveryDecision>

#include "nfchandler.h"
#include "nfcrequest.h"

/**
 * Decides about the content of a tag: the QML type DeliveryRequest.
 *
 * Texts are those of the tag: they are safe to draw, but a program shows them as plain text, and bounds their
 * lines.
 */
class DeliveryRequest : public NfcRequest
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The daemon makes requests; NfcAgent has them")
    /** The way to handle the request. */
    Q_PROPERTY(Outcome outcome READ outcome CONSTANT FINAL)
    /** The subject of the question. */
    Q_PROPERTY(Kind kind READ kind CONSTANT FINAL)
    /** The text of the first record; empty when it has none. */
    Q_PROPERTY(QString text READ text CONSTANT FINAL)
    /** The URI of the first record; empty when it has none. */
    Q_PROPERTY(QString uri READ uri CONSTANT FINAL)
    /** The host that a web link contacts, in about 40 characters, of which the registered end is never cut. A
     * label whose letters could be taken for others is in Punycode. */
    Q_PROPERTY(QString host READ host CONSTANT FINAL)
    /** Whether a web link is encrypted ("https"). */
    Q_PROPERTY(bool encrypted READ isEncrypted CONSTANT FINAL)
    /** Whether a web link hides where it leads: warn the user. */
    Q_PROPERTY(bool suspicious READ isSuspicious CONSTANT FINAL)
    /** Whether there is more on the tag than \a text says. */
    Q_PROPERTY(bool more READ hasMore CONSTANT FINAL)
    /** Whether act() can call the number or send the message. */
    Q_PROPERTY(bool actionable READ isActionable CONSTANT FINAL)
    /** The applications that can get the content; the first one is offered. */
    Q_PROPERTY(QQmlListProperty<NfcHandler> handlers READ handlers CONSTANT FINAL)
    /** The bytes of the message. */
    Q_PROPERTY(QByteArray data READ data CONSTANT FINAL)
    /** The records of the message; none when the bytes are not one message. */
    Q_PROPERTY(QList<ConnUi::NdefRecord> records READ records CONSTANT FINAL)

public:
    /** The ways to handle a request. */
    enum Outcome {
        Refuse,      /**< Nothing can take the content: tell the user, and reject(). */
        AcceptEmpty, /**< The tag is empty: tell the user, and accept(). */
        Forward,     /**< The user wants no question about this: accept(). */
        Ask,         /**< Ask the user. */
    };
    Q_ENUM(Outcome)

    /** The subjects of questions. */
    enum Kind {
        Link,         /**< A web link. */
        Number,       /**< A phone number. */
        Message,      /**< A text message to send. */
        Text,         /**< A text. */
        ContactCard,  /**< A contact card. */
        StoreLink,    /**< A link into the store. */
        OtherContent, /**< Anything else, which the application that gets it decides about. */
    };
    Q_ENUM(Kind)

    /** The state when the tag came. */
    struct Circumstances
    {
        bool isConfirmationEnabled; ///< The user wants to be asked
        bool isSessionLocked;
    };

    DeliveryRequest(const QDBusObjectPath &tag, const QByteArray &data,
                    const ConnUi::NdefMessageHandlerList &handlers, const Circumstances &circumstances,
                    const Place &place, const Replies &replies);

    void prepare() override;
    QString title() const override;

    Outcome outcome() const;
    Kind kind() const;
    QString text() const;
    QString uri() const;
    QString host() const;
    bool isEncrypted() const;
    bool isSuspicious() const;
    bool hasMore() const;
    bool isActionable() const;
    QQmlListProperty<NfcHandler> handlers();
    QByteArray data() const;
    QList<ConnUi::NdefRecord> records() const;

    /** Hands the content to the first of the handlers, and then grants the request. */
    void accept() override;
    /** Hands the content to \a handler, one of the handlers, and then grants the request. */
    Q_INVOKABLE void acceptWith(NfcHandler *handler);
    /** Grants the request and calls the number or sends the message with the desktop's application. */
    Q_INVOKABLE void act();

private:
    void decide();
    ConnUi::NfcTagRecord firstRecord() const;
    void open(const QString &application);
    void forward(const ConnUi::NdefMessageHandler &handler);
    void openOnDesktop();

    const QDBusObjectPath tag;
    const QByteArray bytes;
    const ConnUi::NdefMessageHandlerList takers;
    ConnUi::NfcDeliveryDecision decision;
    QList<NfcHandler *> offered;
    int unknown = 0;  // handlers of which it is not known whether they are in front
    int inFront = -1; // the first that is
};

#endif
