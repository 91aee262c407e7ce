// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcfilereceivesheet.h"

#include <MImageWidget>
#include <MLabel>

#include "ui/nfcfilereceivesheet_p.h"

namespace ConnUi {

NfcFileReceiveSheet::NfcFileReceiveSheet() : d(new NfcFileReceiveSheetPrivate(this))
{
    setStyleName(QStringLiteral("Inverted"));
    setTitle(qtTrId("qtn_nfc_receive_tit"));
    setRejectButtonText(qtTrId("qtn_comm_command_done"));
    // The setters need the content from now on.
    ensureContent();
}

NfcFileReceiveSheet::~NfcFileReceiveSheet()
{
    delete d;
}

void NfcFileReceiveSheet::setRemoteDeviceName(const QString &name)
{
    d->senderLabel->setText(qtTrId("qtn_nfc_receive_text").arg(name));
}

void NfcFileReceiveSheet::setFileName(const QString &name)
{
    d->fileNameLabel->setText(name);
}

void NfcFileReceiveSheet::setThumbnailImage(const QString &id)
{
    d->thumbnail->setImage(id);
}

void NfcFileReceiveSheet::setProgress(const QString &, quint64 transferred, quint64 total)
{
    d->showSize(transferred, total);
    d->estimate(transferred, total);
}

void NfcFileReceiveSheet::createContent()
{
    setCentralWidget(d->createContent());
}

} // namespace ConnUi
