// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_QUESTION_H
#define CONNUI_CLIENT_QUESTION_H

#include <QByteArray>
#include <QString>
#include <QStringList>

/** A question or notice for the user: all that any face needs in order to show it. */
struct Question
{
    enum Kind {
        Pairing,
        Connection,
        Disconnection,
        Link,         ///< A web link on a tag
        Number,       ///< A phone number on a tag
        Message,      ///< A text message on a tag, to be sent
        Text,         ///< A text on a tag
        ContactCard,  ///< A contact card on a tag
        StoreLink,    ///< A link into the store on a tag
        OtherContent, ///< Anything else on a tag; it names the application that gets it
        Sharing,      ///< Whether to send something
        Selection,    ///< Whether to select something for sending
        EmptyTag,
        UnreadableTag,
        Notice,     ///< Any other message without a choice
        Invitation, ///< To touch the other device, until it is touched
        Waiting,    ///< For the other device, until it is there
        Receiving,  ///< A file, until it is here
        Opening,    ///< Until an application has taken what is on a tag
    };

    /** A file that is on its way. */
    struct File
    {
        QString sender;
        QString name;
        quint64 received = 0;
        quint64 size = 0;
    };

    Kind kind = Notice;
    QString title;            ///< In our own words
    QStringList notes;        ///< Further sentences of ours
    QString data;             ///< Text of somebody else
    QString yes;              ///< The label of the button that grants
    QString direct;           ///< The label of the one that calls or sends, beside one that only views
    QString no;               ///< The label of the one that refuses
    QStringList applications; ///< Those that could get what is on a tag, by their ids; the first is offered

    QString uri;           ///< Of a link, a number or a message
    QByteArray card;       ///< Of a contact card, the card
    uint deviceClass = 0;  ///< The Class of Device of a Bluetooth device
    QStringList resources; ///< Files and contacts that are to be sent
    File file;             ///< Of Receiving
};

/** The user's answer to a question. */
struct Answer
{
    enum Choice { No, Yes, Direct };

    Choice choice = No;
    QString application; ///< The one that was offered or picked, where the question names one
};

#endif
