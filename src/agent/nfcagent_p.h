// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCAGENT_P_H
#define CONNUI_NFCAGENT_P_H

#include <list>
#include <map>
#include <memory>

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <QVariant>

#include "ndefmessagehandler.h"

namespace ConnUi {

class DaemonOwner;
class NfcAgent;

/** The agent on the bus, and the daemon's calls that wait for the user. */
class NfcAgentPrivate : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.UIAgent")

public:
    // The numbers appear in the log.
    enum RequestType : int {
        BtPairingRequest = 0,
        BtConnectionRequest = 1,
        BtDisconnectionRequest = 2,
        DataDeliveryRequest = 3,
        SharingRequest = 4,
        AnyRequest = 5
    };

    struct Request
    {
        RequestType type;
        QVariant key;
        QDBusMessage message;
    };

    explicit NfcAgentPrivate(NfcAgent *agent);
    ~NfcAgentPrivate() override;

    void addPendingRequest(RequestType type, const QDBusObjectPath &target, const QDBusMessage &message);
    void addPendingRequest(RequestType type, const QVariant &key, const QDBusMessage &message);
    void replyRequest(RequestType type, const QVariant &key, const QVariant &value = {},
                      const QString &error = {});
    void cancelPendingRequests();

    NfcAgent *q;
    QString path;
    /** While only the daemon may call. */
    std::unique_ptr<DaemonOwner> daemon;

public Q_SLOTS:
    void Release(const QDBusMessage &message);
    void RequestBTPairing(const QDBusObjectPath &target, const QString &addr, const QString &name, uint cod,
                          const QString &pin, const QDBusMessage &message);
    void RequestBTConnection(const QDBusObjectPath &target, const QString &addr, const QString &name,
                             uint cod, const QDBusMessage &message);
    void RequestBTDisconnection(const QDBusObjectPath &target, const QString &addr, const QString &name,
                                uint cod, const QDBusMessage &message);
    void RequestNDEFDataDelivery(const NdefMessageHandlerList &handlers, const QDBusObjectPath &target,
                                 const QByteArray &data, const QDBusMessage &message);
    void RequestSharingPermission(const QString &carrier, const QDBusVariant &info,
                                  const QStringList &resources, const QDBusMessage &message);
    void RequestSharingSelection(const QString &carrier, const QDBusVariant &info,
                                 const QDBusMessage &message);
    void NotifyTouch(const QDBusObjectPath &target, const QString &status, const QDBusMessage &message);

private:
    using Requests = std::list<Request>;

    /** Answers a call that is not the daemon's while only the daemon may call, and returns whether it was
     * one. */
    bool refuseStranger(const QDBusMessage &message) const;
    static void answer(const Request &request, const QVariant &value, const QString &error);

    Requests requests; // oldest first
    // By the hash of the key; of the same hash, oldest first.
    std::multimap<size_t, Requests::iterator> requestsByKey;
};

} // namespace ConnUi

#endif
