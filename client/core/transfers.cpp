// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/transfers.h"

#include <algorithm>

#include <QDBusConnection>
#include <QFileInfo>

#include <NfcApplication>
#include <NfcForeignText>

#include "core/devicename.h"
#include "core/notices.h"
#include "core/questionqueue.h"
#include "transfersproxy.h"

Transfers::Transfers(const QString &path, QuestionQueue *queue)
    : proxy(new TransfersProxy(QStringLiteral("com.tavix.nfc"), path, QDBusConnection::systemBus(), this))
    , queue(queue)
{
    connect(proxy, &TransfersProxy::TransferStarted, this, &Transfers::start);
    connect(proxy, &TransfersProxy::TransferProgressed, this, &Transfers::progress);
    connect(proxy, &TransfersProxy::TransferEnded, this, &Transfers::end);
}

uint Transfers::hidden() const
{
    return uint(std::count_if(
        transfers.cbegin(), transfers.cend(), [](const Transfer &transfer) { return !transfer.shown; }));
}

void Transfers::showHidden()
{
    const QList<uint> numbers = transfers.keys();
    for (const uint number : numbers)
        if (!transfers[number].shown)
            show(number);
    Q_EMIT hiddenChanged(hidden());
}

void Transfers::start(uint number, const QString &sender, const QString &name, qulonglong size)
{
    transfers.insert(number,
                     {{deviceName(sender), ConnUi::foreignName(name, QStringLiteral("?")), 0, size}, {}});
    show(number);
}

void Transfers::show(uint number)
{
    Transfer &transfer = transfers[number];
    Question question;
    question.kind = Question::Receiving;
    question.title = qtTrId("qtn_nfc_receive_tit");
    question.notes.append(qtTrId("qtn_nfc_receive_text").arg(transfer.file.sender));
    question.data = transfer.file.name;
    question.yes = qtTrId("qtn_comm_command_done");
    question.no = qtTrId("qtn_comm_cancel");
    question.file = transfer.file;
    transfer.shown = queue->begin(question, [this, number](const Answer &said) { answer(number, said); });
}

void Transfers::progress(uint number, qulonglong received)
{
    const auto transfer = transfers.find(number);
    if (transfer == transfers.end())
        return;
    transfer->file.received = received;
    if (transfer->shown)
        queue->setProgress(*transfer->shown, received);
}

// Put away it goes on, and can be shown again.
void Transfers::answer(uint number, const Answer &answer)
{
    transfers[number].shown.reset();
    if (answer.choice == Answer::No)
        proxy->CancelTransfer(number);
    else
        Q_EMIT hiddenChanged(hidden());
}

void Transfers::end(uint number, const QString &outcome, const QString &path)
{
    if (!transfers.contains(number))
        return;
    const Transfer transfer = transfers.take(number);
    if (transfer.shown)
        queue->end(*transfer.shown);
    else
        Q_EMIT hiddenChanged(hidden());
    if (outcome == QLatin1String("completed"))
        tellEnd(transfer.file, path);
}

void Transfers::tellEnd(const Question::File &file, const QString &path)
{
    Question end = notice(qtTrId("qtn_nfc_received_tit"), qtTrId("qtn_nfc_receive_text").arg(file.sender));
    end.data = file.name;
    end.no = qtTrId("qtn_comm_close");
    const bool isKept = QFileInfo(path).isFile();
    if (isKept)
        end.yes = qtTrId("qtn_nfc_tags_open");
    queue->tell(end, [path](const Answer &answer) {
        if (answer.choice == Answer::Yes)
            ConnUi::NfcApplication::openFile(path);
    });
}
