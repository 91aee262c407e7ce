// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefhandler.h"

#include <QNdefMessage>
#include <QTextStream>

#include "recordtext.h"

NdefHandler::NdefHandler(QObject *parent) : QDBusAbstractAdaptor(parent) {}

void NdefHandler::NDEFData(const QDBusObjectPath &target, const QByteArray &data)
{
    QTextStream out(stdout);
    out << "data of " << target.path() << ": " << data.toHex() << Qt::endl;
    const QNdefMessage message = QNdefMessage::fromByteArray(data);
    for (const QNdefRecord &record : message)
        out << "record: " << recordText(record) << Qt::endl;
}
