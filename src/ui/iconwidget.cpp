// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/iconwidget.h"

#include <QFileInfo>
#include <QPixmap>

#include <MImageWidget>

namespace ConnUi {

MImageWidget *newIconWidget(const QString &icon)
{
    auto *widget = new MImageWidget;
    const QFileInfo file(icon);
    // Opening a pipe would wait for its writer.
    if (file.isAbsolute() && file.isFile())
        widget->setPixmap(QPixmap(icon));
    else if (!file.isAbsolute())
        widget->setImage(icon);
    return widget;
}

} // namespace ConnUi
