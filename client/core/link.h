// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_LINK_H
#define CONNUI_CLIENT_LINK_H

#include <QString>

/** Where a link to the web leads, as far as the user has to know before it is opened. */
struct Link
{
    /** Why the user should not trust the link. */
    enum Suspicion {
        None,
        NoHost,    ///< It names nobody, or what it names cannot be a host
        UserInfo,  ///< A user's name stands where readers look for the host
        Disguised, ///< It is written so that programs may disagree about where it leads
    };

    /** Whom it contacts, as it may be shown: a host whose letters could be taken for others is in Punycode.
     */
    QString host;
    /** The end of the host that somebody has registered; the host itself when it is an address or a local
     * name.
     */
    QString domain;
    bool isEncrypted = false;
    Suspicion suspicion = None;
};

/** Reads \a uri, an "http:" or "https:" link (RFC 3986). */
Link readLink(const QString &uri);

/** Returns \a link's host in at most \a length characters or so, cut at its front; its domain is never cut.
 */
QString shortHost(const Link &link, qsizetype length);

#endif
