// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VARIANTCONTENT_H
#define CONNUI_VARIANTCONTENT_H

#include <QVariant>

namespace ConnUi {

/**
 * Returns whether two values that came over D-Bus contain the same: equal as QVariants, or of the same D-Bus
 * type with the same content.
 *
 * QVariant finds no two QDBusArguments equal, not even a copy and its source, and no two NaNs. Neither value
 * is changed: what is inside a QDBusArgument is read from a copy, because reading uses an argument up.
 */
bool sameContent(const QVariant &left, const QVariant &right);

/**
 * Returns a number that is the same for all values of the same content, as sameContent() sees it, and seldom
 * for others: text, byte arrays, object paths and QDBusArguments. All values of the other types share one
 * number.
 */
size_t contentHash(const QVariant &value);

} // namespace ConnUi

#endif
