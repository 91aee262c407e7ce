// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "busmonitor.h"

#include <QDBusMessage>

namespace {

// Columns of a line of dbus-monitor --profile:
// type, time, serial, sender, destination, path, interface, member
enum Column { Type = 0, Sender = 3, Interface = 6, Member = 7, Columns = 8 };

} // namespace

BusMonitor::BusMonitor(const QDBusConnection &watched) : watched(watched)
{
    const bool isSystem = watched.name() == QDBusConnection::systemBus().name();
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("stdbuf"),
                  {QStringLiteral("-oL"), QStringLiteral("dbus-monitor"),
                   isSystem ? QStringLiteral("--system") : QStringLiteral("--session"),
                   QStringLiteral("--profile"), QStringLiteral("type='method_call'")});
    // It says so when the bus has made it a monitor: the name of its own connection is taken from it.
    while (!process.readAllStandardOutput().contains("NameLost"))
        if (!process.waitForReadyRead())
            qFatal("dbus-monitor does not start");
}

BusMonitor::~BusMonitor()
{
    process.kill();
    process.waitForFinished();
}

QStringList BusMonitor::takeCalls()
{
    // The messages before the mark are all that were sent before it.
    const QString mark = QStringLiteral("Mark%1").arg(++marks);
    watched.send(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                                QStringLiteral("org.connui.BusMonitor"), mark));
    QStringList calls;
    for (;;) {
        while (!process.canReadLine())
            if (!process.waitForReadyRead())
                qFatal("dbus-monitor does not show the mark");
        const QStringList columns = QString::fromUtf8(process.readLine().trimmed()).split(u'\t');
        if (columns.size() < Columns || columns[Type] != QLatin1String("mc") ||
            columns[Sender] != watched.baseService())
            continue;
        if (columns[Member] == mark)
            return calls;
        if (columns[Interface] == QLatin1String("org.connui.FakeService"))
            continue; // the fakes' own
        calls.append(columns[Interface] + u'.' + columns[Member]);
    }
}
