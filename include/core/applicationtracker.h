// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_APPLICATIONTRACKER_H
#define CONNUI_APPLICATIONTRACKER_H

#include <connui_nfc_core_export.h>

#include <QObject>
#include <QString>

class ApplicationTrackerProxy;
class QDBusMessage;

namespace ConnUi {

class NfcPendingCall;

/**
 * Knows the process id of the application in the foreground, as the policy daemon reports it.
 *
 * The policy daemon is "org.freedesktop.ohm" on the system bus. Handlers share one tracker that exists as
 * long as any of them; another one is not needed.
 */
class CONNUI_NFC_CORE_EXPORT ApplicationTracker : public QObject
{
    Q_OBJECT

public:
    /**
     * Subscribes to the policy daemon's notifications.
     *
     * Blocks until the daemon has replied, at most D-Bus's default reply timeout of 25 seconds. When the
     * daemon cannot be reached, "ApplicationTracker: Unable to subscribe to track applications" is logged,
     * and the process id stays 0 until the first notification.
     */
    explicit ApplicationTracker(QObject *parent = nullptr);

    /**
     * Subscribes for the whole process without waiting, until \a holder is deleted, and ends without waiting,
     * too.
     *
     * Handlers that are created in the meantime use this subscription and do not block. The call finishes
     * when the policy daemon has replied; a failure is logged like the constructor's.
     */
    static NfcPendingCall *subscribeAsync(QObject *holder);

    /**
     * Ends the subscription. Blocks until the policy daemon has answered, at most 25 seconds, unless the
     * tracker came from subscribeAsync().
     */
    ~ApplicationTracker() override;

    /** Returns the process id of the application in the foreground, 0 while unknown. Does not block. */
    uint currentForegroundApplicationPid() const;

private Q_SLOTS:
    void notify(const QString &binary, const QString &group, const QString &argv1, uint pid);

private:
    explicit ApplicationTracker(NfcPendingCall &subscription);
    void connectNotifications();
    void setSubscription(const QDBusMessage &reply);

    ApplicationTrackerProxy *interface;
    quint32 pid = 0;
};

} // namespace ConnUi

#endif
