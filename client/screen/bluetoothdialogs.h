// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_BLUETOOTHDIALOGS_H
#define CONNUI_BLUETOOTHDIALOGS_H

#include <QDBusObjectPath>
#include <QObject>

namespace ConnUi {
class NfcAgent;
}

class DialogQueue;

/** Asks whether to pair with, connect to or disconnect from a touched device. */
class BluetoothDialogs : public QObject
{
    Q_OBJECT

public:
    BluetoothDialogs(ConnUi::NfcAgent *agent, DialogQueue *queue);

private:
    using Grant = void (ConnUi::NfcAgent::*)(const QDBusObjectPath &target);

    void ask(const QDBusObjectPath &target, const QString &name, uint cod, Grant grant);
    void askToDisconnect(const QDBusObjectPath &target, const QString &name);
    void answer(const QDBusObjectPath &target, bool granted, Grant grant);

    ConnUi::NfcAgent *const agent;
    DialogQueue *const queue;
};

#endif
