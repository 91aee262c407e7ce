// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_WEBLINK_H
#define CONNUI_WEBLINK_H

#include <QString>

#include "nfclink.h"

namespace ConnUi {

/** Where a link to the web leads; NfcLink explains the fields. */
struct WebLink
{
    QString host;
    QString domain;
    qsizetype domainPosition = -1;
    qsizetype domainLength = 0;
    bool isEncrypted = false;
    NfcLink::Suspicion suspicion = NfcLink::NotSuspicious;
};

/** Reads \a uri, an "http:" or "https:" link (RFC 3986). */
WebLink readWebLink(const QString &uri);

} // namespace ConnUi

#endif
