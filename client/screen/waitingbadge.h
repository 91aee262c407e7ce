// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_WAITINGBADGE_H
#define CONNUI_CLIENT_WAITINGBADGE_H

#include <QObject>
#include <QPointer>

#include <MLabel>

class MSceneWindow;

/** Shows, at the edge above a question, how many others wait behind it. */
class WaitingBadge : public QObject
{
    Q_OBJECT

public:
    /** Shows in \a window that \a waiting others wait; nothing when there are none. */
    void show(MSceneWindow *window, qsizetype waiting);

private:
    void moveToEdge();

    QPointer<MLabel> label; // the window that it stands in owns it
};

#endif
