// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCFOREIGNTEXT_H
#define CONNUI_NFCFOREIGNTEXT_H

#include <connui_nfc_core_export.h>

#include <QString>

namespace ConnUi {

/**
 * Returns \a text, which a tag or a peer brought, as it is safe to draw.
 *
 * Characters that are invisible or change how others are drawn become U+FFFD, except the joiners and
 * variation selectors that a script or an emoji needs. Line ends become LF, of which at most two follow one
 * another.
 */
CONNUI_NFC_CORE_EXPORT QString foreignText(const QString &text);

/**
 * Returns \a name, which somebody else has given to a file, a device or a contact, fit to stand in a sentence
 * of the program's own.
 *
 * It is one line of at most 64 characters as users see them. The middle of a longer one is left out, so that
 * a file's extension stays. Unsafe characters are replaced as foreignText() does it, and a name that runs
 * from right to left is isolated from the text around it. An ordinary name does not change. Where nothing is
 * left, \a fallback stands in its place.
 */
CONNUI_NFC_CORE_EXPORT QString foreignName(const QString &name, const QString &fallback);

/** Returns \a text, which is safe to draw, such as NfcLink::host(), so that its parts stand from left to
 * right in any sentence. */
CONNUI_NFC_CORE_EXPORT QString leftToRight(const QString &text);

} // namespace ConnUi

#endif
