// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/touch/bluez.h"

#include <memory>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QMap>
#include <QVariantMap>

#include <BluetoothAdapter>
#include <BluetoothDevice>

namespace {

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

constexpr QLatin1String service("org.bluez");
constexpr QLatin1String adapterInterface("org.bluez.Adapter1");
constexpr QLatin1String deviceInterface("org.bluez.Device1");
/** A device may have to be woken, or want a key pressed. */
constexpr int longestCall = 60000; // ms

QString errorOf(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ErrorMessage)
        return {};
    return reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage();
}

bool isError(const QDBusMessage &reply, const char *name)
{
    return reply.errorName() == QLatin1String(name);
}

Bluez::Device deviceAt(const QDBusObjectPath &path, const QVariantMap &properties)
{
    const auto property = [&properties](const char *name) { return properties.value(QLatin1String(name)); };
    return {path.path(), property("Alias").toString(), property("Class").toUInt(),
            property("Paired").toBool(), property("Connected").toBool()};
}

// Nothing without an adapter.
std::optional<Bluez::Device> deviceAmong(const Objects &objects, const QString &address)
{
    bool hasAdapter = false;
    for (auto object = objects.cbegin(); object != objects.cend(); ++object) {
        hasAdapter = hasAdapter || object->contains(adapterInterface);
        const QVariantMap device = object->value(deviceInterface);
        const QString known = device.value(QStringLiteral("Address")).toString();
        if (known.compare(address, Qt::CaseInsensitive) == 0)
            return deviceAt(object.key(), device);
    }
    return hasAdapter ? std::optional<Bluez::Device>(Bluez::Device()) : std::nullopt;
}

} // namespace

void Bluez::call(const QDBusMessage &message, const Answered &answered)
{
    QDBusMessage unstarting = message;
    unstarting.setAutoStartService(false);
    auto *watcher =
        new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(unstarting, longestCall), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered] {
        watcher->deleteLater();
        answered(watcher->reply());
    });
}

void Bluez::callDevice(const QString &path, const QString &method, const Answered &answered)
{
    call(QDBusMessage::createMethodCall(service, path, deviceInterface, method), answered);
}

void Bluez::look(const QString &address, const std::function<void(const std::optional<Device> &)> &found)
{
    const auto question = QDBusMessage::createMethodCall(service, QStringLiteral("/"),
                                                         QStringLiteral("org.freedesktop.DBus.ObjectManager"),
                                                         QStringLiteral("GetManagedObjects"));
    call(question, [address, found](const QDBusMessage &reply) {
        if (reply.signature() == QLatin1String("a{oa{sa{sv}}}"))
            found(deviceAmong(qdbus_cast<Objects>(reply.arguments().constFirst()), address));
        else
            found(std::nullopt);
    });
}

void Bluez::pair(const QString &address, const Done &done)
{
    withDevice(
        address,
        [this, done](const QString &path) {
            callDevice(
                path, QStringLiteral("Pair"),
                [this, path, done](const QDBusMessage &reply) {
                    const QString error = errorOf(reply);
                    if (error.isEmpty() || isError(reply, "org.bluez.Error.AlreadyExists"))
                        trust(path, done);
                    else
                        done(error);
                });
        },
        done);
}

void Bluez::trust(const QString &path, const Done &done)
{
    auto set = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set.setArguments(
        {QString(deviceInterface), QStringLiteral("Trusted"), QVariant::fromValue(QDBusVariant(true))});
    call(set, [this, path, done](const QDBusMessage &) {
        callDevice(path, QStringLiteral("Connect"),
                   [done](const QDBusMessage &reply) { done(errorOf(reply)); });
    });
}

void Bluez::connectDevice(const QString &address, const Done &done)
{
    callKnown(address, QStringLiteral("Connect"), done);
}

void Bluez::disconnectDevice(const QString &address, const Done &done)
{
    callKnown(address, QStringLiteral("Disconnect"), done);
}

void Bluez::callKnown(const QString &address, const QString &method, const Done &done)
{
    withDevice(
        address,
        [this, method, done](const QString &path) {
            callDevice(
                path, method, [done](const QDBusMessage &reply) { done(errorOf(reply)); });
        },
        done);
}

void Bluez::withDevice(const QString &address, const Found &found, const Done &done)
{
    look(
        address,
        [this, address, found, done](const std::optional<Device> &device) {
            if (!device)
                done(QStringLiteral("There is no Bluetooth adapter"));
            else if (device->path.isEmpty())
                create(address, found, done);
            else
                found(device->path);
        });
}

void Bluez::create(const QString &address, const Found &found, const Done &done)
{
    using ConnUi::BluetoothAdapter;
    using ConnUi::BluetoothDevice;
    // BlueZ has just answered: this does not wait.
    BluetoothAdapter *adapter = BluetoothAdapter::defaultAdapter();
    if (!adapter) {
        done(QStringLiteral("There is no Bluetooth adapter"));
        return;
    }
    adapter->setParent(this);
    connect(
        adapter, &BluetoothAdapter::deviceCreationFailed, this,
        [adapter, done](const QString &reason) {
            adapter->deleteLater();
            done(reason);
        });
    connect(adapter, &BluetoothAdapter::deviceCreated, this, [this, adapter, address, found, done] {
        adapter->deleteLater();
        look(address, [found, done](const std::optional<Device> &device) {
            if (device && !device->path.isEmpty())
                found(device->path);
            else
                done(QStringLiteral("The device is gone"));
        });
    });
    adapter->startCreatingDevice(BluetoothDevice({{QStringLiteral("Address"), address}}));
}
