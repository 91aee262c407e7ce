// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/transfers.h"

#include <algorithm>
#include <utility>

#include <QDBusConnection>
#include <QFileInfo>

#include <NfcApplication>
#include <NfcForeignText>

#include "core/desktopnotification.h"
#include "core/devicename.h"
#include "core/notices.h"
#include "core/questionqueue.h"
#include "transfersproxy.h"

namespace {

constexpr int untilWithdrawn = 0;

Question questionOf(const Question::File &file)
{
    Question question;
    question.kind = Question::Receiving;
    question.title = qtTrId("qtn_nfc_receive_tit");
    question.notes.append(qtTrId("qtn_nfc_receive_text").arg(file.sender));
    question.data = file.name;
    question.file = file;
    return question;
}

} // namespace

Transfers::Transfers(const QString &path, QuestionQueue *queue)
    : proxy(new TransfersProxy(QStringLiteral("com.tavix.nfc"), path, QDBusConnection::systemBus(), this))
    , queue(queue)
{
    connect(proxy, &TransfersProxy::TransferStarted, this, &Transfers::start);
    connect(proxy, &TransfersProxy::TransferProgressed, this, &Transfers::progress);
    connect(proxy, &TransfersProxy::TransferEnded, this, &Transfers::end);
}

Transfers::~Transfers() = default;

uint Transfers::hidden() const
{
    return uint(std::count_if(
        transfers.cbegin(), transfers.cend(), [](const auto &transfer) { return !transfer.second.shown; }));
}

void Transfers::showHidden()
{
    for (const auto &[number, transfer] : transfers)
        if (!transfer.shown)
            show(number);
    Q_EMIT hiddenChanged(hidden());
}

void Transfers::showAgain(uint number)
{
    const auto transfer = transfers.find(number);
    if (transfer == transfers.end() || transfer->second.shown)
        return;
    show(number);
    Q_EMIT hiddenChanged(hidden());
}

void Transfers::start(uint number, const QString &sender, const QString &name, qulonglong size)
{
    // A daemon that uses the number again has lost the file before, and its sheet would answer for this one.
    end(number, QString(), QString());
    Transfer transfer;
    transfer.file = {deviceName(sender), ConnUi::foreignName(name, QStringLiteral("?")), 0, size};
    transfers.emplace(number, std::move(transfer));
    show(number);
}

void Transfers::show(uint number)
{
    Transfer &transfer = transfers.at(number);
    transfer.notification.reset();
    Question question = questionOf(transfer.file);
    question.yes = qtTrId("qtn_comm_command_done");
    question.no = qtTrId("qtn_comm_cancel");
    transfer.shown = queue->begin(question, [this, number](const Answer &said) { answer(number, said); });
}

void Transfers::notify(uint number)
{
    Transfer &transfer = transfers.at(number);
    transfer.notification = std::make_unique<DesktopNotification>();
    // Queued: it goes when the file is shown again.
    connect(
        transfer.notification.get(), &DesktopNotification::pressed, this,
        [this, number] { showAgain(number); }, Qt::QueuedConnection);
    Question question = questionOf(transfer.file);
    question.yes = qtTrId("qtn_nfc_receive_show");
    transfer.notification->show(question, untilWithdrawn);
}

void Transfers::progress(uint number, qulonglong received)
{
    const auto found = transfers.find(number);
    if (found == transfers.end())
        return;
    Transfer &transfer = found->second;
    transfer.file.received = received;
    if (transfer.shown)
        queue->setProgress(*transfer.shown, received);
}

// Put away it goes on, and can be shown again.
void Transfers::answer(uint number, const Answer &answer)
{
    Transfer &transfer = transfers.at(number);
    transfer.shown.reset();
    if (answer.choice == Answer::No) {
        transfer.isCanceled = true;
        proxy->CancelTransfer(number);
    } else {
        notify(number);
        Q_EMIT hiddenChanged(hidden());
    }
}

void Transfers::end(uint number, const QString &outcome, const QString &path)
{
    auto ended = transfers.extract(number);
    if (ended.empty())
        return;
    Transfer transfer = std::move(ended.mapped());
    const std::optional<int> shown = transfer.shown;
    const bool isCompleted = outcome == QLatin1String("completed");
    // First, while the user may be looking at the sheet.
    if (isCompleted || !transfer.isCanceled)
        tellEnd(std::move(transfer), isCompleted, path);
    if (shown)
        queue->end(*shown);
    else
        Q_EMIT hiddenChanged(hidden());
}

void Transfers::tellEnd(Transfer transfer, bool isCompleted, const QString &path)
{
    const QString title = isCompleted ? qtTrId("qtn_nfc_received_tit") : qtTrId("qtn_nfc_receive_fail_tit");
    Question end = notice(title, qtTrId("qtn_nfc_receive_text").arg(transfer.file.sender));
    end.data = transfer.file.name;
    end.no = qtTrId("qtn_comm_close");
    if (isCompleted && QFileInfo(path).isFile())
        end.yes = qtTrId("qtn_nfc_tags_open");
    const auto open = [path](const Answer &answer) {
        if (answer.choice == Answer::Yes)
            ConnUi::NfcApplication::openFile(path);
    };
    if (!isCompleted || transfer.notification) {
        if (transfer.notification)
            transfer.notification->disconnect(this);
        queue->tellBeside(end, open, std::move(transfer.notification));
    } else {
        queue->tell(end, open);
    }
}
