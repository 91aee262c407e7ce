// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_EMPTYREADERS_H
#define CONNUI_TESTS_EMPTYREADERS_H

#include <winscard.h>

#include <QtGlobal>

/** Returns when pcscd has noticed that the tags of the test before have left both readers. */
inline void waitForEmptyReaders()
{
    SCARDCONTEXT context = 0;
    if (SCardEstablishContext(SCARD_SCOPE_SYSTEM, nullptr, nullptr, &context) != SCARD_S_SUCCESS)
        qFatal("there is no pcscd");
    for (const char *name : {"Virtual reader 0 00 00", "Virtual reader 1 01 00"}) {
        SCARD_READERSTATE reader = {};
        reader.szReader = name;
        do {
            reader.dwCurrentState = reader.dwEventState & ~DWORD(SCARD_STATE_CHANGED);
            if (SCardGetStatusChange(context, INFINITE, &reader, 1) != SCARD_S_SUCCESS)
                qFatal("there is no %s", name);
        } while (!(reader.dwEventState & SCARD_STATE_EMPTY));
    }
    SCardReleaseContext(context);
}

#endif
