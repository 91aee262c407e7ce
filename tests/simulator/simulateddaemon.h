// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIMULATEDDAEMON_H
#define CONNUI_SIMULATEDDAEMON_H

#include <memory>

#include <QDBusMessage>
#include <QProcess>
#include <QVariantList>

/** nfcd-sim in a process of its own, and calls to it from the test program. */
class SimulatedDaemon
{
public:
    ~SimulatedDaemon();

    /** Starts nfcd-sim and waits until it is on the bus. */
    void start(const QStringList &arguments = {});
    /** Kills it, as kill -9 does, and waits until it has left the bus. */
    void kill();

    static bool isOnBus();
    /** Lets the bus start nfcd-sim for whoever calls it. */
    static void makeActivatable();
    /** Calls the adapter object and returns its reply. */
    static QDBusMessage callAdapter(const QString &method, const QVariantList &arguments = {},
                                    int timeLimit = -1);
    /** Connects a signal of the adapter object. */
    static bool connectAdapter(const QString &signal, QObject *receiver, const char *slot);

private:
    std::unique_ptr<QProcess> process;
};

#endif
