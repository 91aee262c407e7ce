// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "devicecreation_p.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <utility>

namespace ConnUi {

DeviceCreation::DeviceCreation(const QString &adapterPath, const QString &address,
                               std::chrono::milliseconds limit, QObject *parent)
    : QObject(parent)
    , m_adapterPath(adapterPath)
    , m_address(address)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&m_limit, &QTimer::timeout, this,
            [this] { fail(QStringLiteral("The device was not found in time")); });
}

DeviceCreation::~DeviceCreation()
{
    stopDiscovery();
}

void DeviceCreation::start()
{
    m_limit.start();
    // Before the first look, so that a device which appears in between is not missed.
    QDBusConnection::systemBus().connect(BlueZ::Service, QStringLiteral("/"), BlueZ::ObjectManager,
                                         QStringLiteral("InterfacesAdded"), this,
                                         SLOT(interfacesAdded(QDBusMessage)));
    look([this] { connectDevice(); });
}

void DeviceCreation::call(const QDBusMessage &message,
                          const std::function<void(const QDBusMessage &)> &answered)
{
    const auto pending = QDBusConnection::systemBus().asyncCall(message, m_limit.interval());
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered] {
        watcher->deleteLater();
        if (!m_finished)
            answered(watcher->reply());
    });
}

void DeviceCreation::look(const std::function<void()> &unknown)
{
    call(BlueZ::managedObjectsCall(), [this, unknown](const QDBusMessage &reply) {
        QString problem;
        const BlueZ::Objects objects = BlueZ::managedObjects(reply, &problem);
        if (!problem.isEmpty())
            return fail(problem);
        for (auto i = objects.begin(); i != objects.end(); ++i) {
            if (takeDevice(i.key().path(), i.value()))
                return;
        }
        unknown();
    });
}

void DeviceCreation::connectDevice()
{
    m_connecting = true;
    const QVariantMap properties = {{QStringLiteral("Address"), m_address}};
    call(BlueZ::methodCall(m_adapterPath, BlueZ::AdapterInterface, QStringLiteral("ConnectDevice"),
                           {properties}),
         [this](const QDBusMessage &reply) {
             m_connecting = false;
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
    call(BlueZ::methodCall(m_adapterPath, BlueZ::AdapterInterface, QStringLiteral("SetDiscoveryFilter"),
                           {filter}),
         [](const QDBusMessage &) {});
    m_discovering = true;
    call(BlueZ::methodCall(m_adapterPath, BlueZ::AdapterInterface, QStringLiteral("StartDiscovery")),
         [this](const QDBusMessage &reply) {
             if (reply.type() != QDBusMessage::ErrorMessage)
                 return;
             m_discovering = false;
             // Somebody else in this process discovers; whatever is found is announced to us as well.
             if (reply.errorName() != QStringLiteral("org.bluez.Error.InProgress"))
                 fail(reply.errorMessage());
         });
}

void DeviceCreation::stopDiscovery()
{
    if (!std::exchange(m_discovering, false))
        return;
    auto stop = BlueZ::methodCall(m_adapterPath, BlueZ::AdapterInterface, QStringLiteral("StopDiscovery"));
    QDBusConnection::systemBus().send(stop);
}

void DeviceCreation::interfacesAdded(const QDBusMessage &signal)
{
    if (m_finished || m_connecting || signal.signature() != QStringLiteral("oa{sa{sv}}"))
        return;
    takeDevice(signal.arguments().at(0).value<QDBusObjectPath>().path(),
               qdbus_cast<BlueZ::Interfaces>(signal.arguments().at(1)));
}

bool DeviceCreation::takeDevice(const QString &path, const BlueZ::Interfaces &interfaces)
{
    QVariantMap properties = interfaces.value(BlueZ::DeviceInterface);
    const QString address = properties.value(QStringLiteral("Address")).toString();
    if (!path.startsWith(m_adapterPath + QLatin1Char('/')) ||
        address.compare(m_address, Qt::CaseInsensitive) != 0)
        return false;
    // BlueZ writes addresses in capitals; who asked compares with what was asked.
    properties.insert(QStringLiteral("Address"), m_address);
    finish();
    Q_EMIT created(BluetoothDevice(properties));
    return true;
}

void DeviceCreation::fail(const QString &reason)
{
    if (m_finished)
        return;
    finish();
    Q_EMIT failed(reason);
}

void DeviceCreation::finish()
{
    m_finished = true;
    m_limit.stop();
    stopDiscovery();
    deleteLater();
}

} // namespace ConnUi
