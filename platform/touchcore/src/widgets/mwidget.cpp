// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mwidget.h"

MWidget::MWidget(QGraphicsItem *parent) : QGraphicsWidget(parent) {}

MWidget::~MWidget() = default;

QSizeF MWidget::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    if (!layout() && which == Qt::PreferredSize)
        return QSizeF(0, 0);
    return QGraphicsWidget::sizeHint(which, constraint);
}

// Qt makes a widget that stands in no layout as large as it has to be at each change, and lays it out to
// know. As long as it is in no scene nobody sees that: once is enough, when it gets there.
void MWidget::updateGeometry()
{
    if (scene() || parentLayoutItem()) {
        QGraphicsWidget::updateGeometry();
    } else {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): it is what QGraphicsWidget adds that is left out.
        QGraphicsLayoutItem::updateGeometry();
    }
}

QVariant MWidget::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemSceneHasChanged && scene() && !parentLayoutItem())
        updateGeometry();
    return QGraphicsWidget::itemChange(change, value);
}
