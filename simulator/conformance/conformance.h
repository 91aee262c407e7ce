// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_CONFORMANCE_H
#define CONNUI_SIM_CONFORMANCE_H

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include "conformance/peer.h"

/**
 * Tries whether the daemon on the system bus does what docs/dbus.md asks of one.
 *
 * It registers agents, switches the adapter and lets messages wait to be written, and leaves the daemon as it
 * was. No other agent may be registered meanwhile.
 */
class Conformance : public QObject
{
    Q_OBJECT

public:
    /** The end of a check: the reason of a failure, nothing of a success. */
    struct Result
    {
        enum Kind { Passed, Failed, Skipped };

        Kind kind = Passed;
        QString reason;
    };

    Conformance();

    /** Prints a line for each check, then how many have passed and failed; returns whether none has failed.
     */
    bool run();

private Q_SLOTS:
    void noteProperty(const QString &name, const QDBusVariant &value);

private:
    struct Check
    {
        const char *name;
        Result (Conformance::*check)();
    };

    Result namesItsAdapter();
    Result reportsItsState();
    Result switchesAndAnnounces();
    Result refusesOtherStates();
    Result registersAnAgent();
    Result refusesASecondAgent();
    Result keepsTheAgentFromStrangers();
    Result letsTheAgentGo();
    Result dropsTheAgentOfALeavingProcess();
    Result refusesAnUnknownCarrier();
    Result refusesToCancelNoHandover();
    Result takesTheEndOfAnyTransfer();
    Result refusesToWriteJunk();
    Result keepsOneMessageToWrite();

    QString state() const;
    QDBusMessage setState(const QString &state) const;
    static QDBusMessage registerAgent(const Peer &peer, const QString &agent);

    Peer client;
    Peer stranger;
    QDBusObjectPath adapter;
    QString announcedState;
};

#endif
