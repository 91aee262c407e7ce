// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_REFERENCEENCODER_H
#define CONNUI_REFERENCEENCODER_H

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QList>
#include <QMap>
#include <QString>

/**
 * A second encoder of NDEF messages to hold NDEFGenerator against: the rules one after the other through a
 * data stream, without a thought for speed and without a line shared.
 */
namespace Reference {

struct Record
{
    QString uri;
    QString mimeType;
    QByteArray mimeData;

    bool operator==(const Record &other) const
    {
        return uri == other.uri || (mimeType == other.mimeType && mimeData == other.mimeData);
    }
};

/** A record as it is written, before it becomes bytes. */
struct Written
{
    QByteArray type;
    QByteArray payload;
    QByteArray id;
    bool messageBegin;
    bool messageEnd;

    int typeNameFormat() const
    {
        if (type == "Sp" || type == "U")
            return 1;
        return QString::fromLatin1(type.constData()).split(QLatin1Char('/')).size() == 2 ? 2 : 0;
    }

    QByteArray bytes() const
    {
        QByteArray result;
        QDataStream stream(&result, QIODevice::WriteOnly);
        auto header = quint8(typeNameFormat());
        if (messageBegin)
            header |= 0x80;
        if (messageEnd)
            header |= 0x40;
        if (payload.size() <= 255)
            header |= 0x10;
        if (!id.isEmpty())
            header |= 0x08;
        stream << header << quint8(type.size() % 256);
        if (payload.size() <= 255)
            stream << quint8(payload.size());
        else
            stream << quint32(payload.size());
        if (!id.isEmpty())
            stream << quint8(id.size() % 256);
        stream.writeRawData(type.constData(), int(type.size()));
        stream.writeRawData(id.constData(), int(id.size()));
        stream.writeRawData(payload.constData(), int(payload.size()));
        return result;
    }
};

/** Returns the text in UTF-8, with U+FFFD for each half of a surrogate pair that stands alone. */
inline QByteArray utf8(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = QChar(QChar::ReplacementCharacter);
    return text.toUtf8();
}

inline QByteArray uriPayload(const QString &uri)
{
    static const QMap<QString, char> codes = {
        {QStringLiteral("http://www."), 1},
        {QStringLiteral("https://www."), 2},
        {QStringLiteral("http://"), 3},
        {QStringLiteral("https://"), 4},
        {QStringLiteral("tel:"), 5},
        {QStringLiteral("mailto:"), 6},
        {QStringLiteral("ftp://anonymous:anonymous@"), 7},
        {QStringLiteral("ftp://ftp."), 8},
        {QStringLiteral("ftps://"), 9},
        {QStringLiteral("sftp://"), 10},
        {QStringLiteral("smb://"), 11},
        {QStringLiteral("nfs://"), 12},
        {QStringLiteral("ftp://"), 13},
        {QStringLiteral("file://"), 29},
    };
    QString best;
    for (const QString &prefix : codes.keys())
        if (uri.startsWith(prefix) && prefix.size() > best.size())
            best = prefix;
    return codes.value(best, 0) + utf8(uri).mid(best.size());
}

/** Returns what of the records is written; those with nothing to write are left out. */
inline QList<Written> write(const QList<Record> &records)
{
    QList<Written> written;
    for (const Record &record : records) {
        const bool begin = record == records.first();
        const bool end = record == records.last();
        if (!record.uri.isEmpty())
            written.append({"U", uriPayload(record.uri), {}, begin, end});
        else if (!record.mimeType.isEmpty())
            written.append({utf8(record.mimeType), record.mimeData, {}, begin, end});
    }
    return written;
}

inline QByteArray bytes(const QList<Written> &written)
{
    QByteArray result;
    for (const Written &record : written)
        result += record.bytes();
    return result;
}

/** Returns whether begin and end are marked once, where they are, and each record says truly what it holds.
 */
inline bool isWellFormed(const QList<Written> &written)
{
    if (written.isEmpty())
        return false;
    for (qsizetype i = 0; i < written.size(); ++i) {
        const Written &record = written[i];
        if (record.messageBegin != (i == 0) || record.messageEnd != (i == written.size() - 1))
            return false;
        if (record.typeNameFormat() == 0 || record.type.size() > 255)
            return false;
    }
    return true;
}

} // namespace Reference

#endif
