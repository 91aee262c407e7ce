// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_PCSCDPROCESS_H
#define CONNUI_TESTS_PCSCDPROCESS_H

#include <csignal>

#include <QFile>
#include <QProcess>

/** The pcscd of with-reader, which dies and comes. */
class PcscdProcess
{
public:
    ~PcscdProcess()
    {
        if (process.state() != QProcess::NotRunning)
            die();
    }

    /** Ends the one that runs, whoever has started it. */
    void die()
    {
        kill(pid(), SIGKILL);
        if (process.state() != QProcess::NotRunning)
            process.waitForFinished();
    }

    /** Starts it, without waiting for it. */
    void come() { process.start(folder() + QStringLiteral("/pcscd"), QStringList()); }

private:
    static QString folder() { return qEnvironmentVariable("CONNUI_READER"); }

    static pid_t pid()
    {
        QFile file(folder() + QStringLiteral("/pcscd.pid"));
        return file.open(QFile::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
    }

    QProcess process;
};

#endif
