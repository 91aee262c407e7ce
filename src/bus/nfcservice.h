// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCSERVICE_H
#define CONNUI_NFCSERVICE_H

#include <QString>

/** Where the daemon and this side of it are found on the system bus. */
namespace ConnUi::NfcService {

inline QString name()
{
    return QStringLiteral("com.tavix.nfc");
}

inline QString handoverRequestorPath()
{
    return QStringLiteral("/com/tavix/nfcHandoverRequestor");
}

} // namespace ConnUi::NfcService

#endif
