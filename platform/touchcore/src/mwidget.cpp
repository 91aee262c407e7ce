// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mwidget.h"

MWidget::MWidget(QGraphicsItem *parent) : QGraphicsWidget(parent) {}

MWidget::~MWidget() = default;

QSizeF MWidget::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    if (!layout() && which == Qt::PreferredSize) {
        return QSizeF(0, 0);
    }
    return QGraphicsWidget::sizeHint(which, constraint);
}
