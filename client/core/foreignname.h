// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_FOREIGNNAME_H
#define CONNUI_CLIENT_FOREIGNNAME_H

#include <QString>

/**
 * Returns \a name, which somebody else has given to a file, a device or a contact, fit to stand in a sentence
 * of ours.
 *
 * It is one line of at most 64 characters as users see them; of a longer one the middle is left out, so that
 * a file's extension stays. Characters that are invisible or change how others are drawn show as U+FFFD, and
 * a name that runs from right to left keeps to itself. An ordinary name stays as it is. Where nothing is
 * left, \a fallback stands in its place.
 */
QString foreignName(const QString &name, const QString &fallback);

/** Does the same, with "unnamed device" in the place of nothing. */
QString foreignName(const QString &name);

/** Returns \a text, which is fit to be shown, so that its parts stand from left to right in any sentence. */
QString leftToRight(const QString &text);

#endif
