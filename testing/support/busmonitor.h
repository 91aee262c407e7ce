// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BUSMONITOR_H
#define CONNUI_BUSMONITOR_H

#include <QDBusConnection>
#include <QProcess>
#include <QStringList>

/** Watches the method calls that one connection of this program sends. */
class BusMonitor
{
public:
    explicit BusMonitor(const QDBusConnection &watched = QDBusConnection::systemBus());
    ~BusMonitor();

    /** Returns "<interface>.<member>" of each call that was sent since the start or the last take, in order.
     */
    QStringList takeCalls();

private:
    QDBusConnection watched;
    QProcess process;
    int marks = 0;
};

#endif
