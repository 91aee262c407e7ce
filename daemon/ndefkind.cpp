// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/ndefkind.h"

#include <QNdefMessage>
#include <QNdefNfcUriRecord>
#include <QUrl>

namespace {

// A smart poster holds a message of its own. Qt's class for it leaks what it reads.
QString posterKind(const QNdefRecord &poster)
{
    const QNdefMessage parts = QNdefMessage::fromByteArray(poster.payload());
    for (const QNdefRecord &part : parts)
        if (part.isRecordType<QNdefNfcUriRecord>())
            return QStringLiteral("uri:") + QNdefNfcUriRecord(part).uri().toString();
    return QStringLiteral("unknown");
}

QString wellKnownKind(const QNdefRecord &record)
{
    if (record.type() == "U")
        return QStringLiteral("uri:") + QNdefNfcUriRecord(record).uri().toString();
    if (record.type() == "Sp")
        return posterKind(record);
    if (record.type() == "T")
        return QStringLiteral("text/plain");
    return QStringLiteral("unknown");
}

} // namespace

QString ndefKind(const QByteArray &message)
{
    if (message.isEmpty())
        return QStringLiteral("empty");
    const QNdefMessage records = QNdefMessage::fromByteArray(message);
    if (records.isEmpty())
        return QStringLiteral("unknown");

    const QNdefRecord &first = records.first();
    if (first.typeNameFormat() == QNdefRecord::Empty)
        return QStringLiteral("empty");
    // One that must have a type and has none.
    if (first.type().isEmpty())
        return QStringLiteral("unknown");
    switch (first.typeNameFormat()) {
    case QNdefRecord::NfcRtd:
        return wellKnownKind(first);
    case QNdefRecord::Mime:
        return QString::fromUtf8(first.type());
    case QNdefRecord::Uri:
        return QStringLiteral("uri:") + QString::fromUtf8(first.type());
    case QNdefRecord::ExternalRtd:
        return QStringLiteral("urn:nfc:ext:") + QString::fromUtf8(first.type());
    default:
        return QStringLiteral("unknown");
    }
}
