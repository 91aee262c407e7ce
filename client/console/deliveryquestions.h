// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DELIVERYQUESTIONS_H
#define CONNUI_CLIENT_DELIVERYQUESTIONS_H

#include <QObject>

#include <NdefMessageHandler>

namespace ConnUi {
class NfcAgent;
}
class Console;
class QuestionQueue;

/** Asks which application, if any, gets the content of a tag, and hands it over. */
class DeliveryQuestions : public QObject
{
    Q_OBJECT

public:
    DeliveryQuestions(ConnUi::NfcAgent *agent, QuestionQueue *queue, Console *console);

private:
    void ask(const ConnUi::NdefMessageHandlerList &handlers, const QDBusObjectPath &target,
             const QByteArray &data);
    void deliver(ConnUi::NdefMessageHandler handler, const QDBusObjectPath &target, const QByteArray &data);

    ConnUi::NfcAgent *const agent;
    QuestionQueue *const queue;
    Console *const console;
};

#endif
