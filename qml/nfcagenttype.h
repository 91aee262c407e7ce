// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_NFCAGENTTYPE_H
#define CONNUI_QML_NFCAGENTTYPE_H

#include <memory>

#include <QDBusObjectPath>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <QVariant>

#include "nfcadaptertype.h"
#include "requestmodel.h"
#include "sharingrequest.h"

namespace ConnUi {
class NfcAdapter;
class NfcAgent;
class NfcReplyOrder;
} // namespace ConnUi

/**
 * Receives the daemon's questions to the user: the QML type NfcAgent.
 *
 * It registers itself with its adapter whenever there is a daemon, and tries again, less and less often,
 * while the daemon refuses: there is another agent. Nothing here waits for the daemon, and only the daemon
 * can ask.
 */
class NfcAgentType : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(NfcAgent)
    /** The adapter whose questions are received; none at first. */
    Q_PROPERTY(NfcAdapterType *adapter READ adapter WRITE setAdapter NOTIFY adapterChanged FINAL)
    /** Whether the daemon knows the agent. */
    Q_PROPERTY(bool registered READ isRegistered NOTIFY registeredChanged FINAL)
    /** Whether the session is locked: nothing on a tag that comes then may go unasked. */
    Q_PROPERTY(
        bool sessionLocked READ isSessionLocked WRITE setSessionLocked NOTIFY sessionLockedChanged FINAL)
    /** The requests that wait for an answer. */
    Q_PROPERTY(RequestModel *requests READ requests CONSTANT FINAL)

public:
    /** The outcome of a touch. */
    enum TouchStatus {
        Ok,             /**< The tag was read. */
        UnsupportedTag, /**< The reader cannot read the tag. */
        MalformedTag,   /**< The content of the tag is not an NDEF message. */
        UnknownError,   /**< Anything else. */
    };
    Q_ENUM(TouchStatus)

    explicit NfcAgentType(QObject *parent = nullptr);

    /** Cancels the requests that wait, and unregisters. */
    ~NfcAgentType() override;

    NfcAdapterType *adapter() const;
    void setAdapter(NfcAdapterType *adapter);
    bool isRegistered() const;
    bool isSessionLocked() const;
    void setSessionLocked(bool locked);
    RequestModel *requests() const;

Q_SIGNALS:
    void adapterChanged();
    void registeredChanged();
    void sessionLockedChanged();
    /** A tag or a device was touched. */
    void touched(NfcAgentType::TouchStatus status);

private:
    using Grant = void (ConnUi::NfcAgent::*)(const QDBusObjectPath &target);

    void loseAdapter();
    void createAgent();
    void dropAgent();
    void registerAgent();
    void unregister();
    void leaveDaemon();
    void setRegistered(bool isKnown);
    NfcRequest::Place placeOf(const QDBusObjectPath &target) const;
    NfcRequest::Replies repliesTo(const QDBusObjectPath &target, Grant grant) const;
    void connectBluetooth();
    void connectDeliveries();
    void connectSharing();
    void addSharing(SharingRequest::Purpose purpose, const QString &carrier, const QVariant &info,
                    const QStringList &resources);

    QPointer<NfcAdapterType> source;
    // The agent's own, while there is a source: it is still there when the source has gone.
    std::unique_ptr<ConnUi::NfcAdapter> daemon;
    const std::unique_ptr<RequestModel> pending;
    std::shared_ptr<ConnUi::NfcReplyOrder> order;
    std::unique_ptr<ConnUi::NfcAgent> agent; // while there is a daemon, one for each
    bool registered = false;
    bool isRefused = false; // by the daemon, the last time
    bool sessionLocked = false;
    bool isFollowing = false; // the application in front
    QTimer retry;
};

#endif
