// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCPENDINGCALL_H
#define CONNUI_NFCPENDINGCALL_H

#include <connui_nfc_core_export.h>
#include <memory>

#include <QDBusError>
#include <QObject>
#include <QVariant>

namespace ConnUi {

class NfcPendingCallPrivate;

/**
 * The future result of a call: every function whose name ends in Async returns one.
 *
 * Such a function does not block. The event loop emits finished() once, never before the function has
 * returned; then the object deletes itself. Connect to finished() with a context object and read the result
 * there, or ignore the object:
 *
 * @code
 * NfcPendingCall *call = adapter->registerAgentAsync(agent);
 * connect(call, &NfcPendingCall::finished, this, [](NfcPendingCall *call) {
 *     if (call->isError())
 *         qWarning("not registered: %s", qUtf8Printable(call->error().message()));
 * });
 * @endcode
 *
 * The parent of the object is the object whose function created it, if that is a QObject, and otherwise the
 * application; when the parent is deleted, finished() is never emitted. Deleting the object earlier does not
 * undo the call, but its result is lost.
 */
class CONNUI_NFC_CORE_EXPORT NfcPendingCall : public QObject
{
    Q_OBJECT

public:
    ~NfcPendingCall() override;

    /** Returns whether the outcome is known. It can be known immediately, before finished() is emitted. */
    bool isFinished() const;

    /** Returns whether the call has failed; false while it is not finished. */
    bool isError() const;

    /**
     * Returns the failure, by its D-Bus name and text; an invalid error where there is none.
     *
     * "org.freedesktop.DBus.Error.ServiceUnknown" means that the service is missing,
     * "org.freedesktop.DBus.Error.NoReply" that it has not replied in time. The text is for the log,
     * not for the user.
     */
    QDBusError error() const;

    /** Returns the value that the documentation of the called function names; after a failure the value that
     * it names for that case, if any. */
    QVariant value() const;

Q_SIGNALS:
    /** The outcome is known. */
    void finished(ConnUi::NfcPendingCall *call);

private:
    friend class NfcPendingCallPrivate;
    explicit NfcPendingCall(QObject *parent);

    const std::unique_ptr<NfcPendingCallPrivate> d;
};

} // namespace ConnUi

#endif
