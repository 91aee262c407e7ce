// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/deliverydialogs.h"

#include <algorithm>
#include <memory>

#include <QDesktopServices>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QUrl>

#include <ContentAction>
#include <MButtonModel>
#include <NfcAdapter>
#include <NfcAgent>
#include <NfcTagNotSupportedDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

#include "clientlog.h"
#include "screen/dialogqueue.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::NfcTagNotSupportedDialog;
using ConnUi::NfcTagReadPermissionDialog;

namespace {

QStringList applicationIds(const NdefMessageHandlerList &handlers)
{
    QStringList ids;
    for (const NdefMessageHandler &handler : handlers)
        ids.append(handler.applicationId());
    return ids;
}

const NdefMessageHandler *inForeground(const NdefMessageHandlerList &handlers)
{
    const auto front =
        std::find_if(handlers.cbegin(), handlers.cend(),
                     [](const NdefMessageHandler &handler) { return handler.isRunningOnForeground(); });
    return front != handlers.cend() ? &*front : nullptr;
}

// The one that the user has picked or the dialog has named, else the one in front, else the daemon's first.
const NdefMessageHandler &chosen(const NdefMessageHandlerList &handlers, const QString &application)
{
    for (const NdefMessageHandler &handler : handlers)
        if (handler.applicationId() == application)
            return handler;
    const NdefMessageHandler *front = inForeground(handlers);
    return front ? *front : handlers.first();
}

// A dialog about a card's file owns it: readable for this user alone, and gone with the dialog.
MDialog *cardDialog(const TagContent &content)
{
    auto file = std::make_unique<QTemporaryFile>();
    if (!file->open() || file->write(content.payload) != content.payload.size() || !file->flush()) {
        qCWarning(clientLog, "Unable to keep the tag's content: %s", qUtf8Printable(file->errorString()));
        return new NfcTagReadPermissionDialog(content.type, QString());
    }
    auto *dialog = new NfcTagReadPermissionDialog(content.type, QFileInfo(file->fileName()));
    file.release()->setParent(dialog);
    return dialog;
}

// What cannot be shown is told by the application that gets it: not the desktop's, but one that the daemon
// knows.
MDialog *newDialog(const TagContent &content, const QStringList &applications)
{
    switch (content.kind) {
    case TagContent::Uri: {
        if (!applications.isEmpty() && !content.isShownWhenAsked())
            break;
        const URINDEFRecord record(content.payload);
        return new NfcTagReadPermissionDialog(&record, QString());
    }
    case TagContent::Text:
        return new NfcTagReadPermissionDialog(content.text);
    case TagContent::ContactCard:
        return cardDialog(content);
    case TagContent::StoreLink:
        return new NfcTagReadPermissionDialog(content.type, QString::fromUtf8(content.payload));
    case TagContent::File:
    case TagContent::Other:
    case TagContent::Empty:
        break;
    }
    return new NfcTagReadPermissionDialog(applications, applications.value(0));
}

bool isAccepted(const MDialog *dialog, int result)
{
    // The button beside a call or a message, which has no code of its own.
    const MButtonModel *clicked = dialog->clickedButton();
    const bool viewed = clicked && clicked->role() == M::ApplyRole;
    return viewed || result == M::YesButton || result == M::OkButton;
}

} // namespace

DeliveryDialogs::DeliveryDialogs(NfcAdapter *adapter, NfcAgent *agent, DialogQueue *queue)
    : QObject(agent)
    , adapter(adapter)
    , agent(agent)
    , queue(queue)
{
    connect(agent, &NfcAgent::dataDeliveryRequested, this, &DeliveryDialogs::decide);
}

void DeliveryDialogs::decide(const NdefMessageHandlerList &handlers, const QDBusObjectPath &target,
                             const QByteArray &data)
{
    const Delivery delivery{handlers, target, data, readTag(data)};
    const bool openedByDesktop =
        delivery.content.kind == TagContent::Uri &&
        ContentAction::Action::defaultActionForScheme(delivery.content.text).isValid();
    if (delivery.content.kind == TagContent::Empty || (handlers.isEmpty() && !openedByDesktop))
        tellUnusable(delivery);
    else if (!forwardUnasked(delivery))
        ask(delivery);
}

// Nothing to ask: the daemon gets its answer at once.
void DeliveryDialogs::tellUnusable(const Delivery &delivery)
{
    const bool empty = delivery.content.kind == TagContent::Empty;
    if (empty)
        agent->dataDeliveryGranted(delivery.target);
    else
        agent->rejectDevice(delivery.target);
    queue->ask({[empty] {
                    return new NfcTagNotSupportedDialog(empty
                                                            ? NfcTagNotSupportedDialog::EmptyTagError
                                                            : NfcTagNotSupportedDialog::UnsupportedTagError);
                },
                [](MDialog *, int) {}});
}

bool DeliveryDialogs::forwardUnasked(const Delivery &delivery)
{
    if (delivery.handlers.isEmpty() || !delivery.content.isHarmless() || adapter->isConfirmationEnabled())
        return false;
    const NdefMessageHandler *handler = inForeground(delivery.handlers);
    if (!handler && delivery.handlers.size() == 1)
        handler = &delivery.handlers.first();
    if (!handler)
        return false;
    qCInfo(clientLog, "%s goes to %s unasked", qUtf8Printable(delivery.target.path()),
           qUtf8Printable(handler->applicationId()));
    forward(delivery, *handler);
    return true;
}

void DeliveryDialogs::ask(const Delivery &delivery)
{
    queue->ask({[delivery] { return newDialog(delivery.content, applicationIds(delivery.handlers)); },
                [this, delivery](MDialog *dialog, int result) { act(delivery, dialog, result); }});
}

void DeliveryDialogs::act(const Delivery &delivery, const MDialog *dialog, int result)
{
    if (!isAccepted(dialog, result)) {
        agent->rejectDevice(delivery.target);
        return;
    }
    if (!delivery.handlers.isEmpty()) {
        const auto *question = qobject_cast<const NfcTagReadPermissionDialog *>(dialog);
        forward(delivery, chosen(delivery.handlers, question->selectedApplication()));
        return;
    }
    agent->dataDeliveryGranted(delivery.target);
    QDesktopServices::openUrl(QUrl(delivery.content.text));
}

void DeliveryDialogs::forward(const Delivery &delivery, NdefMessageHandler handler)
{
    handler.forwardData(delivery.target, delivery.data);
    agent->dataDeliveryGranted(delivery.target);
}
