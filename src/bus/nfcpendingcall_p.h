// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCPENDINGCALL_P_H
#define CONNUI_NFCPENDINGCALL_P_H

#include <QDBusError>
#include <QPointer>
#include <QVariant>

#include "nfcpendingcall.h"

class QObject;

namespace ConnUi {

class NfcPendingCallPrivate
{
public:
    /** Returns a new call of \a parent, or of the application when there is none. */
    static NfcPendingCall *create(QObject *parent = nullptr);

    /** Returns a new call whose outcome is known: finished() follows from the event loop. */
    static NfcPendingCall *createFinished(QObject *parent, const QVariant &value,
                                          const QDBusError &error = {});

    /** Ends \a call, unless it has been deleted. For an answer that has come from the event loop. A slot may
     * delete whatever it likes. */
    static void finish(const QPointer<NfcPendingCall> &call, const QVariant &value, const QDBusError &error);

    /** Ends \a call inside the function that returns it: finished() follows from the event loop. */
    static void finishLater(NfcPendingCall *call, const QVariant &value, const QDBusError &error = {});

    /** Returns the failure of whoever wants something of a daemon that is not there. */
    static QDBusError noDaemon();

private:
    friend class NfcPendingCall;

    void setOutcome(const QVariant &newValue, const QDBusError &newError);

    bool finished = false;
    QVariant value;
    QDBusError error;
};

} // namespace ConnUi

#endif
