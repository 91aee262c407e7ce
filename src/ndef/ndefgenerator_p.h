// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFGENERATOR_P_H
#define CONNUI_NDEFGENERATOR_P_H

#include <QList>

#include "ndefgenerator.h"

/** A record's fields; a record that has been moved from has none. */
class Q_DECL_HIDDEN NDEFGenerator::Record::Private
{
public:
    static const Private &of(const Record &record) { return record.d ? *record.d : none; }

    QString uri;
    QString mimeType;
    QByteArray mimeData;

private:
    static const Private none;
};

class NDEFGeneratorPrivate
{
public:
    /**
     * Returns one encoded record.
     *
     * The type name format follows from the type: "U" and "Sp" are well-known types, two parts around one "/"
     * are a media type, and anything else is written as Empty, though with its type.
     */
    QByteArray generateRecord(const QByteArray &type, const QByteArray &payload, bool messageBegin,
                              bool messageEnd, const QByteArray &id) const;

    /** Returns the record of a URI, its beginning abbreviated to an identifier code where there is one for
     * it. */
    QByteArray generateUriRecord(const QString &uri, bool messageBegin, bool messageEnd,
                                 const QByteArray &id) const;

    QList<NDEFGenerator::Record> records;
};

#endif
