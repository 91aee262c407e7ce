// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/handovers.h"

#include <utility>

#include <NfcAdapter>

#include "core/notices.h"
#include "core/peername.h"

using ConnUi::NfcAdapter;

Handovers::Handovers(NfcAdapter *adapter, QuestionQueue *queue, QObject *parent)
    : QObject(parent)
    , adapter(adapter)
    , queue(queue)
{
    connect(adapter, &NfcAdapter::handoverCarrierSelected, this, &Handovers::wait);
    connect(adapter, &NfcAdapter::handoverCompleted, this,
            [this](const QString &, const QVariant &info) { tellPeer(info); });
    connect(adapter, &NfcAdapter::handoverFailed, this, &Handovers::clear);
}

void Handovers::invite()
{
    Question invitation = notice(qtTrId("qtn_nfc_touchtoshare_tit"), qtTrId("qtn_nfc_touchtoshare_img_text"));
    invitation.kind = Question::Invitation;
    invitation.no = qtTrId("qtn_comm_cancel");
    show(invitation, {});
}

void Handovers::wait(const QString &carrier)
{
    Question waiting = notice(qtTrId("qtn_nfc_waiting_dialog_tit"), qtTrId("qtn_nfc_waiting_dialog_text"));
    waiting.kind = Question::Waiting;
    waiting.no = qtTrId("qtn_comm_cancel");
    show(waiting, [this, carrier](const Answer &) { adapter->cancelHandoverRequest(carrier); });
}

// With whom the phone is connected now.
void Handovers::tellPeer(const QVariant &info)
{
    clear();
    findPeerName(info, this, [this](const QString &name) {
        queue->tell(notice(qtTrId("qtn_nfc_waiting_dialog_tit"), qtTrId("qtn_nfc_handover_text").arg(name)));
    });
}

void Handovers::show(const Question &notice, const QuestionQueue::Answered &answered)
{
    clear();
    shown = queue->begin(notice, answered);
}

void Handovers::clear()
{
    if (const std::optional<int> number = std::exchange(shown, std::nullopt))
        queue->end(*number);
}
