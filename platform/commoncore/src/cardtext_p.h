// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CARDTEXT_P_H
#define CONNUI_CARDTEXT_P_H

#include <QByteArray>
#include <QMap>

namespace ConnUi {

// A vCard file with what is asked of it, put so that the vCard library reads it right: a property a line, in
// UTF-8, without nested cards. The library warns about much that it does not understand, and so would fill a
// log at a card's will.
class CardText
{
public:
    explicit CardText(const QByteArray &file);

    // The first card of the file; empty when it has none.
    QByteArray text() const { return card; }

private:
    struct Property
    {
        QByteArray name;
        QByteArray charset;
        QByteArray value;
        bool isQuotedPrintable = false;
        bool isBase64 = false;
    };

    static Property parse(const QByteArray &line);
    static QByteArray photo(const Property &property);
    static QByteArray charsetOf(const QByteArray &charset, const QByteArray &quotedPrintable);

    void addLine(const QByteArray &line);
    void endProperty();
    void write(const Property &property);

    QByteArray card;
    // The property that is being read: its lines so far, put together.
    QByteArray current;
    bool isQuotedPrintable = false;
    bool isBase64 = false;
    int depth = 0;
    int properties = 0;
    bool ended = false;
    QMap<QByteArray, int> counts;
};

} // namespace ConnUi

#endif
