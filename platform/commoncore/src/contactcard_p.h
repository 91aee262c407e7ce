// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CONTACTCARD_P_H
#define CONNUI_CONTACTCARD_P_H

#include <memory>

#include <QByteArrayList>
#include <QStringList>

#include "ebookcontacts_p.h"

namespace ConnUi {

// A contact's card (vCard 2.1, 3.0 and 4.0) as the vCard library reads it.
class ContactCard
{
public:
    // Reads the content of a file. Returns what is wrong with it, empty when nothing is; an empty file and a
    // missing library give an empty card.
    QString read(const QByteArray &file);

    QString givenName() const { return name(1); }
    QString familyName() const { return name(0); }

    // The name of the card otherwise: its formatted name, or the first of its organization, nickname, mail
    // address and telephone number.
    QString otherName() const;

    // The pictures in the card, as image files.
    QByteArrayList photos() const;

private:
    struct Unref
    {
        void operator()(EVCard *card) const { EBookContacts::load()->g_object_unref(card); }
    };

    QString name(qsizetype part) const;
    QStringList values(EVCardAttribute *attribute) const;
    QList<EVCardAttribute *> attributes(const char *name) const;

    std::unique_ptr<EVCard, Unref> card;
};

} // namespace ConnUi

#endif
