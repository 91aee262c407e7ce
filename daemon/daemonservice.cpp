// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/daemonservice.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMetaType>
#include <QList>

#include "adapteradaptor.h"
#include "daemon/adapter.h"
#include "daemon/bluetoothpeer.h"
#include "daemon/handler.h"
#include "manageradaptor.h"

namespace {

// Before there is a connection: QtDBus would register its own types on its thread, while it reads a message.
QDBusConnection connectedBus()
{
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    qDBusRegisterMetaType<BluetoothPeer>();
    qDBusRegisterMetaType<Handler>();
    qDBusRegisterMetaType<QList<Handler>>();
    return QDBusConnection::systemBus();
}

} // namespace

DaemonService::DaemonService()
    : systemBus(connectedBus())
    , adapterPath(QStringLiteral("/com/tavix/nfc/adapter0"))
    , manager(adapterPath)
{
    new ManagerAdaptor(&manager);
}

QDBusConnection &DaemonService::bus()
{
    return systemBus;
}

bool DaemonService::start(Adapter *adapter, QString &reason)
{
    // Without its bus nobody can reach the daemon, nor end it.
    systemBus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                      QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                      QCoreApplication::instance(), SLOT(quit()));
    new AdapterAdaptor(adapter);
    systemBus.registerObject(QStringLiteral("/"), &manager);
    systemBus.registerObject(adapterPath.path(), adapter);
    if (systemBus.registerService(QStringLiteral("com.tavix.nfc")))
        return true;
    reason = systemBus.isConnected()
                 ? QStringLiteral("com.tavix.nfc belongs to another process")
                 : QStringLiteral("no system bus: %1").arg(systemBus.lastError().message());
    return false;
}
