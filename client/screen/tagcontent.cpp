// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/tagcontent.h"

#include <algorithm>

#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QUrl>

#include <URINDEFRecord>

namespace {

TagContent uriContent(const QByteArray &payload)
{
    return {TagContent::Uri, QStringLiteral("U"), payload,
            QString::fromUtf8(URINDEFRecord(payload).getURI())};
}

// The poster's own URI record, if it has one.
TagContent posterContent(const QNdefRecord &record)
{
    const QNdefMessage inside = QNdefMessage::fromByteArray(record.payload());
    for (const QNdefRecord &part : inside)
        if (part.typeNameFormat() == QNdefRecord::NfcRtd && part.type() == "U")
            return uriContent(part.payload());
    return {TagContent::Other, QStringLiteral("Sp"), record.payload(), {}};
}

TagContent mimeContent(const QString &type, const QByteArray &payload)
{
    const bool card = type.startsWith(QLatin1String("text/x-vcard"), Qt::CaseInsensitive) ||
                      type.startsWith(QLatin1String("text/vcard"), Qt::CaseInsensitive) ||
                      type.startsWith(QLatin1String("text/directory"), Qt::CaseInsensitive);
    return {card ? TagContent::ContactCard : TagContent::File, type, payload, {}};
}

TagContent recordContent(const QNdefRecord &record)
{
    const QString type = QString::fromUtf8(record.type());
    switch (record.typeNameFormat()) {
    case QNdefRecord::NfcRtd:
        if (record.type() == "U")
            return uriContent(record.payload());
        if (record.type() == "Sp")
            return posterContent(record);
        if (record.isRecordType<QNdefNfcTextRecord>())
            return {TagContent::Text, type, record.payload(), QNdefNfcTextRecord(record).text()};
        break;
    case QNdefRecord::Mime:
        return mimeContent(type, record.payload());
    case QNdefRecord::Uri:
        return {TagContent::Uri, type, QByteArray(1, 0) + record.type(), type};
    case QNdefRecord::ExternalRtd:
        if (type.contains(QLatin1String("ruvostore:link"), Qt::CaseInsensitive))
            return {TagContent::StoreLink, type, record.payload(), {}};
        break;
    case QNdefRecord::Empty:
    case QNdefRecord::Unknown:
        break;
    }
    return {TagContent::Other, type, record.payload(), {}};
}

} // namespace

bool TagContent::isHarmless() const
{
    if (kind == Uri)
        return text.startsWith(QLatin1String("http://")) || text.startsWith(QLatin1String("https://"));
    return kind == Text || kind == ContactCard;
}

bool TagContent::isShownWhenAsked() const
{
    static constexpr QLatin1String shown[] = {QLatin1String("http"), QLatin1String("tel:"),
                                              QLatin1String("callto:"), QLatin1String("sms:")};
    return !text.contains(QLatin1Char(':')) ||
           std::any_of(std::begin(shown), std::end(shown),
                       [this](QLatin1String beginning) { return text.startsWith(beginning); });
}

TagContent readTag(const QByteArray &data)
{
    const QNdefMessage message = QNdefMessage::fromByteArray(data);
    for (const QNdefRecord &record : message)
        if (record.typeNameFormat() != QNdefRecord::Empty)
            return recordContent(record);
    if (message.isEmpty() && !data.isEmpty())
        return {TagContent::Other, {}, data, {}};
    return {};
}
