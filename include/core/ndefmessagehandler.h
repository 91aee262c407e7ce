// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFMESSAGEHANDLER_H
#define CONNUI_NDEFMESSAGEHANDLER_H

#include <connui_nfc_core_export.h>

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QMetaType>
#include <QString>

namespace ConnUi {

class NdefMessageHandlerPrivate;
class NfcPendingCall;

/**
 * Names one application that can take the content of a tag.
 *
 * The daemon sends a list of handlers with every data delivery. On the wire a handler is the structure
 * (ssos): bus type, service, object path, application id.
 *
 * While any handler exists, the process follows the application in the foreground (ApplicationTracker).
 * Creating the first handler of a process therefore blocks until the policy daemon has replied on the system
 * bus, at most 25 seconds, and so does deleting the last; an earlier call of
 * ApplicationTracker::subscribeAsync() prevents both. Handlers live on the thread that runs the application's
 * event loop; a program that sends handlers marshals them into a QDBusArgument first, because a handler left
 * in an outgoing message would be destroyed on another thread.
 */
class CONNUI_NFC_CORE_EXPORT NdefMessageHandler
{
public:
    /** Makes a handler whose fields are all empty. */
    NdefMessageHandler();

    /**
     * Names the application \a applicationId (its desktop file's base name) that answers at \a path of \a
     * service, on the system bus when \a busType is "system" and on the session bus otherwise.
     *
     * A malformed path becomes an empty one, with a warning from QtDBus.
     */
    NdefMessageHandler(const QString &applicationId, const QString &busType, const QString &service,
                       const QDBusObjectPath &path);

    /** Copies all fields; nothing is shared. */
    NdefMessageHandler(const NdefMessageHandler &other);

    /** Takes over all fields of \a other. */
    NdefMessageHandler &operator=(const NdefMessageHandler &other);

    /** Deletes the handler. */
    virtual ~NdefMessageHandler();

    /**
     * Returns whether both name the same handler: the same bus type, service and path, case included. The
     * application id is not compared.
     */
    bool operator==(const NdefMessageHandler &other) const;

    /** Returns "system" for a handler on the system bus; anything else means the session bus. */
    QString busType() const;

    /** Returns the handler's D-Bus service name. */
    QString service() const;

    /** Returns the path at which the handler exports "com.tavix.nfc.NDEFHandler". */
    QDBusObjectPath path() const;

    /** Returns the base name of the application's desktop file. */
    QString applicationId() const;

    /**
     * Returns whether the handler's service belongs to the application in the foreground.
     *
     * Blocks on the handler's bus (busType()), not on the handler, at most 25 seconds. Returns false when the
     * service is missing, or when the foreground is unknown.
     */
    bool isRunningOnForeground() const;

    /**
     * Hands the NDEF message \a data of \a target to the handler and brings an application on the session bus
     * to the front.
     *
     * Blocks until the handler has replied to "NDEFData" on its bus (busType()), at most D-Bus's default
     * reply timeout of 25 seconds; the "launch" that follows is sent without blocking, even after a failure.
     * A failure is logged as "NfcAgentTagReadRequest: Calling NDEFData() for the handler fails: <name>
     * <message>". The daemon's request stays open: answer it with NfcAgent::dataDeliveryGranted().
     */
    void forwardData(const QDBusObjectPath &target, const QByteArray &data);

    /**
     * Finds out whether the handler is in front, like isRunningOnForeground(), without waiting.
     *
     * The call's value is a bool, false after a failure. This object may be deleted at once.
     */
    NfcPendingCall *isRunningOnForegroundAsync() const;

    /**
     * Hands over data, like forwardData(), without waiting.
     *
     * The application is launched when the handler has replied, even with a failure; then the call finishes.
     * A handler that does not reply counts as failed after 25 seconds. This object may be deleted at once.
     */
    NfcPendingCall *forwardDataAsync(const QDBusObjectPath &target, const QByteArray &data) const;

private:
    NdefMessageHandlerPrivate *d;
};

/** Handlers in the daemon's order; a(ssos) on the wire. */
using NdefMessageHandlerList = QList<NdefMessageHandler>;

} // namespace ConnUi

/** Writes \a handler as the structure (ssos). Its path may not be empty: D-Bus has no such path. */
CONNUI_NFC_CORE_EXPORT QDBusArgument &operator<<(QDBusArgument &argument,
                                                 const ConnUi::NdefMessageHandler &handler);

/** Reads a structure (ssos) into \a handler. */
CONNUI_NFC_CORE_EXPORT const QDBusArgument &operator>>(const QDBusArgument &argument,
                                                       ConnUi::NdefMessageHandler &handler);

Q_DECLARE_METATYPE(ConnUi::NdefMessageHandler)

#endif
