// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_PCSCDPROCESS_H
#define CONNUI_TESTS_PCSCDPROCESS_H

#include <csignal>

#include <QDir>
#include <QFile>
#include <QProcess>

/** The pcscd of with-reader, which dies and comes. */
namespace PcscdProcess {

/** Sends a signal to the one that runs. */
inline void send(int signal)
{
    QFile file(qEnvironmentVariable("CONNUI_READER") + QStringLiteral("/pcscd.pid"));
    if (!file.open(QFile::ReadOnly))
        qFatal("there is no pcscd");
    kill(file.readAll().trimmed().toInt(), signal);
}

/** Ends the one that runs, as kill -9 does, and leaves nothing of it in the way of the next one. */
inline void die()
{
    send(SIGKILL);
    for (const char *left : {"/run/pcscd/pcscd.comm", "/run/pcscd/pcscd.pid"})
        QFile::remove(QString::fromLatin1(left));
}

/** Removes the folder of the socket of one that has died, as it is on a computer where none has run yet. */
inline void loseFolder()
{
    if (!QDir().rmdir(QStringLiteral("/run/pcscd")))
        qFatal("the folder is in use");
}

inline void makeFolder()
{
    if (!QDir().mkdir(QStringLiteral("/run/pcscd")))
        qFatal("the folder is there");
}

/** Starts it, without waiting for it; with-reader ends it. */
inline void come()
{
    QProcess::startDetached(qEnvironmentVariable("CONNUI_READER") + QStringLiteral("/pcscd"), QStringList());
}

} // namespace PcscdProcess

#endif
