// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TOUCH_BLUEZ_H
#define CONNUI_DAEMON_TOUCH_BLUEZ_H

#include <functional>
#include <optional>

#include <QDBusMessage>
#include <QObject>
#include <QString>

/** BlueZ, the Bluetooth daemon, as far as touched devices need it. No call waits; BlueZ is not started for
 * any. */
class Bluez : public QObject
{
    Q_OBJECT

public:
    /** The state of a device in BlueZ. */
    struct Device
    {
        QString path; ///< Empty when the device has not been heard of.
        QString name;
        uint classOfDevice = 0;
        bool isPaired = false;
        bool isConnected = false;
    };

    /** Gets an error's words, or nothing when all went well. */
    using Done = std::function<void(const QString &error)>;

    using QObject::QObject;

    /** Looks for the device with \a address; \a found gets nothing when there is no Bluetooth adapter. */
    void look(const QString &address, const std::function<void(const std::optional<Device> &)> &found);

    /** Finds the device with \a address if need be, pairs with it, trusts and connects it. */
    void pair(const QString &address, const Done &done);
    void connectDevice(const QString &address, const Done &done);
    void disconnectDevice(const QString &address, const Done &done);

private:
    using Answered = std::function<void(const QDBusMessage &)>;
    using Found = std::function<void(const QString &path)>;

    void call(const QDBusMessage &message, const Answered &answered);
    void callDevice(const QString &path, const QString &method, const Answered &answered);
    void withDevice(const QString &address, const Found &found, const Done &done);
    void create(const QString &address, const Found &found, const Done &done);
    void callKnown(const QString &address, const QString &method, const Done &done);
    void trust(const QString &path, const Done &done);
};

#endif
