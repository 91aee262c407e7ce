// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DELIVERYDIALOGS_H
#define CONNUI_DELIVERYDIALOGS_H

#include <QByteArray>
#include <QDBusObjectPath>
#include <QObject>

#include <NdefMessageHandler>

#include "screen/tagcontent.h"

namespace ConnUi {
class NfcAdapter;
class NfcAgent;
} // namespace ConnUi

class DialogQueue;
class MDialog;

/** Asks what is to become of a tag's data, and hands it over. */
class DeliveryDialogs : public QObject
{
    Q_OBJECT

public:
    DeliveryDialogs(ConnUi::NfcAdapter *adapter, ConnUi::NfcAgent *agent, DialogQueue *queue);

private:
    struct Delivery
    {
        ConnUi::NdefMessageHandlerList handlers;
        QDBusObjectPath target;
        QByteArray data;
        TagContent content;
    };

    void decide(const ConnUi::NdefMessageHandlerList &handlers, const QDBusObjectPath &target,
                const QByteArray &data);
    void tellUnusable(const Delivery &delivery);
    bool forwardUnasked(const Delivery &delivery);
    void ask(const Delivery &delivery);
    void act(const Delivery &delivery, const MDialog *dialog, int result);
    void forward(const Delivery &delivery, ConnUi::NdefMessageHandler handler);

    ConnUi::NfcAdapter *const adapter;
    ConnUi::NfcAgent *const agent;
    DialogQueue *const queue;
};

#endif
