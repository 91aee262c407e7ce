// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_OTHERPROGRAM_H
#define CONNUI_TESTS_OTHERPROGRAM_H

#include <winscard.h>

#include <QtGlobal>

/** Another program that has the card on a reader, for as long as it lives. */
class OtherProgram
{
public:
    enum How { Exclusive, InTransaction, Sharing };

    explicit OtherProgram(How how, const char *reader = "Virtual reader 0 00 00")
    {
        DWORD protocol = 0;
        SCardEstablishContext(SCARD_SCOPE_SYSTEM, nullptr, nullptr, &context);
        const DWORD mode = how == Exclusive ? SCARD_SHARE_EXCLUSIVE : SCARD_SHARE_SHARED;
        constexpr DWORD anyProtocol = SCARD_PROTOCOL_T0 | SCARD_PROTOCOL_T1;
        if (SCardConnect(context, reader, mode, anyProtocol, &card, &protocol) != SCARD_S_SUCCESS ||
            (how == InTransaction && SCardBeginTransaction(card) != SCARD_S_SUCCESS))
            qFatal("the card cannot be had");
    }

    /** Whether somebody else has reset the card. */
    bool findsAReset() const
    {
        return SCardStatus(card, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) ==
               LONG(SCARD_W_RESET_CARD);
    }

    ~OtherProgram() { SCardReleaseContext(context); }

    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

private:
    SCARDCONTEXT context = 0;
    SCARDHANDLE card = 0;
};

#endif
