// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/sharingquestions.h"

#include <NfcAgent>
#include <NfcBluetoothHandoverInfo>

#include "console/questionqueue.h"

using ConnUi::NfcAgent;
using ConnUi::NfcBluetoothHandoverInfo;

SharingQuestions::SharingQuestions(NfcAgent *agent, QuestionQueue *queue)
    : QObject(agent)
    , agent(agent)
    , queue(queue)
{
    connect(agent, &NfcAgent::sharingPermissionRequested, this, &SharingQuestions::askForPermission);
    connect(agent, &NfcAgent::sharingSelectionRequested, this, &SharingQuestions::askForSelection);
}

void SharingQuestions::askForPermission(const QString &carrier, const QVariant &info,
                                        const QStringList &resources)
{
    ask(QStringLiteral("Send %1 over %2 to %3")
            .arg(resources.join(QStringLiteral(", ")), carrier,
                 NfcBluetoothHandoverInfo(info).deviceAddress()),
        info);
}

void SharingQuestions::askForSelection(const QString &carrier, const QVariant &info)
{
    ask(QStringLiteral("Select something to send over %1 to %2")
            .arg(carrier, NfcBluetoothHandoverInfo(info).deviceAddress()),
        info);
}

void SharingQuestions::ask(const QString &subject, const QVariant &info)
{
    queue->ask({subject,
                {},
                [this, info](int) { agent->acceptSharing(info); },
                [this, info] { agent->rejectSharing(info); }});
}
