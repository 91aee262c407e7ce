// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/messagetext.h"

#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QStringList>
#include <QUrl>

namespace {

QString recordText(const QNdefRecord &record)
{
    if (record.isRecordType<QNdefNfcUriRecord>())
        return QNdefNfcUriRecord(record).uri().toString();
    if (record.isRecordType<QNdefNfcTextRecord>())
        return QStringLiteral("text '%1'").arg(QNdefNfcTextRecord(record).text());
    return QStringLiteral("%1 (%2 bytes)").arg(QString::fromUtf8(record.type())).arg(record.payload().size());
}

} // namespace

QString messageText(const QByteArray &data)
{
    QStringList texts;
    const QNdefMessage message = QNdefMessage::fromByteArray(data);
    for (const QNdefRecord &record : message)
        if (record.typeNameFormat() != QNdefRecord::Empty)
            texts.append(recordText(record));
    if (message.isEmpty() && !data.isEmpty())
        return QStringLiteral("%1 unknown bytes").arg(data.size());
    return texts.join(QStringLiteral(" and "));
}
