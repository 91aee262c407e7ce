// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_HANDOVERNEWS_H
#define CONNUI_CLIENT_HANDOVERNEWS_H

#include <QObject>

namespace ConnUi {
class NfcAdapter;
}
class Console;

/** Tells how a connection handover goes on. */
class HandoverNews : public QObject
{
    Q_OBJECT

public:
    HandoverNews(ConnUi::NfcAdapter *adapter, Console *console);
};

#endif
