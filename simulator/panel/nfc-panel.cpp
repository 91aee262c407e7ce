// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusError>

#include "panel/touchpanel.h"

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (!QDBusConnection::systemBus().isConnected()) {
        std::fprintf(stderr, "nfc-panel: %s\n",
                     qUtf8Printable(QDBusConnection::systemBus().lastError().message()));
        return 1;
    }
    QDBusConnection::systemBus().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                                         QStringLiteral("org.freedesktop.DBus.Local"),
                                         QStringLiteral("Disconnected"), &application, SLOT(quit()));
    TouchPanel panel;
    panel.show();
    return QApplication::exec();
}
