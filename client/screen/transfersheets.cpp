// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/transfersheets.h"

#include <QDBusConnection>

#include <NfcFileReceiveSheet>

#include "simulatorproxy.h"

using ConnUi::NfcFileReceiveSheet;

TransferSheets::TransferSheets(QObject *parent)
    : QObject(parent)
    , simulator(new SimulatorProxy(QStringLiteral("com.tavix.nfc"),
                                   QStringLiteral("/com/tavix/nfc/simulator"), QDBusConnection::systemBus(),
                                   this))
{
    connect(simulator, &SimulatorProxy::TransferStarted, this, &TransferSheets::show);
    connect(simulator, &SimulatorProxy::TransferProgressed, this, &TransferSheets::update);
    connect(simulator, &SimulatorProxy::TransferEnded, this, &TransferSheets::end);
}

TransferSheets::~TransferSheets()
{
    const QHash<uint, NfcFileReceiveSheet *> open = sheets;
    for (NfcFileReceiveSheet *sheet : open)
        sheet->disappear();
}

void TransferSheets::show(uint transfer, const QString &sender, const QString &name, qulonglong size)
{
    auto *sheet = new NfcFileReceiveSheet;
    sheet->setRemoteDeviceName(sender);
    sheet->setFileName(name);
    sheet->setThumbnailImage(QStringLiteral("icon-m-content-nfc-inverse"));
    sheet->setProgress(QString::number(transfer), 0, size);
    connect(
        sheet, &NfcFileReceiveSheet::transferCanceled, this, [this, transfer] { cancel(transfer); });
    connect(sheet, &NfcFileReceiveSheet::disappeared, this, [this, transfer] { sheets.remove(transfer); });
    sheets.insert(transfer, sheet);
    sheet->appear(MSceneWindow::DestroyWhenDone);
}

void TransferSheets::update(uint transfer, qulonglong transferred, qulonglong size)
{
    if (NfcFileReceiveSheet *sheet = sheets.value(transfer))
        sheet->setProgress(QString::number(transfer), transferred, size);
}

// A file that is complete stays on the screen until the person has seen it.
void TransferSheets::end(uint transfer, const QString &outcome)
{
    if (outcome != QLatin1String("completed"))
        close(transfer);
}

void TransferSheets::cancel(uint transfer)
{
    simulator->CancelTransfer(transfer);
    close(transfer);
}

void TransferSheets::close(uint transfer)
{
    if (NfcFileReceiveSheet *sheet = sheets.value(transfer))
        sheet->disappear();
}
