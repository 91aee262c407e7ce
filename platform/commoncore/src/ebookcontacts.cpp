// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ebookcontacts.h"

#include <optional>

#include <QLibrary>

namespace ConnUi {

namespace {

template <typename Function>
bool resolve(QLibrary &library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(library.resolve(name));
    return function;
}

std::optional<EBookContacts> resolveAll()
{
    QLibrary library(QStringLiteral(EBOOK_CONTACTS));
    EBookContacts all;
    if (resolve(library, "e_vcard_new", all.e_vcard_new) &&
        resolve(library, "e_vcard_construct_full", all.e_vcard_construct_full) &&
        resolve(library, "e_vcard_get_attribute", all.e_vcard_get_attribute) &&
        resolve(library, "e_vcard_attribute_get_values_decoded", all.e_vcard_attribute_get_values_decoded) &&
        resolve(library, "e_vcard_attribute_get_value_decoded", all.e_vcard_attribute_get_value_decoded) &&
        // From a library that it brings along.
        resolve(library, "g_object_unref", all.g_object_unref))
        return all;
    qWarning("ContactExporter: unable to read cards: %s", qUtf8Printable(library.errorString()));
    return {};
}

} // namespace

const EBookContacts *EBookContacts::load()
{
    static const std::optional<EBookContacts> library = resolveAll();
    return library ? &*library : nullptr;
}

} // namespace ConnUi
