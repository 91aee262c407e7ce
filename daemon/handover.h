// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_HANDOVER_H
#define CONNUI_DAEMON_HANDOVER_H

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariantList>

#include "daemon/bluetoothpeer.h"

/**
 * One handover on its way to a carrier.
 *
 * It begins, selects the carrier and completes; each step is a signal, and a call to the requestor if there
 * is one. It ends in completed() or failed(), exactly once: an end after that is ignored, and no other step
 * is to be taken.
 */
class Handover : public QObject
{
    Q_OBJECT

public:
    /** The object that hears of every step; nobody does when \a service is empty. */
    struct Requestor
    {
        QString service;
        QDBusObjectPath path;
    };

    Handover(const QString &carrier, const Requestor &requestor, QObject *parent = nullptr);

    QString carrier() const;

    void begin();
    void selectCarrier();
    /** Completes with \a peer, over whose carrier the connection goes on. */
    void complete(const BluetoothPeer &peer);
    void fail(const QString &reason);

Q_SIGNALS:
    void started();
    void carrierSelected(const QString &carrier);
    void completed(const QString &carrier, const QDBusVariant &data);
    void failed(const QString &reason);

private:
    void reportToRequestor(const QString &method, const QVariantList &arguments = {}) const;

    const QString carrierName;
    const Requestor requestor;
    bool isOver = false;
};

#endif
