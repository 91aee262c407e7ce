// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tagmessages.h"

#include <QNdefMessage>
#include <QNdefNfcTextRecord>

#include <NDEFGenerator>

namespace {

QByteArray messageOf(const NDEFGenerator::Record &record, QString *error)
{
    NDEFGenerator generator;
    generator.addRecord(record);
    return generator.message(error);
}

} // namespace

QByteArray TagMessages::uri(const QString &uri, QString *error)
{
    return messageOf(NDEFGenerator::Record(uri), error);
}

QByteArray TagMessages::text(const QString &text)
{
    QNdefNfcTextRecord record;
    record.setEncoding(QNdefNfcTextRecord::Utf8);
    record.setLocale(QStringLiteral("en"));
    record.setText(text);
    return QNdefMessage(record).toByteArray();
}

QByteArray TagMessages::mime(const QString &type, const QByteArray &data, QString *error)
{
    return messageOf(NDEFGenerator::Record(type, data), error);
}

QByteArray TagMessages::empty()
{
    return QByteArray::fromHex("d00000");
}
