// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DELIVERYREQUEST_H
#define CONNUI_CLIENT_DELIVERYREQUEST_H

#include <QDBusObjectPath>

#include <NdefMessageHandler>
#include <NfcDeliveryDecision>

#include "core/request.h"

namespace ConnUi {
class NfcAdapter;
}

class Deliveries;
class QuestionQueue;

/** Decides about the content of a tag, and hands it over. */
class DeliveryRequest : public Request
{
    Q_OBJECT

public:
    /** The objects that a delivery uses. */
    struct Surroundings
    {
        const ConnUi::NfcAdapter *adapter;
        Deliveries *deliveries;
        const QuestionQueue *queue; ///< Which is paused while the session is locked
    };

    DeliveryRequest(const Surroundings &surroundings, const ConnUi::NdefMessageHandlerList &handlers,
                    const QDBusObjectPath &tag, const QByteArray &data, const PendingReply &reply);

    void begin() override;
    void decide(const Answer &answer) override;

private:
    void findHandlerInFront();
    void decideWithout();
    void open(const QString &application);
    void openOnDesktop();
    void forward(const QString &application);

    const Surroundings surroundings;
    const bool cameLocked; // while the session was
    const ConnUi::NdefMessageHandlerList handlers;
    const QDBusObjectPath tag;
    const QByteArray data;
    int unknown = 0; // handlers of which it is not known yet whether they are in front
    ConnUi::NfcDeliveryDecision decision;
};

#endif
