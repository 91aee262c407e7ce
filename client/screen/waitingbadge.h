// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_WAITINGBADGE_H
#define CONNUI_WAITINGBADGE_H

#include <QObject>
#include <QPointer>

#include <MLabel>

class DialogQueue;

/** Tells at the edge above a dialog how many others wait behind it. */
class WaitingBadge : public QObject
{
    Q_OBJECT

public:
    explicit WaitingBadge(DialogQueue *queue);

private:
    void update(qsizetype waiting);
    void moveToEdge();

    DialogQueue *const queue;
    QPointer<MLabel> label; // the dialog that it stands in owns it
};

#endif
