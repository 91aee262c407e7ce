// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_HANDOVER_H
#define CONNUI_SIM_HANDOVER_H

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QTimer>

/**
 * One handover on its way to a carrier.
 *
 * It starts, selects the carrier and completes, a step apart; each step is a signal, and a call to the
 * requestor if there is one. It ends in completed() or failed(), exactly once.
 */
class Handover : public QObject
{
    Q_OBJECT

public:
    /** A handover to \a carrier whose steps are \a stepTime milliseconds apart. */
    Handover(const QString &carrier, int stepTime, QObject *parent = nullptr);

    /** Tells the object at \a path of \a service about every step. */
    void setRequestor(const QString &service, const QDBusObjectPath &path);

    QString carrier() const;

    /** Takes the first step a step's time from now. */
    void start();

    /** Fails with \a reason now. */
    void fail(const QString &reason);

Q_SIGNALS:
    void started();
    void carrierSelected(const QString &carrier);
    void completed(const QString &carrier, const QDBusVariant &data);
    void failed(const QString &reason);

private:
    void takeStep();
    void begin();
    void selectCarrier();
    void complete();
    void tellRequestor(const QString &method, const QVariantList &arguments = {}) const;

    const QString carrierName;
    QString requestorService;
    QDBusObjectPath requestorPath;
    QTimer timer;
    int nextStep = 0;
};

#endif
