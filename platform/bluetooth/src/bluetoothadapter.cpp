// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothadapter.h"

#include <utility>

#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include "bluetoothadapter_p.h"
#include "devicecreation_p.h"

namespace ConnUi {

using namespace std::chrono_literals;

namespace {

constexpr int lookTimeout = 500; // ms
constexpr auto creationLimit = 30s;
constexpr QLatin1String adapterGone("The Bluetooth adapter is gone");

} // namespace

BluetoothAdapterPrivate::BluetoothAdapterPrivate(BluetoothAdapter *adapter, const QString &path)
    : QObject(adapter)
    , path(path)
{
    auto bus = QDBusConnection::systemBus();
    bus.connect(BlueZ::Service, QStringLiteral("/"), BlueZ::ObjectManager,
                QStringLiteral("InterfacesRemoved"), this, SLOT(interfacesRemoved(QDBusMessage)));
    auto *watcher =
        new QDBusServiceWatcher(BlueZ::Service, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &BluetoothAdapterPrivate::vanish);
}

void BluetoothAdapterPrivate::interfacesRemoved(const QDBusMessage &signal)
{
    if (signal.signature() == QStringLiteral("oas") &&
        signal.arguments().at(0).value<QDBusObjectPath>().path() == path &&
        signal.arguments().at(1).toStringList().contains(BlueZ::AdapterInterface))
        vanish();
}

void BluetoothAdapterPrivate::vanish()
{
    if (std::exchange(valid, false))
        Q_EMIT vanished();
}

BluetoothAdapter *BluetoothAdapter::defaultAdapter()
{
    const QDBusMessage reply =
        QDBusConnection::systemBus().call(BlueZ::managedObjectsCall(), QDBus::Block, lookTimeout);
    if (reply.errorName() == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"))
        return nullptr;
    QString problem;
    const BlueZ::Objects objects = BlueZ::managedObjects(reply, &problem);
    if (!problem.isEmpty())
        qWarning("BluetoothAdapter: unable to find an adapter: %s", qUtf8Printable(problem));
    for (auto i = objects.begin(); i != objects.end(); ++i)
        if (i.value().contains(BlueZ::AdapterInterface))
            return new BluetoothAdapter(i.key().path());
    return nullptr;
}

BluetoothAdapter::BluetoothAdapter(const QString &path) : d(new BluetoothAdapterPrivate(this, path)) {}

BluetoothAdapter::~BluetoothAdapter() = default;

bool BluetoothAdapter::isValid() const
{
    return d->valid;
}

void BluetoothAdapter::startCreatingDevice(const BluetoothDevice &device)
{
    auto *creation = new DeviceCreation(d->path, device.address(), creationLimit, this);
    connect(creation, &DeviceCreation::created, this, &BluetoothAdapter::deviceCreated);
    connect(creation, &DeviceCreation::failed, this, &BluetoothAdapter::deviceCreationFailed);

    const auto fail = [creation](const QString &reason) {
        QMetaObject::invokeMethod(
            creation, [creation, reason] { creation->fail(reason); }, Qt::QueuedConnection);
    };
    if (!device.isValid())
        return fail(QStringLiteral("Not a Bluetooth address"));
    if (!d->valid)
        return fail(adapterGone);
    connect(d, &BluetoothAdapterPrivate::vanished, creation, [creation] { creation->fail(adapterGone); });
    creation->start();
}

} // namespace ConnUi
