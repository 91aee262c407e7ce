// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_BUSWATCH_H
#define CONNUI_CLIENT_BUSWATCH_H

#include <QObject>

/**
 * Ends the application with NoBus when the system bus or the session bus disconnects: a program never gets
 * Qt's shared connections back.
 */
class BusWatch : public QObject
{
    Q_OBJECT

public:
    /** Begins to watch. Processes events, once. */
    BusWatch();

private Q_SLOTS:
    void loseSystemBus();
    void loseSessionBus();
};

#endif
