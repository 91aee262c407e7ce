// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/dialogqueue.h"

#include <utility>

DialogQueue::DialogQueue(QObject *parent) : QObject(parent) {}

DialogQueue::~DialogQueue()
{
    dropAll();
}

void DialogQueue::ask(const DialogRequest &request)
{
    requests.append(request);
    if (requests.size() == 1)
        showNext();
    else
        Q_EMIT waitingChanged(waiting());
}

void DialogQueue::dropAll()
{
    requests.clear();
    if (MDialog *dialog = std::exchange(shown, nullptr)) {
        dialog->disconnect(this);
        // Not done(): nobody has decided anything.
        dialog->disappear();
    }
    Q_EMIT waitingChanged(0);
}

MDialog *DialogQueue::dialog() const
{
    return shown;
}

qsizetype DialogQueue::waiting() const
{
    return std::max<qsizetype>(requests.size() - 1, 0);
}

void DialogQueue::showNext()
{
    if (requests.isEmpty())
        return;
    MDialog *dialog = requests.first().make();
    shown = dialog;
    connect(dialog, &MDialog::finished, this, [this, dialog](int result) { finish(dialog, result); });
    dialog->appear(MSceneWindow::DestroyWhenDone);
    Q_EMIT waitingChanged(waiting());
}

void DialogQueue::finish(MDialog *dialog, int result)
{
    // Out of the queue first: the decision may take its time, and may bring or drop other requests.
    const DialogRequest request = requests.takeFirst();
    shown = nullptr;
    const QPointer<DialogQueue> self(this);
    request.decided(dialog, result);
    if (self && !shown)
        showNext();
}
