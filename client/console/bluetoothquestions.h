// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_BLUETOOTHQUESTIONS_H
#define CONNUI_CLIENT_BLUETOOTHQUESTIONS_H

#include <QDBusObjectPath>
#include <QObject>

namespace ConnUi {
class NfcAgent;
}
class QuestionQueue;

/** Asks whether to pair with, connect to or disconnect from a touched Bluetooth device. */
class BluetoothQuestions : public QObject
{
    Q_OBJECT

public:
    BluetoothQuestions(ConnUi::NfcAgent *agent, QuestionQueue *queue);

private:
    using Grant = void (ConnUi::NfcAgent::*)(const QDBusObjectPath &target);

    void askForPairing(const QDBusObjectPath &target, const QString &address, const QString &name, uint cod,
                       const QString &pin);
    void askForConnection(const QDBusObjectPath &target, const QString &address, const QString &name);
    void askForDisconnection(const QDBusObjectPath &target, const QString &address, const QString &name);
    void ask(const QString &subject, const QDBusObjectPath &target, Grant grant);

    ConnUi::NfcAgent *const agent;
    QuestionQueue *const queue;
};

#endif
