// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_EBOOKCONTACTS_P_H
#define CONNUI_EBOOKCONTACTS_P_H

#include <libebook-contacts/libebook-contacts.h>

namespace ConnUi {

/** The functions of the vCard library that are called here, each under its own name. */
struct EBookContacts
{
    /** Returns them, loaded at the first call, or null with a warning when the library is not installed. */
    static const EBookContacts *load();

    decltype(&::e_vcard_new) e_vcard_new;
    decltype(&::e_vcard_construct_full) e_vcard_construct_full;
    decltype(&::e_vcard_get_attributes) e_vcard_get_attributes;
    decltype(&::e_vcard_attribute_get_name) e_vcard_attribute_get_name;
    decltype(&::e_vcard_attribute_get_values_decoded) e_vcard_attribute_get_values_decoded;
    decltype(&::e_vcard_attribute_get_value_decoded) e_vcard_attribute_get_value_decoded;
    decltype(&::g_object_unref) g_object_unref;
};

} // namespace ConnUi

#endif
