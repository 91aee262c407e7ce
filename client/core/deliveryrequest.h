// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DELIVERYREQUEST_H
#define CONNUI_CLIENT_DELIVERYREQUEST_H

#include <QDBusObjectPath>

#include <NdefMessageHandler>

#include "core/decision.h"
#include "core/request.h"

namespace ConnUi {
class NfcAdapter;
}

/** Decides about the content of a tag, and hands it over. */
class DeliveryRequest : public Request
{
    Q_OBJECT

public:
    DeliveryRequest(const ConnUi::NfcAdapter *adapter, const ConnUi::NdefMessageHandlerList &handlers,
                    const QDBusObjectPath &tag, const QByteArray &data, const PendingReply &reply);

    void begin() override;
    void decide(const Answer &answer) override;

private:
    Circumstances circumstances() const;
    void open(const QString &application);
    void openOnDesktop();
    void forward(const QString &application);

    const ConnUi::NfcAdapter *const adapter;
    const ConnUi::NdefMessageHandlerList handlers;
    const QDBusObjectPath tag;
    const QByteArray data;
    TagContent content;
    Decision decision;
};

#endif
