// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SHARINGDIALOGS_H
#define CONNUI_SHARINGDIALOGS_H

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVariant>

#include <MDialog>

namespace ConnUi {
class NfcAdapter;
class NfcAgent;
} // namespace ConnUi

class DialogQueue;

/** Asks what to share and whether to send it, and shows what the person is to do, or to wait for, around it.
 */
class SharingDialogs : public QObject
{
    Q_OBJECT

public:
    SharingDialogs(ConnUi::NfcAdapter *adapter, ConnUi::NfcAgent *agent, DialogQueue *queue);
    ~SharingDialogs() override;

private:
    void askForPermission(const QString &carrier, const QVariant &info, const QStringList &resources);
    void askForSelection(const QString &carrier, const QVariant &info);
    void answer(const QVariant &info, bool granted);
    void invite();
    void wait(const QString &carrier);
    void tellPeer(const QString &carrier, const QVariant &info);
    void show(MDialog *dialog);
    void clear();

    ConnUi::NfcAdapter *const adapter;
    ConnUi::NfcAgent *const agent;
    DialogQueue *const queue;
    QPointer<MDialog> notice; // to touch the other device, to wait for it, or that it is connected
};

#endif
