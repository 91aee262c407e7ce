// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "section.h"

#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefRecord>

#include <URINDEFRecord>

namespace {

// Qt calls no bytes at all malformed.
QNdefMessage recordsOf(const QByteArray &message)
{
    return message.isEmpty() ? QNdefMessage() : QNdefMessage::fromByteArray(message);
}

bool isContactCard(const QNdefRecord &record)
{
    const QByteArray type = record.type().toLower();
    return record.typeNameFormat() == QNdefRecord::Mime &&
           (type == "text/vcard" || type == "text/x-vcard" || type == "text/directory");
}

bool isPlainText(const QNdefRecord &record)
{
    return record.typeNameFormat() == QNdefRecord::Mime && record.type().toLower() == "text/plain";
}

Section section(const QNdefRecord &record)
{
    const QByteArray payload = record.payload();
    if (record.isRecordType<QNdefNfcTextRecord>())
        return {Section::Text, QNdefNfcTextRecord(record).text(), payload};
    if (record.typeNameFormat() == QNdefRecord::NfcRtd && record.type() == "U")
        return {Section::Link, QString::fromUtf8(URINDEFRecord(payload).getURI()), payload};
    if (record.typeNameFormat() == QNdefRecord::Uri)
        return {Section::Link, QString::fromUtf8(record.type()), payload};
    if (isContactCard(record))
        return {Section::ContactCard, QString(), payload};
    if (isPlainText(record))
        return {Section::Text, QString::fromUtf8(payload), payload};
    return {Section::Data, QString::fromUtf8(record.type()), payload};
}

} // namespace

QList<Section> readSections(const QByteArray &message)
{
    QList<Section> sections;
    const QNdefMessage records = recordsOf(message);
    for (const QNdefRecord &record : records) {
        const bool isPoster = record.typeNameFormat() == QNdefRecord::NfcRtd && record.type() == "Sp";
        const QNdefMessage parts = isPoster ? recordsOf(record.payload()) : QNdefMessage();
        for (const QNdefRecord &part : parts)
            sections.append(section(part));
        if (parts.isEmpty() && record.typeNameFormat() != QNdefRecord::Empty)
            sections.append(section(record));
    }
    return sections;
}
