// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tagmessages.h"

#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QUrl>

QByteArray TagMessages::uri(const QString &uri)
{
    QNdefNfcUriRecord record;
    record.setUri(QUrl(uri));
    return QNdefMessage(record).toByteArray();
}

QByteArray TagMessages::text(const QString &text)
{
    QNdefNfcTextRecord record;
    record.setEncoding(QNdefNfcTextRecord::Utf8);
    record.setLocale(QStringLiteral("en"));
    record.setText(text);
    return QNdefMessage(record).toByteArray();
}

QByteArray TagMessages::mime(const QString &type, const QByteArray &data)
{
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType(type.toUtf8());
    record.setPayload(data);
    return QNdefMessage(record).toByteArray();
}

QByteArray TagMessages::empty()
{
    return QByteArray::fromHex("d00000");
}
