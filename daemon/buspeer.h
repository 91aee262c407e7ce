// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_BUSPEER_H
#define CONNUI_DAEMON_BUSPEER_H

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

/** A process on the system bus, watched until it leaves. */
class BusPeer : public QObject
{
    Q_OBJECT

public:
    /** Watches the process that has the unique bus name \a name. */
    explicit BusPeer(const QString &name, QObject *parent = nullptr);

    QString name() const;

Q_SIGNALS:
    /** It has left, perhaps before it was watched. */
    void left();

private:
    void checkPresence(QDBusPendingCallWatcher *presence);

    const QString busName;
    QDBusServiceWatcher watcher;
};

#endif
