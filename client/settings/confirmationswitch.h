// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CONFIRMATIONSWITCH_H
#define CONNUI_CLIENT_CONFIRMATIONSWITCH_H

#include <QObject>
#include <QTimer>

#include <MButton>

namespace ConnUi {
class NfcAdapter;
}

/** Holds the switch for confirmations to what is stored, whoever has stored it. */
class ConfirmationSwitch : public QObject
{
    Q_OBJECT

public:
    /** Follows the setting with \a button, which stores it at a press and must outlive this. */
    ConfirmationSwitch(MButton *button, const ConnUi::NfcAdapter *adapter, QObject *parent);

private:
    void follow();
    void check(bool wanted);

    MButton *const button;
    const ConnUi::NfcAdapter *const adapter;
    QTimer timer;
};

#endif
