// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_HANDOVERS_H
#define CONNUI_CLIENT_HANDOVERS_H

#include <optional>

#include <QObject>
#include <QVariant>

#include "core/question.h"
#include "core/questionqueue.h"

namespace ConnUi {
class NfcAdapter;
}

/** Shows what the user is to do, or to wait for, while a connection is handed over. */
class Handovers : public QObject
{
    Q_OBJECT

public:
    Handovers(ConnUi::NfcAdapter *adapter, QuestionQueue *queue, QObject *parent);

    /** Asks the user to touch the other device. */
    void invite();

    /** Takes away what is shown. */
    void clear();

private:
    void wait(const QString &carrier);
    void tellPeer(const QVariant &info);
    void show(const Question &notice, const QuestionQueue::Answered &answered);

    ConnUi::NfcAdapter *const adapter;
    QuestionQueue *const queue;
    std::optional<int> shown; // its number in the queue
};

#endif
