// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TAP_H
#define CONNUI_TAP_H

#include <QProcess>
#include <QString>
#include <QStringList>

/** A run of nfctap. */
class Tap
{
public:
    explicit Tap(const QStringList &arguments) { process.start(QStringLiteral(NFCTAP), arguments); }

    ~Tap()
    {
        process.kill();
        process.waitForFinished();
    }

    bool isRunning() const { return process.state() != QProcess::NotRunning; }

    /** Waits for its end and returns its exit code; -1 when it does not end. */
    int exitCode()
    {
        const bool ended = !isRunning() || process.waitForFinished(60000);
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QString output() { return QString::fromUtf8(process.readAllStandardOutput()); }
    QString errors() { return QString::fromUtf8(process.readAllStandardError()); }

private:
    QProcess process;
};

#endif
