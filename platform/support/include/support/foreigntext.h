// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_FOREIGNTEXT_H
#define CONNUI_SUPPORT_FOREIGNTEXT_H

#include <QString>
#include <QStringList>

namespace Support {

/** Returns the lines of \a text: CR, LF, both together and Unicode's two separators end one. */
QStringList paragraphs(QString text);

/**
 * Returns \a text, which somebody else wrote, as it is safe to draw.
 *
 * A character that takes no room or steers how others are drawn becomes U+FFFD: control and format
 * characters, bidirectional controls, tags, fillers, lone surrogates. Joiners and variation selectors stay
 * where a script or an emoji needs them. Line ends become LF, and no more than one empty line follows another
 * line.
 *
 * A program wraps a number in U+202A and U+202C, so that it reads from left to right. The first pair of them
 * becomes an isolate of the same direction; it ends on the line that it began on.
 */
QString drawableForeignText(const QString &text);

} // namespace Support

#endif
