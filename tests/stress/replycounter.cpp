// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "replycounter.h"

#include <QDBusMessage>

ReplyCounter::ReplyCounter(const QDBusConnection &watched) : watched(watched)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("stdbuf"),
                  {QStringLiteral("-oL"), QStringLiteral("dbus-monitor"), QStringLiteral("--system"),
                   QStringLiteral("--profile"), QStringLiteral("sender='%1'").arg(watched.baseService())});
    // It says so when the bus has made it a monitor: the name of its own connection is taken from it.
    while (!process.readAllStandardOutput().contains("NameLost"))
        if (!process.waitForReadyRead())
            qFatal("dbus-monitor does not start");
}

ReplyCounter::~ReplyCounter()
{
    process.kill();
    process.waitForFinished();
}

QHash<QByteArray, int> ReplyCounter::replies()
{
    // The last thing to be seen.
    watched.send(QDBusMessage::createSignal(QStringLiteral("/"), QStringLiteral("org.connui.ReplyCounter"),
                                            QStringLiteral("Mark")));
    QHash<QByteArray, int> replies;
    for (;;) {
        while (!process.canReadLine())
            if (!process.waitForReadyRead())
                qFatal("dbus-monitor does not show the mark");
        // Of a reply: type, time, serial, sender, destination, serial of the call.
        const QByteArrayList columns = process.readLine().trimmed().split('\t');
        if (columns.first() == "mr" || columns.first() == "err")
            ++replies[columns[4] + ' ' + columns[5]];
        else if (columns.last() == "Mark")
            return replies;
    }
}
