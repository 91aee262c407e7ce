// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCAGENT_H
#define CONNUI_NFCAGENT_H

#include <connui_nfc_core_export.h>
#include <ndefmessagehandler.h>

#include <QByteArray>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace ConnUi {

class NfcAgentPrivate;

/**
 * Receives the NFC daemon's questions to the user and carries the answers back.
 *
 * An agent exports itself on the system bus at path(), interface "com.tavix.nfc.UIAgent". Each request of the
 * daemon becomes a signal and a pending request, which one of the operations below answers. Deleting the
 * agent answers every pending request with "com.tavix.nfc.UIAgent.Canceled", oldest first. Register the
 * agent with NfcAdapter::registerAgent().
 *
 * A target is the object path of the touched tag or device. Requests of the same kind for the same target are
 * answered in the order in which they came. An answer without a pending request has no effect and is logged
 * as "No request for agent request type <number>": 0 pairing, 1 connection, 2 disconnection, 3 data delivery,
 * 4 sharing, 5 any.
 *
 * Nothing here blocks. For use on the thread that runs the application's event loop; answering, and deleting
 * the agent, is safe in every slot connected to its signals.
 */
class CONNUI_NFC_CORE_EXPORT NfcAgent : public QObject
{
    Q_OBJECT
    /** The agent's object path on the system bus. */
    Q_PROPERTY(QString path READ path)
    /** Whether only the daemon may call the agent, off at first. */
    Q_PROPERTY(bool daemonOnly READ isDaemonOnly WRITE setDaemonOnly)

public:
    /** The outcome of a touch, as the daemon reports it. */
    enum TouchStatus {
        Ok = 0,                      /**< The tag was read. */
        UnsupportedTagTypeError = 1, /**< A tag that the controller cannot read. */
        MalformedContentError = 2,   /**< A tag whose content is no NDEF message. */
        UnknownError = 255           /**< Anything else. */
    };
    Q_ENUM(TouchStatus)

    /** Exports a new agent on the system bus. Agents of a process are numbered from 0, and never share a
     * path. */
    explicit NfcAgent(QObject *parent = nullptr);

    /** Answers every pending request with "com.tavix.nfc.UIAgent.Canceled" and leaves the bus. */
    ~NfcAgent() override;

    /** Returns the agent's object path, "/com/tavix/nfcUIAgent/" and its number. */
    QString path() const;

    /** Returns whether only the daemon may call the agent. */
    bool isDaemonOnly() const;

    /**
     * Decides whether only the daemon may call the agent: the owner of "com.tavix.nfc" on the system bus.
     *
     * Calls from other processes then emit no signals and get the error
     * "org.freedesktop.DBus.Error.AccessDenied". This protects the agent where the bus's policy is missing or
     * too permissive. It is off by default. Switch it on before you register the agent, because the owner is
     * looked up without blocking.
     */
    void setDaemonOnly(bool daemonOnly);

    /** Grants the oldest pairing request for \a target. */
    void btPairingRequestGranted(const QDBusObjectPath &target);

    /** Grants the oldest connection request for \a target. */
    void btConnectionRequestGranted(const QDBusObjectPath &target);

    /** Grants the oldest disconnection request for \a target. */
    void btDisconnectionRequestGranted(const QDBusObjectPath &target);

    /** Grants the oldest data delivery for \a target. Forward the data first:
     * NdefMessageHandler::forwardData(). */
    void dataDeliveryGranted(const QDBusObjectPath &target);

    /** Refuses the oldest request of any kind for \a target, with "com.tavix.nfc.UIAgent.Rejected". */
    void rejectDevice(const QDBusObjectPath &target);

    /**
     * Answers the oldest request of any kind for \a target with the D-Bus error name \a error.
     *
     * A name that D-Bus does not allow is logged and replaced by "com.tavix.nfc.UIAgent.Rejected", so that
     * the daemon is not left waiting.
     *
     * @warning An empty \a error does not send an error: it grants the request.
     */
    void replyError(const QDBusObjectPath &target, const QString &error);

    /**
     * Grants the oldest sharing request, for permission or for selection, that came with \a info.
     *
     * Pass the value from the signal, or a copy of it; the request is found by the content of the value.
     */
    void acceptSharing(const QVariant &info);

    /**
     * Refuses the oldest sharing request that came with \a info, with "com.tavix.nfc.UIAgent.Rejected".
     *
     * Pass the value from the signal, or a copy of it.
     */
    void rejectSharing(const QVariant &info);

    /**
     * Answers the oldest sharing request that came with \a info with "com.tavix.nfc.UIAgent.Canceled": nobody
     * has decided.
     *
     * Pass the value from the signal, or a copy of it.
     */
    void cancelSharing(const QVariant &info);

Q_SIGNALS:
    /** The daemon will not use this agent any more. Pending requests stay pending. */
    void release();
    /** Asks whether to pair with the device of Bluetooth address \a addr, Class of Device \a cod, with \a pin
     * if any. */
    void btPairingRequested(QDBusObjectPath target, QString addr, QString name, uint cod, QString pin);
    /** Asks whether to connect to the device of Bluetooth address \a addr, Class of Device \a cod. */
    void btConnectionRequested(QDBusObjectPath target, QString addr, QString name, uint cod);
    /** Asks whether to disconnect from the device of Bluetooth address \a addr, Class of Device \a cod. */
    void btDisconnectionRequested(QDBusObjectPath target, QString addr, QString name, uint cod);
    /** Asks which of \a handlers, if any, gets the NDEF message \a data (NFC Forum NDEF 1.0 bytes) of \a
     * target. */
    void dataDeliveryRequested(NdefMessageHandlerList handlers, QDBusObjectPath target, QByteArray data);
    /** Asks whether \a resources, URLs or paths or "contact:" references, may be sent over \a carrier. */
    void sharingPermissionRequested(QString carrier, QVariant info, QStringList resources);
    /** Asks what to send over \a carrier. */
    void sharingSelectionRequested(QString carrier, QVariant info);
    /** Announces a touch; \a touchStatus is a TouchStatus. */
    void notifyTouch(QDBusObjectPath target, int touchStatus);

private:
    NfcAgentPrivate *d;
};

} // namespace ConnUi

#endif
