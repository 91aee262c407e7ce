// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DIALOGHELPERWIDGET_H
#define CONNUI_DIALOGHELPERWIDGET_H

#include <connui_common_export.h>

#include <MWidgetController>

namespace ConnUi {

/**
 * Holds the content of a sheet or dialog with the theme's margins around it, at the top of the space that it
 * gets.
 */
class CONNUI_COMMON_EXPORT DialogHelperWidget : public MWidgetController
{
    Q_OBJECT
public:
    /** Makes a holder for \a content, which it owns, inside \a parent, which then owns the holder. */
    explicit DialogHelperWidget(QGraphicsWidget *content, QGraphicsItem *parent = nullptr);
};

} // namespace ConnUi

#endif
