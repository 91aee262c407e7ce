// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_RANDOMCONTENTS_H
#define CONNUI_RANDOMCONTENTS_H

#include <QByteArray>
#include <QList>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <NDEFGenerator>

#include "abbreviations.h"

/** A URI, or data with its MIME type. */
struct Content
{
    QString uri;
    QString type;
    QByteArray data;
};

/** Makes what messages may hold, the same for the same seed. */
class RandomContents
{
public:
    explicit RandomContents(quint32 seed) : random(seed) {}

    QList<Content> message()
    {
        QList<Content> contents;
        for (int left = 1 + below(6); left > 0; --left)
            contents.append(below(2) ? uri() : mime());
        return contents;
    }

private:
    int below(int end) { return int(random.bounded(end)); }

    // Around the length at which a record becomes long, and everywhere else.
    int length()
    {
        if (below(8) == 0)
            return 240 + below(40);
        return below(500) == 0 ? below(70000) : below(40);
    }

    Content uri()
    {
        QString text = QString::fromLatin1(abbreviations().value(below(0x26)));
        const bool ascii = below(4) != 0;
        for (int left = length(); left > 0; --left)
            text += ascii || below(3) ? QChar('!' + below(94)) : QChar(0xA0 + below(0xD700));
        return {text.isEmpty() ? QStringLiteral("x") : text, {}, {}};
    }

    Content mime()
    {
        static const QStringList types = {QStringLiteral("text/plain"), QStringLiteral("image/svg+xml"),
                                          QStringLiteral("a/b"), QStringLiteral("application/vnd.x.y-z"),
                                          QString(127, u'x') + u'/' + QString(127, u'y')};
        QByteArray data(length(), Qt::Uninitialized);
        for (char &byte : data)
            byte = char(below(256));
        return {{}, types[below(int(types.size()))], data};
    }

    QRandomGenerator random;
};

/** Returns the message of \a contents that every decoder shall read. */
inline QByteArray encode(const QList<Content> &contents)
{
    NDEFGenerator generator;
    for (const Content &content : contents)
        generator.addRecord(content.uri.isEmpty() ? NDEFGenerator::Record(content.type, content.data)
                                                  : NDEFGenerator::Record(content.uri));
    return generator.message();
}

#endif
