// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_PCSCCONTEXT_H
#define CONNUI_DAEMON_PCSC_PCSCCONTEXT_H

#include <winscard.h>

#include <QString>

/** A connection to pcscd, for one thread; made with the object and given up with it. */
class PcscContext
{
public:
    PcscContext();
    ~PcscContext();

    PcscContext(const PcscContext &) = delete;
    PcscContext &operator=(const PcscContext &) = delete;

    /** SCARD_S_SUCCESS, or why there is no connection. */
    LONG result() const;

    SCARDCONTEXT handle() const;

    /** The words of pcscd's library for \a result. */
    static QString text(LONG result);

private:
    SCARDCONTEXT context = 0;
    const LONG established;
};

#endif
