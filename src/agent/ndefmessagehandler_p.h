// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFMESSAGEHANDLER_P_H
#define CONNUI_NDEFMESSAGEHANDLER_P_H

#include <QDBusConnection>
#include <QDBusObjectPath>
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

    /** Returns whether \a pid is the application in the foreground. A bus reports 0 for a process that it
     * does not see, and the tracker while it knows none. */
    static bool isInFront(uint pid);

    QString busType;
    QString service;
    QDBusObjectPath path;
    QString applicationId;

    static ApplicationTracker *applicationTracker;
    static int refCount;
};

} // namespace ConnUi

#endif
