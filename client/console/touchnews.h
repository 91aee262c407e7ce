// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TOUCHNEWS_H
#define CONNUI_CLIENT_TOUCHNEWS_H

#include <QDBusObjectPath>
#include <QObject>

namespace ConnUi {
class NfcAgent;
}
class Console;

/** Tells what became of each touch. */
class TouchNews : public QObject
{
    Q_OBJECT

public:
    TouchNews(ConnUi::NfcAgent *agent, Console *console);

private:
    void tell(const QDBusObjectPath &target, int status);

    Console *const console;
};

#endif
