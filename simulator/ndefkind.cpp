// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefkind.h"

#include <QNdefMessage>
#include <QNdefNfcSmartPosterRecord>
#include <QNdefNfcUriRecord>
#include <QUrl>

namespace {

QString wellKnownKind(const QNdefRecord &record)
{
    if (record.type() == "U")
        return QStringLiteral("uri:") + QNdefNfcUriRecord(record).uri().toString();
    if (record.type() == "Sp")
        return QStringLiteral("uri:") + QNdefNfcSmartPosterRecord(record).uri().toString();
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
    switch (first.typeNameFormat()) {
    case QNdefRecord::Empty:
        return QStringLiteral("empty");
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
