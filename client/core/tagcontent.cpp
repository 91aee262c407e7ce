// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/tagcontent.h"

#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QRegularExpression>

#include <URINDEFRecord>

#include "core/ndefframing.h"

namespace {

// The URI in the form that decides its kind: tags are written by hand.
QString plainUri(const QString &uri)
{
    const QString trimmed = uri.trimmed();
    const QString scheme = schemeOf(trimmed);
    if (scheme.isEmpty())
        return QLatin1String("http://") + trimmed;
    return scheme.toLower() + trimmed.mid(scheme.size());
}

bool isWebLink(const QString &uri)
{
    const QString scheme = schemeOf(uri);
    return scheme == QLatin1String("http") || scheme == QLatin1String("https");
}

TagRecord uriRecord(const QByteArray &payload)
{
    const QString uri = plainUri(QString::fromUtf8(URINDEFRecord(payload).getURI()));
    TagRecord record{TagRecord::Uri, QStringLiteral("U"), payload, uri};
    if (isWebLink(uri))
        record.link = readLink(uri);
    return record;
}

bool isPartOfPoster(const QNdefRecord &record)
{
    if (record.typeNameFormat() == QNdefRecord::Mime)
        return record.type().startsWith("image/") || record.type().startsWith("video/");
    static const QList<QByteArray> known = {"T", "act", "s", "t"};
    return record.typeNameFormat() == QNdefRecord::NfcRtd && known.contains(record.type());
}

// A smart poster stands for its link, if that is all there is to it.
TagRecord posterRecord(const QByteArray &payload)
{
    QList<TagRecord> links;
    bool isUnderstood = isOneNdefMessage(payload);
    const QNdefMessage message = isUnderstood ? QNdefMessage::fromByteArray(payload) : QNdefMessage();
    for (const QNdefRecord &record : message)
        if (record.typeNameFormat() == QNdefRecord::NfcRtd && record.type() == "U")
            links.append(uriRecord(record.payload()));
        else if (!isPartOfPoster(record))
            isUnderstood = false;
    if (links.isEmpty())
        return {TagRecord::Other, QStringLiteral("Sp"), payload, {}, false};
    links.first().isUnderstood = isUnderstood && links.size() == 1;
    return links.first();
}

bool isContactCard(const QString &mimeType)
{
    static const QRegularExpression card(
        QStringLiteral("^(text/x-vcard|text/vcard|text/directory)\\s*(;|\\z)"),
        QRegularExpression::CaseInsensitiveOption);
    return card.match(mimeType).hasMatch();
}

bool isStoreLink(const QString &type)
{
    return type.contains(QLatin1String("ruvostore:link"), Qt::CaseInsensitive);
}

TagRecord tagRecord(const QNdefRecord &record)
{
    const QString type = QString::fromUtf8(record.type());
    switch (record.typeNameFormat()) {
    case QNdefRecord::NfcRtd:
        if (record.type() == "U")
            return uriRecord(record.payload());
        if (record.type() == "Sp")
            return posterRecord(record.payload());
        if (record.isRecordType<QNdefNfcTextRecord>())
            return {TagRecord::Text, type, record.payload(), QNdefNfcTextRecord(record).text()};
        break;
    case QNdefRecord::Mime:
        return {isContactCard(type) ? TagRecord::ContactCard : TagRecord::Other, type, record.payload(), {}};
    case QNdefRecord::Uri:
        return uriRecord(QByteArray(1, 0) + record.type());
    case QNdefRecord::ExternalRtd:
        return {isStoreLink(type) ? TagRecord::StoreLink : TagRecord::Other, type, record.payload(), {}};
    case QNdefRecord::Empty:
    case QNdefRecord::Unknown:
        break;
    }
    return {TagRecord::Other, type, record.payload(), {}};
}

} // namespace

TagContent readTag(const QByteArray &data)
{
    if (data.isEmpty())
        return {};
    if (!isOneNdefMessage(data))
        return {false, {}};
    const QNdefMessage message = QNdefMessage::fromByteArray(data);
    TagContent content;
    content.isWellFormed = !message.isEmpty();
    for (const QNdefRecord &record : message)
        if (record.typeNameFormat() != QNdefRecord::Empty)
            content.records.append(tagRecord(record));
    return content;
}

QString schemeOf(const QString &uri)
{
    // RFC 3986, 3.1.
    static const QRegularExpression scheme(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*):"));
    return scheme.match(uri).captured(1);
}
