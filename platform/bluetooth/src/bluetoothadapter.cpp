// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothadapter.h"

#include <utility>

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include "bluetoothadapter_p.h"
#include "bluez_p.h"
#include "bluezobjectsproxy.h"
#include "devicecreation_p.h"
#include "pendinganswer.h"
#include "support/runningservice.h"
#include "support/whenanswered.h"

namespace ConnUi {

using namespace std::chrono_literals;

namespace {

constexpr int lookTimeout = 500;       // ms
constexpr int asyncLookTimeout = 5000; // ms
constexpr auto creationLimit = 30s;
constexpr QLatin1String adapterGone("The Bluetooth adapter is gone");

// The path of the first adapter that is switched on, else of the first; empty when there is none.
QString defaultAdapterPath(const BlueZ::Objects &objects)
{
    QString first;
    for (auto i = objects.begin(); i != objects.end(); ++i) {
        const auto adapter = i->constFind(BlueZ::adapterInterface);
        if (adapter == i->constEnd())
            continue;
        if (adapter->value(QStringLiteral("Powered")).toBool())
            return i.key().path();
        if (first.isEmpty())
            first = i.key().path();
    }
    return first;
}

QString foundAdapterPath(const QDBusPendingReply<BlueZ::Objects> &reply)
{
    if (!reply.isError())
        return defaultAdapterPath(reply.value());
    qWarning("BluetoothAdapter: unable to find an adapter: %s", qUtf8Printable(reply.error().message()));
    return {};
}

} // namespace

BluetoothAdapterPrivate::BluetoothAdapterPrivate(const QString &service, const QString &path,
                                                 BluetoothAdapter *adapter)
    : QObject(adapter)
    , service(service)
    , path(path)
{
    const auto bus = QDBusConnection::systemBus();
    auto *objects = new BluezObjectsProxy(service, QStringLiteral("/"), bus, this);
    connect(objects, &BluezObjectsProxy::InterfacesRemoved, this, &BluetoothAdapterPrivate::handleRemoval);
    auto *watcher = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &BluetoothAdapterPrivate::vanish);
}

void BluetoothAdapterPrivate::handleRemoval(const QDBusObjectPath &object, const QStringList &interfaces)
{
    if (object.path() == path && interfaces.contains(BlueZ::adapterInterface))
        vanish();
}

void BluetoothAdapterPrivate::vanish()
{
    if (std::exchange(valid, false))
        Q_EMIT vanished();
}

BluetoothAdapter *BluetoothAdapter::defaultAdapter()
{
    const auto bus = QDBusConnection::systemBus();
    const QString service = Support::runningService(bus, BlueZ::service);
    if (service.isEmpty())
        return nullptr;
    BlueZ::registerTypes();
    BluezObjectsProxy bluez(service, QStringLiteral("/"), bus);
    bluez.setTimeout(lookTimeout);
    QDBusPendingReply<BlueZ::Objects> reply = bluez.GetManagedObjects();
    reply.waitForFinished();
    const QString path = foundAdapterPath(reply);
    return path.isEmpty() ? nullptr : new BluetoothAdapter(service, path);
}

PendingAnswer *BluetoothAdapter::defaultAdapterAsync(QObject *parent)
{
    BlueZ::registerTypes();
    auto *answer = new PendingAnswer(parent);
    QDBusMessage call = QDBusMessage::createMethodCall(
        BlueZ::service, QStringLiteral("/"), QLatin1String(BluezObjectsProxy::staticInterfaceName()),
        QStringLiteral("GetManagedObjects"));
    call.setAutoStartService(false);
    const QDBusPendingCall look = QDBusConnection::systemBus().asyncCall(call, asyncLookTimeout);
    Support::whenAnswered(look, answer, [answer](const QDBusPendingReply<BlueZ::Objects> &reply) {
        const QDBusError error = reply.error();
        if (Support::isNotRunning(error)) {
            answer->finish(QVariant::fromValue<BluetoothAdapter *>(nullptr));
            return;
        }
        const QString path = foundAdapterPath(reply);
        BluetoothAdapter *adapter =
            path.isEmpty() ? nullptr : new BluetoothAdapter(reply.reply().service(), path);
        if (adapter)
            adapter->setParent(answer);
        answer->finish(QVariant::fromValue(adapter), error.name(), error.message());
    });
    return answer;
}

BluetoothAdapter::BluetoothAdapter(const QString &service, const QString &path)
    : d(new BluetoothAdapterPrivate(service, path, this))
{}

BluetoothAdapter::~BluetoothAdapter() = default;

bool BluetoothAdapter::isValid() const
{
    return d->valid;
}

void BluetoothAdapter::startCreatingDevice(const BluetoothDevice &device)
{
    auto *creation = new DeviceCreation(d->service, d->path, device.address(), creationLimit, this);
    connect(creation, &DeviceCreation::created, this, &BluetoothAdapter::deviceCreated);
    connect(creation, &DeviceCreation::failed, this, &BluetoothAdapter::deviceCreationFailed);

    if (!device.isValid()) {
        creation->failLater(QStringLiteral("Not a Bluetooth address"));
        return;
    }
    if (!d->valid) {
        creation->failLater(adapterGone);
        return;
    }
    connect(d, &BluetoothAdapterPrivate::vanished, creation, [creation] { creation->fail(adapterGone); });
    creation->start();
}

} // namespace ConnUi
