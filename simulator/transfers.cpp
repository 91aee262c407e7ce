// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "transfers.h"

#include <QDBusConnection>
#include <QList>

#include "daemon/adapter.h"
#include "peers.h"
#include "transfer.h"

Transfers::Transfers(Adapter *adapter) : QDBusAbstractAdaptor(adapter), adapter(adapter)
{
    connect(
        adapter, &Adapter::poweredChanged, this,
        [this](bool on) {
            if (!on)
                cancelAll();
        });
}

const Transfer *Transfers::receive(const QString &name, quint64 size, quint64 rate, quint64 cancelAfter,
                                   const QString &file)
{
    const uint number = nextTransfer++;
    auto *transfer = new Transfer(size, rate, cancelAfter, this);
    transfers.insert(number, transfer);
    connect(transfer, &Transfer::progressed, this, [this, number, size](qulonglong transferred) {
        Q_EMIT TransferProgressed(number, transferred, size);
    });
    connect(transfer, &Transfer::completed, this, [this, number, file] {
        forget(number);
        Q_EMIT TransferEnded(number, QStringLiteral("completed"), file);
    });
    connect(transfer, &Transfer::canceled, this, [this, number] {
        forget(number);
        Q_EMIT TransferEnded(number, QStringLiteral("canceled"), QString());
    });
    Q_EMIT TransferStarted(number, Peers::name(), name, size);
    return transfer;
}

void Transfers::CancelTransfer(uint transfer, const QDBusMessage &message)
{
    message.setDelayedReply(true);
    adapter->authority().decide(message, [this, transfer](const QDBusMessage &call, uint) {
        cancel(transfer);
        QDBusConnection::systemBus().send(call.createReply());
    });
}

void Transfers::cancel(uint number)
{
    if (Transfer *transfer = transfers.value(number))
        transfer->cancel();
}

void Transfers::cancelAll()
{
    const QList<Transfer *> underWay = transfers.values();
    for (Transfer *transfer : underWay)
        transfer->cancel();
}

void Transfers::forget(uint number)
{
    transfers.take(number)->deleteLater();
}
