// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCADAPTER_H
#define CONNUI_NFCADAPTER_H

#include <chrono>
#include <connui_nfc_core_export.h>

#include <QObject>
#include <QString>
#include <QVariant>

namespace ConnUi {

class NfcAdapterPrivate;
class NfcAgent;
class NfcPendingCall;

/**
 * Follows the default adapter of the NFC daemon, "com.tavix.nfc" on the system bus.
 *
 * All adapters of a process share one binding to the daemon: it is created with the first adapter and
 * destroyed with the last. The binding watches the daemon's name, starts the daemon while the NFC radio is
 * switched on, and stops doing so when the daemon dies within three seconds of its start, until another
 * program starts it.
 *
 * No function reports a failure by its return value or an exception. Availability is announced by
 * adapterValid() and adapterInvalid(); on an adapter that is not valid, the functions have no effect. A
 * failed blocking call is logged as
 * "<method> returned error '<name>': <message>".
 *
 * Blocking: unless documented otherwise, a call waits for the daemon on the system bus, at most D-Bus's
 * default reply timeout of 25 seconds. The constructor of the first adapter of a process asks the bus for the
 * owner of the daemon's name, then the daemon for its default adapter, or the bus to start it.
 *
 * For use on the thread that runs the application's event loop. Adapters, including the sender, may be
 * created and deleted in every slot connected to the signals below: a deleted adapter emits no further
 * signals, and a new one does not emit the signal that is being delivered.
 */
class CONNUI_NFC_CORE_EXPORT NfcAdapter : public QObject
{
    Q_OBJECT
    /** Whether the adapter is switched on. A change is announced by propertyChanged("powered"). */
    Q_PROPERTY(bool powered READ isPowered WRITE setPowered)

public:
    /** Returns a new adapter without a parent at every call; the caller owns it. */
    static NfcAdapter *defaultAdapter();

    /**
     * Returns a new adapter without a parent, without blocking; the caller owns it.
     *
     * From then on the binding that all adapters of the process share does not block either: adapterValid()
     * announces a daemon, present or new, once it has replied.
     */
    static NfcAdapter *defaultAdapterAsync();

    /** Returns whether the binding follows the daemon without waiting, as it does after
     * defaultAdapterAsync(). */
    bool isAsynchronous() const;

    /** Makes an adapter owned by \a parent. */
    explicit NfcAdapter(QObject *parent = nullptr);

    /** Leaves the shared binding. Handovers that this adapter requested go on, but their refusal is not
     * reported. */
    ~NfcAdapter() override;

    /** Returns whether the daemon is there and bound. Does not block. */
    bool isValid() const;

    /**
     * Returns whether the adapter is switched on: whether its property "State" is "on".
     *
     * Blocks on the daemon's GetProperties after a bind and after each successful setPowered(); otherwise it
     * returns the value that the daemon has announced since. Returns false without any traffic while the
     * adapter is not valid.
     */
    bool isPowered() const;

    /**
     * Returns whether the adapter is switched on, like isPowered(), but waits no longer than \a timeout for
     * the daemon; then it returns the value that was known before.
     */
    bool isPowered(std::chrono::milliseconds timeout) const;

    /**
     * Finds out whether the adapter is switched on, like isPowered(), without waiting.
     *
     * The call's value is a bool. A value that is already known finishes the call at once
     * (NfcPendingCall::isFinished()), without any traffic; so does an adapter that is not valid, with false
     * and an error.
     */
    NfcPendingCall *isPoweredAsync();

    /**
     * Switches the adapter on or off.
     *
     * Switching on while the daemon is not on the bus only starts the daemon. Otherwise the NFC radio setting
     * becomes \a on, and the daemon is asked to follow when the adapter is valid. Blocks on the daemon's
     * SetProperty, or on the bus while the daemon is started. Watch propertyChanged("powered") for the
     * outcome.
     */
    void setPowered(bool on);

    /** Switches the adapter on or off, like setPowered(), but waits no longer than \a timeout for the
     * daemon's or the bus's answer. */
    void setPowered(bool on, std::chrono::milliseconds timeout);

    /**
     * Switches the adapter on or off, like setPowered(), without waiting.
     *
     * The call finishes when the daemon has accepted the request or the bus has started the daemon.
     */
    NfcPendingCall *setPoweredAsync(bool on);

    /**
     * Returns whether the user wants to be asked for confirmation: the setting "nfc_show_confirmations".
     *
     * Returns false when nothing, or a value that is not a boolean, is stored. Reads the setting at every
     * call; does not need the daemon.
     */
    bool isConfirmationEnabled() const;

    /** Stores whether the user wants to be asked for confirmation. Does not need the daemon; no signal
     * follows. */
    void setConfirmationEnabled(bool enabled);

    /**
     * Registers \a agent with the daemon, which then asks it for the user's decisions.
     *
     * The registration is not remembered: register again at each adapterValid(). Does nothing when \a agent
     * is null or the adapter is not valid. Blocks on the daemon.
     */
    void registerAgent(NfcAgent *agent);

    /** Does what registerAgent() does without waiting. Without daemon or agent the call fails, unlogged. */
    NfcPendingCall *registerAgentAsync(NfcAgent *agent);

    /** Takes back registerAgent(). Pending requests of \a agent stay pending. Blocks on the daemon. */
    void unregisterAgent(NfcAgent *agent);

    /** Does what unregisterAgent() does without waiting. Without daemon or agent the call fails, unlogged. */
    NfcPendingCall *unregisterAgentAsync(NfcAgent *agent);

    /** Does the same as cancelHandoverRequest(), and reports the result. A failure is not logged. */
    NfcPendingCall *cancelHandoverRequestAsync(const QString &carrier);

public Q_SLOTS:
    /**
     * Asks the daemon to hand the connection over to \a carrier, in the manner \a type; the daemon defines
     * both strings.
     *
     * Does not block. Progress arrives through the handover signals, at every adapter of the process; a
     * refusal arrives as handoverFailed().
     */
    void requestHandover(const QString &carrier, const QString &type);

    /** Asks the daemon to give up the handover to \a carrier. Does not block, and reports nothing. */
    void cancelHandoverRequest(const QString &carrier);

Q_SIGNALS:
    /** The value of \a property has changed; "powered" is the only one there is. */
    void propertyChanged(const QString &property);
    /** The daemon has left the bus. Emitted also when it could not be bound before. */
    void adapterInvalid();
    /** The daemon has been bound: time to register agents. A daemon that the constructor binds is not
     * announced. */
    void adapterValid();
    /** A handover has begun. */
    void handoverStarted();
    /** The handover goes on over \a carrier. */
    void handoverCarrierSelected(const QString &carrier);
    /** The handover to \a carrier is complete; \a data is the carrier's own, see NfcBluetoothHandoverInfo. */
    void handoverCompleted(const QString &carrier, const QVariant &data);
    /** The handover has failed, or could not be started; \a reason is for the log, not for the user. */
    void handoverFailed(const QString &reason);

private:
    NfcAdapterPrivate *d;
};

} // namespace ConnUi

#endif
