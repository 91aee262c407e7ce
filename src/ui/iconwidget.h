// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_ICONWIDGET_H
#define CONNUI_ICONWIDGET_H

#include <QString>

class MImageWidget;

namespace ConnUi {

/** Returns a new image widget that shows \a icon: a file when it is an absolute path, else an icon of the
 * theme. */
MImageWidget *newIconWidget(const QString &icon);

} // namespace ConnUi

#endif
