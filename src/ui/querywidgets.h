// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QUERYWIDGETS_H
#define CONNUI_QUERYWIDGETS_H

#include <QString>

class MImageWidget;
class MLabel;

/** The widgets that questions are made of. The caller owns them until a layout does. */
namespace ConnUi {

/** Returns a new image widget that shows \a icon: a file when it is an absolute path, else an icon of the
 * theme. */
MImageWidget *newIconWidget(const QString &icon);

/** Returns a new label for a question's title. */
MLabel *newTitleLabel(const QString &title);

/** Returns a new centered label of the style \a style, whose text wraps at word boundaries, or anywhere if it
 * must. */
MLabel *newWrappedLabel(const QString &text, const QString &style);

} // namespace ConnUi

#endif
