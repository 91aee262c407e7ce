// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "fakebluetooth.h"

#include <QTimer>

#include <PendingAnswer>

namespace {

FakeBluetooth *fake = nullptr;

} // namespace

FakeBluetooth::FakeBluetooth()
{
    Q_ASSERT(!fake);
    fake = this;
}

FakeBluetooth::~FakeBluetooth()
{
    fake = nullptr;
}

namespace ConnUi {

BluetoothAdapter *BluetoothAdapter::defaultAdapter()
{
    ++fake->defaultAdapterCalls;
    return fake->hasAdapter ? new BluetoothAdapter(QString(), QString()) : nullptr;
}

PendingAnswer *BluetoothAdapter::defaultAdapterAsync(QObject *parent)
{
    auto *answer = new PendingAnswer(parent);
    QTimer::singleShot(0, answer, [answer] {
        BluetoothAdapter *adapter = defaultAdapter();
        if (adapter)
            adapter->setParent(answer);
        answer->finish(QVariant::fromValue(adapter));
    });
    return answer;
}

BluetoothAdapter::BluetoothAdapter(const QString &, const QString &) : d(nullptr)
{
    fake->adapters.append(this);
}

BluetoothAdapter::~BluetoothAdapter()
{
    fake->adapters.removeOne(this);
}

bool BluetoothAdapter::isValid() const
{
    return fake->adapterIsValid;
}

void BluetoothAdapter::startCreatingDevice(const BluetoothDevice &device)
{
    fake->started.append(device.address());
    fake->onStart(this);
}

} // namespace ConnUi
