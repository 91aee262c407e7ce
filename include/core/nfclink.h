// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCLINK_H
#define CONNUI_NFCLINK_H

#include <connui_nfc_core_export.h>

#include <QExplicitlySharedDataPointer>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace ConnUi {

class NfcLinkPrivate;

/**
 * Shows where a link of a tag leads, as far as the user has to know before it is opened.
 *
 * Tags are written by strangers: a link can be made to look as if it led somewhere else. A question about a
 * web link therefore shows host(), of which domain() has to stay visible, and warns of suspicion(); one about
 * a call or a message says what else would happen. Everything is computed when the link is made; nothing is
 * looked up in a network.
 */
class CONNUI_NFC_CORE_EXPORT NfcLink
{
    Q_GADGET
    /** The link, see uri(). */
    Q_PROPERTY(QString uri READ uri CONSTANT)
    /** The scheme, see scheme(). */
    Q_PROPERTY(QString scheme READ scheme CONSTANT)
    /** The kind of link. */
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    /** The host of a web link, see host(). */
    Q_PROPERTY(QString host READ host CONSTANT)
    /** The registered end of the host, see domain(). */
    Q_PROPERTY(QString domain READ domain CONSTANT)
    /** Whether the connection to the host is encrypted. */
    Q_PROPERTY(bool encrypted READ isEncrypted CONSTANT)
    /** The reason not to trust a web link. */
    Q_PROPERTY(Suspicion suspicion READ suspicion CONSTANT)
    /** Whether a call does nothing else, see isPlainNumber(). */
    Q_PROPERTY(bool plainNumber READ isPlainNumber CONSTANT)
    /** Whether a call switches something, see isServiceCode(). */
    Q_PROPERTY(bool serviceCode READ isServiceCode CONSTANT)
    /** The number of receivers of a message. */
    Q_PROPERTY(int receiverCount READ receiverCount CONSTANT)
    /** Whether the link shows all of its message, see isShownWhole(). */
    Q_PROPERTY(bool shownWhole READ isShownWhole CONSTANT)

public:
    /** The kinds of links that a question treats differently. */
    enum Kind {
        Web,     ///< "http" or "https" (RFC 3986)
        Number,  ///< A phone number: "tel" (RFC 3966) or "callto"
        Message, ///< A text message: "sms" (RFC 5724)
        Other,   ///< Everything else
    };
    Q_ENUM(Kind)

    /** The reasons not to trust a web link. */
    enum Suspicion {
        NotSuspicious, ///< There is none, or the link is not a web link
        NoHost,        ///< It does not name a host, or what it names cannot be one
        UserInfo,      ///< The name of a user stands where readers look for the host
        Disguised,     ///< It is written so that programs may disagree about where it leads
    };
    Q_ENUM(Suspicion)

    /** Makes a link without a URI, of the kind Other. */
    NfcLink();

    /** Reads \a uri as it stands on a tag. Any text is accepted. */
    explicit NfcLink(const QString &uri);

    /** Shares all that is known about \a other. */
    NfcLink(const NfcLink &other);

    /** Shares all that is known about \a other. */
    NfcLink &operator=(const NfcLink &other);

    /** Deletes the link. */
    ~NfcLink();

    /**
     * Returns the URI in the form that decides its kind, because tags are written by hand: without blanks
     * around it, with its scheme in lower case, and with "http://" in front when it has no scheme.
     */
    QString uri() const;

    /** Returns the scheme in lower case, without its colon. */
    QString scheme() const;

    /** Returns the kind of link, which its scheme decides. */
    Kind kind() const;

    /**
     * Returns the host that a web link contacts, fit to be shown; empty where there is none.
     *
     * A label whose letters could be taken for others, by the rules of Unicode (UTS 39), is in Punycode.
     */
    QString host() const;

    /**
     * Returns the end of host() that somebody has registered, by the public suffix list; the host itself when
     * it is an address or a local name.
     */
    QString domain() const;

    /**
     * Returns the position in uri() at which domain() is written, for a question to set it apart from the
     * rest of the link; the position of the whole host where it is written in an unusual way, and -1 where
     * programs may disagree about what the host is, or where there is none.
     */
    qsizetype domainPosition() const;

    /** Returns the number of UTF-16 units in uri() from domainPosition() to the end of the domain. */
    qsizetype domainLength() const;

    /** Returns host() in about \a length characters, cut at its front. Its domain() is never cut. */
    Q_INVOKABLE QString shortHost(int length) const;

    /** Returns whether a web link is one of "https". */
    bool isEncrypted() const;

    /** Returns the reason not to trust a web link. */
    Suspicion suspicion() const;

    /** Returns whether a Number is one that a call cannot turn into anything else: digits, as people write
     * them, and parameters such as an extension. */
    bool isPlainNumber() const;

    /** Returns whether calling a Number would switch something in the phone or the network: it holds a star
     * or a hash. */
    bool isServiceCode() const;

    /** Returns how many receivers a Message goes to; 0 for other kinds. */
    int receiverCount() const;

    /** Returns whether a reader of the URI of a Message sees all that would be sent; true for other kinds. */
    bool isShownWhole() const;

private:
    QExplicitlySharedDataPointer<NfcLinkPrivate> d;
};

} // namespace ConnUi

// A growing list may move it byte by byte: it is a pointer.
Q_DECLARE_TYPEINFO(ConnUi::NfcLink, Q_RELOCATABLE_TYPE);

#endif
