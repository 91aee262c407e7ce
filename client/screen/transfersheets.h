// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TRANSFERSHEETS_H
#define CONNUI_TRANSFERSHEETS_H

#include <QHash>
#include <QObject>

namespace ConnUi {
class NfcFileReceiveSheet;
}

class SimulatorProxy;

/** Shows each file that arrives, on a sheet of its own, and lets the person cancel it. */
class TransferSheets : public QObject
{
    Q_OBJECT

public:
    explicit TransferSheets(QObject *parent);

    /** Takes the sheets away: without its daemon nothing arrives any more. */
    ~TransferSheets() override;

private:
    void show(uint transfer, const QString &sender, const QString &name, qulonglong size);
    void update(uint transfer, qulonglong transferred, qulonglong size);
    void end(uint transfer, const QString &outcome);
    void cancel(uint transfer);
    void close(uint transfer);

    SimulatorProxy *const simulator;
    QHash<uint, ConnUi::NfcFileReceiveSheet *> sheets; // on the screen, by their transfers
};

#endif
