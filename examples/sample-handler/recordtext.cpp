// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "recordtext.h"

#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QUrl>

QString recordText(const QNdefRecord &record)
{
    if (record.isRecordType<QNdefNfcUriRecord>())
        return QStringLiteral("uri %1").arg(QNdefNfcUriRecord(record).uri().toString());
    if (record.isRecordType<QNdefNfcTextRecord>())
        return QStringLiteral("text '%1'").arg(QNdefNfcTextRecord(record).text());
    return QStringLiteral("type '%1', %2 bytes")
        .arg(QString::fromLatin1(record.type()))
        .arg(record.payload().size());
}
