// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfctagrecord.h"

#include <QList>
#include <QRegularExpression>
#include <QStringDecoder>

#include "decision/nfctagrecord_p.h"
#include "ndefrecord.h"

namespace ConnUi {

namespace {

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

bool isWellKnown(const NdefRecord &record, const char *type)
{
    return record.typeNameFormat() == NdefRecord::WellKnown && record.type() == type;
}

bool isPartOfPoster(const NdefRecord &record)
{
    if (record.typeNameFormat() == NdefRecord::Mime)
        return record.type().startsWith("image/") || record.type().startsWith("video/");
    static const QList<QByteArray> known = {"T", "act", "s", "t"};
    return record.typeNameFormat() == NdefRecord::WellKnown && known.contains(record.type());
}

NfcTagRecord::Kind kindOf(const NdefRecord &record)
{
    switch (record.typeNameFormat()) {
    case NdefRecord::WellKnown:
        if (record.type() == "U")
            return NfcTagRecord::Uri;
        return record.type() == "T" ? NfcTagRecord::Text : NfcTagRecord::Other;
    case NdefRecord::AbsoluteUri:
        return NfcTagRecord::Uri;
    case NdefRecord::Mime:
        return isContactCard(record.mimeType()) ? NfcTagRecord::ContactCard : NfcTagRecord::Other;
    case NdefRecord::External:
        return isStoreLink(QString::fromUtf8(record.type())) ? NfcTagRecord::StoreLink : NfcTagRecord::Other;
    case NdefRecord::Empty:
    case NdefRecord::Unknown:
        break;
    }
    return NfcTagRecord::Other;
}

// The text of a record without a question of its own, if it has any.
QString plainText(const QByteArray &payload)
{
    constexpr qsizetype most = 1000;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(payload);
    if (decoder.hasError() || text.contains(QChar(0)))
        return {};
    return text.size() > most ? text.left(most) + QChar(0x2026) : text;
}

} // namespace

NfcTagRecord NfcTagRecordPrivate::from(const NdefRecord &record)
{
    if (isWellKnown(record, "Sp"))
        return fromPoster(record);
    NfcTagRecord read;
    read.d->kind = kindOf(record);
    read.d->type = QString::fromUtf8(record.type());
    read.d->payload = record.payload();
    if (read.d->kind == NfcTagRecord::Uri)
        read.d->link = NfcLink(record.uri());
    read.d->text = read.d->kind == NfcTagRecord::Text ? record.text() : read.d->link.uri();
    return read;
}

// A smart poster stands for its link, if that is all there is to it.
NfcTagRecord NfcTagRecordPrivate::fromPoster(const NdefRecord &poster)
{
    QList<NfcTagRecord> links;
    bool isUnderstood = true;
    const QList<NdefRecord> parts = NdefRecord::fromMessage(poster.payload());
    for (const NdefRecord &part : parts)
        if (isWellKnown(part, "U"))
            links.append(from(part));
        else if (!isPartOfPoster(part))
            isUnderstood = false;
    if (links.isEmpty()) {
        NfcTagRecord unknown;
        unknown.d->type = QStringLiteral("Sp");
        unknown.d->payload = poster.payload();
        unknown.d->isUnderstood = false;
        return unknown;
    }
    links.first().d->isUnderstood = isUnderstood && links.size() == 1;
    return links.first();
}

NfcTagRecord::NfcTagRecord() : d(new NfcTagRecordPrivate) {}

NfcTagRecord::NfcTagRecord(const NfcTagRecord &other) = default;

NfcTagRecord &NfcTagRecord::operator=(const NfcTagRecord &other) = default;

NfcTagRecord::~NfcTagRecord() = default;

NfcTagRecord::Kind NfcTagRecord::kind() const
{
    return d->kind;
}

QString NfcTagRecord::type() const
{
    return d->type;
}

QByteArray NfcTagRecord::payload() const
{
    return d->payload;
}

QString NfcTagRecord::text() const
{
    return d->text;
}

QString NfcTagRecord::displayText() const
{
    return d->kind == Other ? plainText(d->payload) : d->text;
}

NfcLink NfcTagRecord::link() const
{
    return d->link;
}

bool NfcTagRecord::isUnderstood() const
{
    return d->isUnderstood;
}

} // namespace ConnUi
