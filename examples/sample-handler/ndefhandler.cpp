// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefhandler.h"

#include <QTextStream>

#include <NdefRecord>

#include "recordtext.h"

NdefHandler::NdefHandler(QObject *parent) : QDBusAbstractAdaptor(parent) {}

void NdefHandler::NDEFData(const QDBusObjectPath &target, const QByteArray &data)
{
    QTextStream out(stdout);
    out << "data of " << target.path() << ": " << data.toHex() << Qt::endl;
    const QList<ConnUi::NdefRecord> records = ConnUi::NdefRecord::fromMessage(data);
    for (const ConnUi::NdefRecord &record : records)
        out << "record: " << recordText(record) << Qt::endl;
}
