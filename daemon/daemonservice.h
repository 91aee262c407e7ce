// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_DAEMONSERVICE_H
#define CONNUI_DAEMON_DAEMONSERVICE_H

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QString>

#include "daemon/manager.h"

class Adapter;

/**
 * The daemon's place on the system bus: the objects that every NFC daemon has, and its name.
 *
 * Make it before any other D-Bus object: it registers the types of the messages.
 */
class DaemonService
{
public:
    DaemonService();

    /** The bus it is on; not connected when there is none. */
    QDBusConnection &bus();

    /**
     * Shows \a adapter on the bus and takes the name "com.tavix.nfc"; false, with a \a reason, when another
     * process has it.
     *
     * The application ends with its bus. Register the daemon's other objects before: a client that
     * waits for the name may call them at once.
     */
    bool start(Adapter *adapter, QString &reason);

private:
    QDBusConnection systemBus;
    const QDBusObjectPath adapterPath;
    Manager manager;
};

#endif
