// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/cardconnection.h"

CardConnection::CardConnection(SCARDCONTEXT context, const QByteArray &reader,
                               const std::atomic<bool> &isCanceled, std::atomic<bool> &isWaiting)
    : isCanceled(isCanceled)
    , connected(SCardConnect(context, reader.constData(), SCARD_SHARE_SHARED,
                             SCARD_PROTOCOL_T0 | SCARD_PROTOCOL_T1, &card, &protocol))
{
    isWaiting = connected == SCARD_S_SUCCESS && !isCanceled;
    if (isWaiting)
        begun = SCardBeginTransaction(card);
    isWaiting = false;
}

CardConnection::~CardConnection()
{
    if (begun == SCARD_S_SUCCESS)
        SCardEndTransaction(card, SCARD_LEAVE_CARD);
    if (connected == SCARD_S_SUCCESS)
        SCardDisconnect(card, SCARD_RESET_CARD);
}

LONG CardConnection::result() const
{
    return connected == SCARD_S_SUCCESS ? begun : connected;
}

std::optional<QByteArray> CardConnection::transceive(const QByteArray &command)
{
    if (isCanceled)
        return std::nullopt;
    QByteArray answer(MAX_BUFFER_SIZE_EXTENDED, Qt::Uninitialized);
    auto length = DWORD(answer.size());
    const SCARD_IO_REQUEST *header = protocol == SCARD_PROTOCOL_T0 ? SCARD_PCI_T0 : SCARD_PCI_T1;
    const LONG result =
        SCardTransmit(card, header, reinterpret_cast<const BYTE *>(command.constData()),
                      DWORD(command.size()), nullptr, reinterpret_cast<BYTE *>(answer.data()), &length);
    if (result != SCARD_S_SUCCESS || isCanceled)
        return std::nullopt;
    answer.truncate(qsizetype(length));
    return answer;
}
