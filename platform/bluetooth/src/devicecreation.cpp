// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <utility>

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include "devicecreation_p.h"
#include "support/whenanswered.h"

namespace ConnUi {

DeviceCreation::DeviceCreation(const QString &service, const QString &adapterPath, const QString &address,
                               std::chrono::milliseconds limit, QObject *parent)
    : QObject(parent)
    , objects(service, QStringLiteral("/"), QDBusConnection::systemBus())
    , adapter(service, adapterPath, QDBusConnection::systemBus())
    , address(address)
{
    objects.setTimeout(int(limit.count()));
    adapter.setTimeout(int(limit.count()));
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
    connect(&objects, &BluezObjectsProxy::InterfacesAdded, this, &DeviceCreation::handleAddition);
    look([this] { connectDevice(); });
}

void DeviceCreation::await(const QDBusPendingCall &call, const Answer &answered)
{
    Support::whenAnswered(
        call, this,
        [this, answered](const QDBusPendingCall &answer) {
            if (!finished)
                answered(answer);
        });
}

void DeviceCreation::look(const std::function<void()> &unknown)
{
    await(
        objects.GetManagedObjects(),
        [this, unknown](const QDBusPendingCall &call) {
            const QDBusPendingReply<BlueZ::Objects> reply = call;
            if (reply.isError()) {
                fail(reply.error().message());
                return;
            }
            if (!takeKnownDevice(reply.value()))
                unknown();
        });
}

void DeviceCreation::connectDevice()
{
    connecting = true;
    await(
        adapter.ConnectDevice({{QStringLiteral("Address"), address}}), [this](const QDBusPendingCall &call) {
            connecting = false;
            // BlueZ offers it only when it runs with its experimental interfaces.
            if (call.error().type() == QDBusError::UnknownMethod)
                discover();
            else if (call.isError() && call.error().name() != QLatin1String("org.bluez.Error.AlreadyExists"))
                fail(call.error().message());
            else
                look([this] { fail(QStringLiteral("The device is gone")); });
        });
}

void DeviceCreation::discover()
{
    // Without a filter BlueZ looks for all that there is, too.
    adapter.SetDiscoveryFilter({{QStringLiteral("Transport"), QStringLiteral("auto")}});
    discovery = adapter.StartDiscovery();
    await(*discovery, [this](const QDBusPendingCall &call) {
        if (!call.isError())
            return;
        discovery.reset();
        // Somebody else in this process discovers; whatever is found is announced to us as well.
        if (call.error().name() != QLatin1String("org.bluez.Error.InProgress"))
            fail(call.error().message());
    });
}

void DeviceCreation::stopDiscovery()
{
    // A refusal may be here before it is handed on, and somebody else's discovery is not ours to end.
    const std::optional<QDBusPendingCall> begun = std::exchange(discovery, std::nullopt);
    if (begun && !begun->isError())
        adapter.call(QDBus::NoBlock, QStringLiteral("StopDiscovery"));
}

void DeviceCreation::handleAddition(const QDBusObjectPath &object, const BlueZ::Interfaces &interfaces)
{
    if (!finished && !connecting && isOwn(object))
        takeDevice(interfaces);
}

bool DeviceCreation::isOwn(const QDBusObjectPath &object) const
{
    return object.path().startsWith(adapter.path() + QLatin1Char('/'));
}

// The adapter's own device, else the same one as another adapter knows it.
bool DeviceCreation::takeKnownDevice(const BlueZ::Objects &known)
{
    for (const bool own : {true, false})
        for (auto i = known.begin(); i != known.end(); ++i)
            if (isOwn(i.key()) == own && takeDevice(i.value()))
                return true;
    return false;
}

bool DeviceCreation::takeDevice(const BlueZ::Interfaces &interfaces)
{
    QVariantMap properties = interfaces.value(BlueZ::deviceInterface);
    const QString address = properties.value(QStringLiteral("Address")).toString();
    if (address.compare(this->address, Qt::CaseInsensitive) != 0)
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

void DeviceCreation::failLater(const QString &reason)
{
    QMetaObject::invokeMethod(
        this, [this, reason] { fail(reason); }, Qt::QueuedConnection);
}

void DeviceCreation::finish()
{
    finished = true;
    limit.stop();
    stopDiscovery();
    deleteLater();
}

} // namespace ConnUi
