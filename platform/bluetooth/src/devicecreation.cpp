// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <utility>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>

#include "devicecreation_p.h"

namespace ConnUi {

DeviceCreation::DeviceCreation(const QString &adapterPath, const QString &address,
                               std::chrono::milliseconds limit, QObject *parent)
    : QObject(parent)
    , adapterPath(adapterPath)
    , address(address)
{
    this->limit.setSingleShot(true);
    this->limit.setInterval(limit);
    connect(&this->limit, &QTimer::timeout, this,
            [this] { fail(QStringLiteral("The device was not found in time")); });
}

DeviceCreation::~DeviceCreation()
{
    stopDiscovery();
}

void DeviceCreation::start()
{
    limit.start();
    // Before the first look, so that a device which appears in between is not missed.
    QDBusConnection::systemBus().connect(BlueZ::Service, QStringLiteral("/"), BlueZ::ObjectManager,
                                         QStringLiteral("InterfacesAdded"), this,
                                         SLOT(interfacesAdded(QDBusMessage)));
    look([this] { connectDevice(); });
}

void DeviceCreation::call(const QDBusMessage &message,
                          const std::function<void(const QDBusMessage &)> &answered)
{
    const auto pending = QDBusConnection::systemBus().asyncCall(message, limit.interval());
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered] {
        watcher->deleteLater();
        if (!this->finished)
            answered(watcher->reply());
    });
}

void DeviceCreation::look(const std::function<void()> &unknown)
{
    call(
        BlueZ::managedObjectsCall(),
        [this, unknown](const QDBusMessage &reply) {
            QString problem;
            const BlueZ::Objects objects = BlueZ::managedObjects(reply, &problem);
            if (!problem.isEmpty())
                return fail(problem);
            for (auto i = objects.begin(); i != objects.end(); ++i)
                if (takeDevice(i.key().path(), i.value()))
                    return;
            unknown();
        });
}

void DeviceCreation::connectDevice()
{
    connecting = true;
    const QVariantMap properties = {{QStringLiteral("Address"), address}};
    call(BlueZ::methodCall(adapterPath, BlueZ::AdapterInterface, QStringLiteral("ConnectDevice"),
                           {properties}),
         [this](const QDBusMessage &reply) {
             connecting = false;
             // BlueZ offers it only when it runs with its experimental interfaces.
             if (reply.errorName() == QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"))
                 return discover();
             if (reply.type() == QDBusMessage::ErrorMessage)
                 return fail(reply.errorMessage());
             look([this] { fail(QStringLiteral("The device is gone")); });
         });
}

void DeviceCreation::discover()
{
    const QVariantMap filter = {{QStringLiteral("Transport"), QStringLiteral("auto")}};
    call(BlueZ::methodCall(adapterPath, BlueZ::AdapterInterface, QStringLiteral("SetDiscoveryFilter"),
                           {filter}),
         [](const QDBusMessage &) {});
    discovering = true;
    call(BlueZ::methodCall(adapterPath, BlueZ::AdapterInterface, QStringLiteral("StartDiscovery")),
         [this](const QDBusMessage &reply) {
             if (reply.type() != QDBusMessage::ErrorMessage)
                 return;
             discovering = false;
             // Somebody else in this process discovers; whatever is found is announced to us as well.
             if (reply.errorName() != QStringLiteral("org.bluez.Error.InProgress"))
                 fail(reply.errorMessage());
         });
}

void DeviceCreation::stopDiscovery()
{
    if (!std::exchange(discovering, false))
        return;
    auto stop = BlueZ::methodCall(adapterPath, BlueZ::AdapterInterface, QStringLiteral("StopDiscovery"));
    QDBusConnection::systemBus().send(stop);
}

void DeviceCreation::interfacesAdded(const QDBusMessage &signal)
{
    if (finished || connecting || signal.signature() != QStringLiteral("oa{sa{sv}}"))
        return;
    takeDevice(signal.arguments().at(0).value<QDBusObjectPath>().path(),
               qdbus_cast<BlueZ::Interfaces>(signal.arguments().at(1)));
}

bool DeviceCreation::takeDevice(const QString &path, const BlueZ::Interfaces &interfaces)
{
    QVariantMap properties = interfaces.value(BlueZ::DeviceInterface);
    const QString address = properties.value(QStringLiteral("Address")).toString();
    if (!path.startsWith(adapterPath + QLatin1Char('/')) ||
        address.compare(this->address, Qt::CaseInsensitive) != 0)
        return false;
    // BlueZ writes addresses in capitals; who asked compares with what was asked.
    properties.insert(QStringLiteral("Address"), this->address);
    finish();
    Q_EMIT created(BluetoothDevice(properties));
    return true;
}

void DeviceCreation::fail(const QString &reason)
{
    if (finished)
        return;
    finish();
    Q_EMIT failed(reason);
}

void DeviceCreation::finish()
{
    finished = true;
    limit.stop();
    stopDiscovery();
    deleteLater();
}

} // namespace ConnUi
