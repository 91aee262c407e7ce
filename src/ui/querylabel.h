// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QUERYLABEL_H
#define CONNUI_QUERYLABEL_H

#include <QString>

class MLabel;

namespace ConnUi {

/** Returns a new label for a question's title. */
MLabel *newTitleLabel(const QString &title);

/** Returns a new centred label of the style \a style, whose text wraps at word boundaries, or anywhere if it
 * must. */
MLabel *newWrappedLabel(const QString &text, const QString &style);

} // namespace ConnUi

#endif
