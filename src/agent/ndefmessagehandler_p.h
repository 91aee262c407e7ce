// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFMESSAGEHANDLER_P_H
#define CONNUI_NDEFMESSAGEHANDLER_P_H

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QString>

namespace ConnUi {

class ApplicationTracker;

/** A handler's fields, and its share in the tracker of the foreground application. */
class NdefMessageHandlerPrivate
{
public:
    NdefMessageHandlerPrivate();
    virtual ~NdefMessageHandlerPrivate();
    Q_DISABLE_COPY_MOVE(NdefMessageHandlerPrivate)

    bool isOnSystemBus() const;
    QDBusConnection bus() const;
    /** Sends the handler what the tag holds. */
    QDBusPendingCall deliver(const QDBusObjectPath &target, const QByteArray &data) const;

    /** Returns whether \a pid is the application in the foreground. A bus reports 0 for a process that it
     * does not see, and the tracker while it knows none. */
    static bool isInFront(uint pid);

    /** Gives up one share in the tracker, which goes with the last. */
    static void releaseTracker();

    QString busType;
    QString service;
    QDBusObjectPath path;
    QString applicationId;

    static ApplicationTracker *applicationTracker;
    // Whether the tracker's end waits for the policy daemon.
    static bool trackerWaits;
    // The handlers, and who else wants the tracker.
    static int refCount;
};

} // namespace ConnUi

#endif
