// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ebookcontacts_p.h"
#include "support/functions.h"

namespace ConnUi {

const EBookContacts *EBookContacts::load()
{
    using Support::Symbol;
    static const std::optional<EBookContacts> library = Support::loadFunctions<EBookContacts>(
        QStringLiteral(EBOOK_CONTACTS), "ContactExporter: unable to read cards",
        Symbol{"e_vcard_new", &EBookContacts::e_vcard_new},
        Symbol{"e_vcard_construct_full", &EBookContacts::e_vcard_construct_full},
        Symbol{"e_vcard_get_attributes", &EBookContacts::e_vcard_get_attributes},
        Symbol{"e_vcard_attribute_get_name", &EBookContacts::e_vcard_attribute_get_name},
        Symbol{"e_vcard_attribute_get_values_decoded", &EBookContacts::e_vcard_attribute_get_values_decoded},
        Symbol{"e_vcard_attribute_get_value_decoded", &EBookContacts::e_vcard_attribute_get_value_decoded},
        Symbol{"g_object_unref", &EBookContacts::g_object_unref});
    return library ? &*library : nullptr;
}

} // namespace ConnUi
