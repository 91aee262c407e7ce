// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCDELIVERYDECISION_H
#define CONNUI_NFCDELIVERYDECISION_H

#include <connui_nfc_core_export.h>

#include <QMetaType>
#include <QObject>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

#include "nfctagcontent.h"

namespace ConnUi {

class NfcDeliveryDecisionPrivate;

/**
 * Decides about the content of a tag: whether the user has to be asked, about what, and which applications
 * can get it.
 *
 * The decision depends only on the content and on the circumstances that the setters name. The table in the
 * client guide lists all cases. In short: a single text, contact card or harmless link goes to its handler
 * without a question if the user wants that and it is clear which handler is meant; everything that costs
 * money, or of which not all is known, is asked about.
 *
 * @code
 * NfcDeliveryDecision decision{NfcTagContent(data)};
 * decision.setHandlers(ids);
 * decision.setConfirmationEnabled(adapter->isConfirmationEnabled());
 * if (decision.outcome() == NfcDeliveryDecision::Forward)
 *     forward(decision.applications().constFirst());
 * @endcode
 */
class CONNUI_NFC_CORE_EXPORT NfcDeliveryDecision
{
    Q_GADGET
    /** The ids of the handlers, see setHandlers(). */
    Q_PROPERTY(QStringList handlers READ handlers WRITE setHandlers)
    /** The handler in front, see setForegroundHandler(). */
    Q_PROPERTY(int foregroundHandler READ foregroundHandler WRITE setForegroundHandler)
    /** The default application for the link, see setDefaultApplication(). */
    Q_PROPERTY(QString defaultApplication READ defaultApplication WRITE setDefaultApplication)
    /** Whether the user wants to be asked, see setConfirmationEnabled(). */
    Q_PROPERTY(bool confirmationEnabled READ isConfirmationEnabled WRITE setConfirmationEnabled)
    /** Whether the session was locked, see setSessionLocked(). */
    Q_PROPERTY(bool sessionLocked READ isSessionLocked WRITE setSessionLocked)
    /** The decision. */
    Q_PROPERTY(Outcome outcome READ outcome)
    /** The ids of the applications that can get the content, see applications(). */
    Q_PROPERTY(QStringList applications READ applications)
    /** The subject of the question. */
    Q_PROPERTY(Question question READ question)
    /** Whether the user can also call or send at once, see hasDirectAction(). */
    Q_PROPERTY(bool directAction READ hasDirectAction)

public:
    /** The decisions. */
    enum Outcome {
        Refuse,      ///< It is malformed, or nothing takes it: tell the user, and reject
        AcceptEmpty, ///< The tag is empty: tell the user, and grant
        Forward,     ///< The first of the applications gets it, without a question
        Ask,         ///< The user decides
    };
    Q_ENUM(Outcome)

    /** The subjects of questions. */
    enum Question {
        Link,         ///< To open a web link
        Number,       ///< To call a number
        Message,      ///< To send a text message
        Text,         ///< To view a text
        ContactCard,  ///< To view a contact card
        StoreLink,    ///< To open a link into the store
        OtherContent, ///< To hand anything else to an application, which the question names
    };
    Q_ENUM(Question)

    /** Decides about an empty tag. */
    NfcDeliveryDecision();

    /** Decides about \a content. Until a setter changes it, no application takes it, and the user wants to be
     * asked. */
    explicit NfcDeliveryDecision(const NfcTagContent &content);

    /** Copies the content, the circumstances and with them the decision of \a other. */
    NfcDeliveryDecision(const NfcDeliveryDecision &other);

    /** Takes over the content, the circumstances and with them the decision of \a other. */
    NfcDeliveryDecision &operator=(const NfcDeliveryDecision &other);

    /** Deletes the decision. */
    ~NfcDeliveryDecision();

    /** Returns the content that the decision is about. */
    NfcTagContent content() const;

    /** Returns the ids of the handlers. */
    QStringList handlers() const;
    /** Names the applications that take the content by their ids, in the daemon's order
     * (NdefMessageHandler::applicationId()). */
    void setHandlers(const QStringList &ids);

    /** Returns the index of the handler in front, or -1. */
    int foregroundHandler() const;
    /** Says which of the handlers the user is looking at, by its \a index
     * (NdefMessageHandler::isRunningOnForegroundAsync()); -1 means none. */
    void setForegroundHandler(int index);

    /** Returns the id of the default application. */
    QString defaultApplication() const;
    /** Names the application that the desktop opens the first record's link with by its \a id; empty means
     * none. NfcApplication::defaultForUri() finds it. */
    void setDefaultApplication(const QString &id);

    /** Returns whether the user wants to be asked. */
    bool isConfirmationEnabled() const;
    /** Says whether the user wants to be asked about everything (NfcAdapter::isConfirmationEnabled()). */
    void setConfirmationEnabled(bool enabled);

    /** Returns whether the session was locked. */
    bool isSessionLocked() const;
    /** Says whether the session was locked when the tag was touched: then nothing happens unasked. */
    void setSessionLocked(bool locked);

    /** Returns the decision. */
    Outcome outcome() const;

    /**
     * Returns the ids of the applications that can get the content, each once. The first is the one to offer,
     * or the one that gets it unasked.
     *
     * They are the handlers, the one in front first. Where there are none it is the default application,
     * which then opens the link itself. The list is empty unless the outcome is Forward or Ask.
     */
    QStringList applications() const;

    /** Returns the subject of the question when the outcome is Ask, and otherwise OtherContent. */
    Question question() const;

    /** Returns whether a question about a Number or a Message can also offer to call or to send at once, by
     * opening the link with the default application. */
    bool hasDirectAction() const;

private:
    QSharedDataPointer<NfcDeliveryDecisionPrivate> d;
};

} // namespace ConnUi

// A growing list may move it byte by byte: it is a pointer.
Q_DECLARE_TYPEINFO(ConnUi::NfcDeliveryDecision, Q_RELOCATABLE_TYPE);

#endif
