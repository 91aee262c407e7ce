// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/querywidgets.h"

#include <QDir>
#include <QPixmap>
#include <QTextOption>

#include <MImageWidget>
#include <MLabel>
#include <MTheme>

namespace ConnUi {

MImageWidget *newIconWidget(const QString &icon)
{
    auto *widget = new MImageWidget;
    if (QDir::isAbsolutePath(icon))
        widget->setPixmap(MTheme::foreignPixmap(icon));
    else
        widget->setImage(icon);
    return widget;
}

MLabel *newTitleLabel(const QString &title)
{
    auto *label = new MLabel(title);
    label->setStyleName(QStringLiteral("CommonQueryTitle"));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

MLabel *newWrappedLabel(const QString &text, const QString &style)
{
    auto *label = new MLabel(text);
    label->setStyleName(style);
    label->setWordWrap(true);
    label->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace ConnUi
