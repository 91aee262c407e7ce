// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/touch/bluetoothtouch.h"

#include <QDBusObjectPath>
#include <QVariant>

#include "daemon/adapter.h"
#include "daemon/question.h"
#include "daemon/touch/touchtarget.h"
#include "daemon/uiagent.h"

BluetoothTouch::BluetoothTouch(Adapter *adapter, Bluez *bluez, const BluetoothCarrier &carrier,
                               QObject *parent)
    : QObject(parent)
    , adapter(adapter)
    , bluez(bluez)
    , carrier(carrier)
{}

void BluetoothTouch::begin()
{
    bluez->look(
        carrier.address,
        [this](const std::optional<Bluez::Device> &known) {
            if (known) {
                ask(*known);
                return;
            }
            deleteLater();
            Q_EMIT unavailable();
        });
}

void BluetoothTouch::ask(const Bluez::Device &known)
{
    if (!adapter->agent()) {
        end();
        return;
    }
    QString request = QStringLiteral("RequestBTPairing");
    if (known.isPaired)
        request = known.isConnected ? QStringLiteral("RequestBTDisconnection")
                                    : QStringLiteral("RequestBTConnection");
    // A device that has been paired with has the name that the user knows it by.
    const bool isKnown = known.isPaired && !known.name.isEmpty();
    QVariantList arguments = {QVariant::fromValue(TouchTarget::device(carrier.address)), carrier.address,
                              isKnown ? known.name : carrier.name,
                              known.classOfDevice ? known.classOfDevice : carrier.classOfDevice};
    if (!known.isPaired)
        arguments.append(QString()); // no PIN
    auto *question = new Question(adapter->agent(), request, arguments, QStringLiteral("granted"), this);
    connect(question, &Question::decided, this, [this, known](const QString &outcome) {
        if (outcome == QLatin1String("granted"))
            act(known);
        else
            end();
    });
}

void BluetoothTouch::act(const Bluez::Device &known)
{
    const auto done = [this](const QString &error) {
        if (!error.isEmpty())
            qWarning("Bluetooth device %s: %s", qUtf8Printable(carrier.address), qUtf8Printable(error));
        end();
    };
    if (!known.isPaired)
        bluez->pair(carrier.address, done);
    else if (known.isConnected)
        bluez->disconnectDevice(carrier.address, done);
    else
        bluez->connectDevice(carrier.address, done);
}

void BluetoothTouch::end()
{
    deleteLater();
    Q_EMIT over();
}
