// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_READERS_H
#define CONNUI_TESTS_READERS_H

#include <winscard.h>

#include <QFile>
#include <QList>

namespace Readers {

/** The longest wait for the daemon, in milliseconds: a busy machine may take its time. */
inline constexpr int patience = 60000;

/** The name that pcscd gives the reader \a number of with-reader. */
inline const char *name(int number)
{
    return number == 0 ? "Virtual reader 0 00 00" : "Virtual reader 1 01 00";
}

/** Returns when the reader \a number is in the \a state. */
inline void waitFor(int number, DWORD state)
{
    SCARDCONTEXT context = 0;
    if (SCardEstablishContext(SCARD_SCOPE_SYSTEM, nullptr, nullptr, &context) != SCARD_S_SUCCESS)
        qFatal("there is no pcscd");
    SCARD_READERSTATE reader = {};
    reader.szReader = name(number);
    do {
        reader.dwCurrentState = reader.dwEventState & ~DWORD(SCARD_STATE_CHANGED);
        if (SCardGetStatusChange(context, INFINITE, &reader, 1) != SCARD_S_SUCCESS)
            qFatal("there is no %s", reader.szReader);
    } while (!(reader.dwEventState & state));
    SCardReleaseContext(context);
}

/** Returns when pcscd has noticed a card on the reader \a number. */
inline void waitForCard(int number)
{
    waitFor(number, SCARD_STATE_PRESENT);
}

/** Returns when pcscd has noticed that the tags of the test before have left both readers. */
inline void waitUntilEmpty()
{
    for (const int number : {0, 1})
        waitFor(number, SCARD_STATE_EMPTY);
}

/** The number of connections to pcscd, by any program in this network namespace. */
inline int connectionsToPcscd()
{
    QFile sockets(QStringLiteral("/proc/self/net/unix"));
    if (!sockets.open(QFile::ReadOnly))
        qFatal("the sockets cannot be listed");
    // Num RefCount Protocol Flags Type St Inode Path
    constexpr int stateColumn = 5;
    int connections = 0;
    const QList<QByteArray> lines = sockets.readAll().split('\n');
    for (const QByteArray &line : lines)
        connections += line.endsWith("/pcscd.comm") && line.simplified().split(' ').at(stateColumn) == "03";
    return connections;
}

} // namespace Readers

#endif
