// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/touch/touchtarget.h"

QDBusObjectPath TouchTarget::nextTag()
{
    static int touches = 0;
    return QDBusObjectPath(QStringLiteral("/com/tavix/nfc/tag/%1").arg(touches++));
}

QDBusObjectPath TouchTarget::device(const QString &address)
{
    QString name = address;
    name.replace(QLatin1Char(':'), QLatin1Char('_'));
    return QDBusObjectPath(QStringLiteral("/com/tavix/nfc/device/dev_") + name);
}
