// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/dialogs.h"

#include <memory>

#include <QFileInfo>
#include <QGraphicsLinearLayout>
#include <QTemporaryFile>

#include <MButtonModel>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MMessageBox>
#include <MWidget>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcPairingDialog>
#include <NfcSharingPermissionDialog>
#include <NfcSharingSelectionDialog>
#include <NfcTagNotSupportedDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

#include "core/contactcard.h"

using ConnUi::NfcFileSendDialog;
using ConnUi::NfcFileSendPendingDialog;
using ConnUi::NfcPairingDialog;
using ConnUi::NfcSharingPermissionDialog;
using ConnUi::NfcSharingSelectionDialog;
using ConnUi::NfcTagNotSupportedDialog;
using ConnUi::NfcTagReadPermissionDialog;

namespace {

QString notesOf(const Question &question)
{
    return question.notes.join(QLatin1Char('\n'));
}

MLabel *newLabel(const QString &text, bool isForeign)
{
    auto *label = new MLabel(text);
    label->setForeignText(isForeign);
    label->setStyleName(QStringLiteral("CommonQueryText"));
    label->setWordWrap(true);
    label->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QGraphicsLinearLayout *layoutOf(const MDialog *dialog)
{
    return dynamic_cast<QGraphicsLinearLayout *>(dialog->centralWidget()->layout());
}

int placeBelowTitle(const QGraphicsLinearLayout *layout)
{
    for (int i = 0; i < layout->count(); ++i)
        if (dynamic_cast<const MLabel *>(layout->itemAt(i)))
            return i + 1;
    return layout->count();
}

void insertLabel(QGraphicsLinearLayout *layout, int place, MLabel *label)
{
    layout->insertItem(place, label);
    // Assistive technology reads siblings in their order, not by their places.
    if (place + 1 < layout->count())
        label->stackBefore(layout->itemAt(place + 1)->graphicsItem());
}

// Our own sentences stand directly below the title, where nothing can push them off the screen.
void addText(MDialog *dialog, const QString &notes, const QString &data)
{
    QGraphicsLinearLayout *layout = layoutOf(dialog);
    if (!notes.isEmpty())
        insertLabel(layout, placeBelowTitle(layout), newLabel(notes, false));
    if (!data.isEmpty())
        layout->addItem(newLabel(data, true));
}

MDialog *newMessageBox(const Question &question)
{
    const bool asks = !question.yes.isEmpty();
    auto *box =
        new MMessageBox(question.title, asks ? M::YesButton | M::NoButton : M::StandardButtons(M::OkButton));
    auto *text = new MWidget;
    new MLinearLayoutPolicy(new MLayout(text), Qt::Vertical);
    box->setCentralWidget(text);
    addText(box, notesOf(question), question.data);
    box->setProgressIndicatorVisible(question.kind == Question::Opening);
    box->setNotice(question.kind == Question::Notice);
    if (asks)
        box->button(M::YesButton)->setText(question.yes);
    box->button(asks ? M::NoButton : M::OkButton)->setText(question.no);
    return box;
}

MDialog *newPairingDialog(const Question &question)
{
    auto *dialog = new NfcPairingDialog(question.deviceClass);
    dialog->setTitle(question.title);
    dialog->setText(notesOf(question));
    dialog->button(M::OkButton)->setText(question.yes);
    dialog->button(M::CancelButton)->setText(question.no);
    return dialog;
}

// The dialog knows links by the beginning that they have here, whatever they look like on the tag.
MDialog *newLinkDialog(const Question &question)
{
    const URINDEFRecord record(QByteArray(1, 0) + question.uri.toUtf8());
    return new NfcTagReadPermissionDialog(&record, notesOf(question));
}

// A dialog about a card's file owns it, so that the file is gone with the dialog.
MDialog *newCardDialog(const Question &question)
{
    std::unique_ptr<QTemporaryFile> file = cardFile(question.card);
    auto *dialog =
        new NfcTagReadPermissionDialog(QStringLiteral("text/x-vcard"), QFileInfo(file->fileName()));
    file.release()->setParent(dialog);
    return dialog;
}

MDialog *newTagDialog(const Question &question)
{
    if (question.kind == Question::Text)
        return new NfcTagReadPermissionDialog(question.data);
    if (question.kind == Question::ContactCard)
        return newCardDialog(question);
    if (question.kind == Question::StoreLink)
        return new NfcTagReadPermissionDialog(QStringLiteral("ruvostore:link"), QString());
    return new NfcTagReadPermissionDialog(question.applications, question.applications.constFirst());
}

MDialog *newSharingDialog(const Question &question)
{
    auto *dialog = new NfcSharingPermissionDialog(question.resources);
    dialog->button(M::YesButton)->setText(question.yes);
    dialog->button(M::NoButton)->setText(question.no);
    // One thing is named by the dialog itself, as it is called.
    const bool isOne = question.resources.size() == 1;
    auto *sentence = dynamic_cast<MLabel *>(layoutOf(dialog)->itemAt(layoutOf(dialog)->count() - 1));
    if (isOne && sentence)
        sentence->setText(qtTrId("qtn_nfc_share_img").arg(question.data));
    addText(dialog, notesOf(question), isOne ? QString() : question.data);
    return dialog;
}

} // namespace

MDialog *newDialog(const Question &question)
{
    switch (question.kind) {
    case Question::Pairing:
    case Question::Connection:
        return newPairingDialog(question);
    case Question::Link:
    case Question::Number:
    case Question::Message:
        return newLinkDialog(question);
    case Question::Text:
    case Question::ContactCard:
    case Question::StoreLink:
    case Question::OtherContent: {
        MDialog *dialog = newTagDialog(question);
        addText(dialog, notesOf(question),
                question.kind == Question::OtherContent ? question.data : QString());
        return dialog;
    }
    case Question::Sharing:
        return newSharingDialog(question);
    case Question::Selection:
        return new NfcSharingSelectionDialog(NfcSharingSelectionDialog::ImageSelection);
    case Question::EmptyTag:
        return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::EmptyTagError);
    case Question::UnreadableTag:
        return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::UnsupportedTagError);
    case Question::Invitation:
        return new NfcFileSendDialog;
    case Question::Waiting:
        return new NfcFileSendPendingDialog;
    case Question::Disconnection:
    case Question::Notice:
    case Question::Receiving:
    case Question::Opening:
        break;
    }
    return newMessageBox(question);
}

Answer answerOf(const Question &question, const MDialog *dialog, int result)
{
    // The button beside a call or a message, which has no code of its own.
    const MButtonModel *clicked = dialog->clickedButton();
    const bool isViewed = clicked && clicked->role() == M::ApplyRole;
    if (!isViewed && result != M::YesButton && result != M::OkButton)
        return {};
    const auto *tagDialog = qobject_cast<const NfcTagReadPermissionDialog *>(dialog);
    if (!tagDialog)
        return {Answer::Yes, {}};
    const bool isDirect = !question.direct.isEmpty() && tagDialog->isDirectActionSelected();
    return {isDirect ? Answer::Direct : Answer::Yes, tagDialog->selectedApplication()};
}
