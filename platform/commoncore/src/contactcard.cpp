// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <glib.h>

#include "cardcharset_p.h"
#include "cardtext_p.h"
#include "contactcard_p.h"

namespace ConnUi {
namespace {

constexpr qsizetype partsLimit = 5000;

QByteArray bytes(const GString *string)
{
    return QByteArray(string->str, qsizetype(string->len));
}

// The library's time grows with the square of the parts of a value.
bool hasTooManyParts(const QByteArray &card)
{
    return card.count(';') + card.count(',') > partsLimit;
}

// A number or an address may be written as a URI.
QString withoutScheme(const QString &value)
{
    for (const QLatin1String scheme : {QLatin1String("tel:"), QLatin1String("mailto:")})
        if (value.startsWith(scheme, Qt::CaseInsensitive))
            return value.sliced(scheme.size());
    return value;
}

} // namespace

QString ContactCard::read(const QByteArray &file)
{
    QByteArray data = file;
    if (data.startsWith("\xef\xbb\xbf"))
        data.remove(0, 3);
    if (data.trimmed().isEmpty())
        return QString();
    if (!data.trimmed().first(qMin<qsizetype>(data.trimmed().size(), 11)).toUpper().startsWith("BEGIN:VCARD"))
        return QStringLiteral("not a contact card");
    const QByteArray text = CardText(data).text();
    if (hasTooManyParts(text))
        return QStringLiteral("too many parts for a contact card");
    const EBookContacts *library = EBookContacts::load();
    if (!library)
        return QString();
    card.reset(library->e_vcard_new());
    library->e_vcard_construct_full(card.get(), text.constData(), text.size(), nullptr);
    return QString();
}

QString ContactCard::otherName() const
{
    for (const char *name : {EVC_FN, EVC_ORG, EVC_NICKNAME, EVC_EMAIL, EVC_TEL})
        for (EVCardAttribute *attribute : attributes(name)) {
            const QString value = withoutScheme(values(attribute).value(0));
            if (!value.isEmpty())
                return value;
        }
    return QString();
}

QByteArrayList ContactCard::photos() const
{
    const EBookContacts *library = EBookContacts::load();
    QByteArrayList photos;
    for (EVCardAttribute *attribute : attributes(EVC_PHOTO)) {
        GString *data = library->e_vcard_attribute_get_value_decoded(attribute);
        if (!data)
            continue;
        if (data->len > 0)
            photos.append(bytes(data));
        g_string_free(data, true);
    }
    return photos;
}

// A part of the name, which starts with the family's.
QString ContactCard::name(qsizetype part) const
{
    const QList<EVCardAttribute *> names = attributes(EVC_N);
    return names.isEmpty() ? QString() : values(names.constFirst()).value(part);
}

QStringList ContactCard::values(EVCardAttribute *attribute) const
{
    QStringList values;
    for (GList *i = EBookContacts::load()->e_vcard_attribute_get_values_decoded(attribute); i; i = i->next)
        values.append(
            QString::fromUtf8(CardCharset::toUtf8(bytes(static_cast<GString *>(i->data)))).simplified());
    return values;
}

QList<EVCardAttribute *> ContactCard::attributes(const char *name) const
{
    const EBookContacts *library = EBookContacts::load();
    QList<EVCardAttribute *> found;
    for (GList *i = card ? library->e_vcard_get_attributes(card.get()) : nullptr; i; i = i->next) {
        auto *attribute = static_cast<EVCardAttribute *>(i->data);
        if (qstrcmp(library->e_vcard_attribute_get_name(attribute), name) == 0)
            found.append(attribute);
    }
    return found;
}

} // namespace ConnUi
