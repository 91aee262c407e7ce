// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_OUTCOME_H
#define CONNUI_OUTCOME_H

#include <QDBusError>
#include <QObject>
#include <QPointer>
#include <QVariant>

#include <NfcPendingCall>

/** The result of a call that does not block; the call itself deletes itself when it has finished. */
class Outcome
{
public:
    explicit Outcome(ConnUi::NfcPendingCall *pending) : call(pending)
    {
        QObject::connect(
            pending, &ConnUi::NfcPendingCall::finished, &context,
            [this](const ConnUi::NfcPendingCall *finished) {
                ++times;
                value = finished->value();
                error = finished->error().name();
                message = finished->error().message();
            });
    }
    Q_DISABLE_COPY_MOVE(Outcome)

    QPointer<ConnUi::NfcPendingCall> call;
    int times = 0;
    QVariant value;
    QString error;
    QString message;

private:
    QObject context;
};

#endif
