// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "contactcard.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>
#include <QTemporaryFile>

#include <ContactExporter>

using ConnUi::ContactExporter;

namespace {

QString decoded(const QByteArray &line)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(line);
    return decoder.hasError() ? QString::fromLatin1(line) : text;
}

// The lines of a card, those that were folded in one piece again: a fold may part the bytes of a character.
QStringList linesOf(const QByteArray &card)
{
    static const QRegularExpression fold(QStringLiteral("\\r?\\n[ \\t]"));
    static const QRegularExpression lineEnd(QStringLiteral("[\\r\\n]+"));
    QStringList lines = QString::fromLatin1(card).remove(fold).split(lineEnd, Qt::SkipEmptyParts);
    for (QString &line : lines)
        line = decoded(line.toLatin1());
    return lines;
}

// The value as one reads it: a comma between its parts, characters without their backslashes.
QString readable(const QString &value)
{
    static const QRegularExpression separators(QStringLiteral("(?<!\\\\);"));
    static const QRegularExpression escaped(QStringLiteral("\\\\(.)"));
    QStringList parts = value.split(separators);
    parts.removeAll(QString());
    QString text = parts.join(QStringLiteral(", "));
    text.replace(QStringLiteral("\\n"), QStringLiteral("\n"), Qt::CaseInsensitive);
    text.replace(escaped, QStringLiteral("\\1"));
    return text.trimmed();
}

const char *labelOf(const QString &property)
{
    static const QHash<QString, const char *> labels = {
        {QStringLiteral("TEL"), "qtn_nfc_viewer_phone"},
        {QStringLiteral("EMAIL"), "qtn_nfc_viewer_email"},
        {QStringLiteral("ORG"), "qtn_nfc_viewer_company"},
        {QStringLiteral("TITLE"), "qtn_nfc_viewer_job"},
        {QStringLiteral("ADR"), "qtn_nfc_viewer_address"},
        {QStringLiteral("URL"), "qtn_nfc_viewer_web"},
        {QStringLiteral("BDAY"), "qtn_nfc_viewer_birthday"},
        {QStringLiteral("NOTE"), "qtn_nfc_viewer_note"},
    };
    return labels.value(property.toUpper());
}

} // namespace

QString cardName(const QByteArray &card)
{
    QTemporaryFile file;
    if (!file.open() || file.write(card) != card.size() || !file.flush())
        return QString();
    QString first;
    QString second;
    ContactExporter::resolveContactInfo(QFileInfo(file), first, second);
    return QStringLiteral("%1 %2").arg(first, second).trimmed();
}

QList<CardDetail> cardDetails(const QByteArray &card)
{
    // "item1.TEL;TYPE=cell:+1 555 0100"
    static const QRegularExpression line(
        QRegularExpression::anchoredPattern(QStringLiteral("(?:[\\w-]+\\.)?([\\w-]+)((?:;[^:]*)?):(.*)")));
    QList<CardDetail> details;
    const QStringList lines = linesOf(card);
    for (const QString &text : lines) {
        const QRegularExpressionMatch match = line.match(text);
        const char *label = labelOf(match.captured(1));
        const bool isPlain =
            !match.captured(2).contains(QLatin1String("QUOTED-PRINTABLE"), Qt::CaseInsensitive);
        const QString value = readable(match.captured(3));
        if (label && isPlain && !value.isEmpty())
            details.append({label, value});
    }
    return details;
}
