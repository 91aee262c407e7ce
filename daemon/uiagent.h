// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_UIAGENT_H
#define CONNUI_DAEMON_UIAGENT_H

#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QObject>
#include <QString>
#include <QVariantList>

#include "daemon/buspeer.h"

/** The client's agent, which puts questions to the user. */
class UiAgent : public QObject
{
    Q_OBJECT

public:
    /** An agent at \a path of the process that owns the unique bus name \a service and belongs to \a user. */
    UiAgent(const QString &service, const QDBusObjectPath &path, uint user, QObject *parent = nullptr);

    bool is(const QString &service, const QDBusObjectPath &path) const;
    QString name() const;
    QString busName() const;
    uint user() const;

    /** Calls a method of the agent, without a time limit: users take their time. */
    QDBusPendingCall call(const QString &method, const QVariantList &arguments = {}) const;

Q_SIGNALS:
    /** The agent's process has left the bus. */
    void left();

    /** It is out of use until its user may manage NFC again: nobody waits for its answers any more. */
    void putAside();

private:
    const BusPeer process;
    const QDBusObjectPath path;
    const uint owner;
};

#endif
