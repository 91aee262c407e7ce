// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/pcsccontext.h"

#include <pcsclite.h>

PcscContext::PcscContext()
    : established(SCardEstablishContext(SCARD_SCOPE_SYSTEM, nullptr, nullptr, &context))
{}

PcscContext::~PcscContext()
{
    if (established == SCARD_S_SUCCESS)
        SCardReleaseContext(context);
}

LONG PcscContext::result() const
{
    return established;
}

SCARDCONTEXT PcscContext::handle() const
{
    return context;
}

QString PcscContext::text(LONG result)
{
    return QString::fromLatin1(pcsc_stringify_error(result));
}
