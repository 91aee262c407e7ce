// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SHOWNWIDGETS_H
#define CONNUI_SHOWNWIDGETS_H

#include <algorithm>
#include <utility>

#include <QGraphicsScene>
#include <QGraphicsWidget>
#include <QList>
#include <QStringList>

/**
 * Returns the widgets of the class Widget that a user sees in \a root, which has appeared: from top to
 * bottom, those of one height from left to right.
 */
template <typename Widget>
QList<Widget *> shownWidgets(const QGraphicsWidget *root)
{
    const auto place = [root](const Widget *widget) {
        const QPoint corner = widget->mapRectToItem(root, widget->rect()).topLeft().toPoint();
        return std::pair(corner.y(), corner.x());
    };
    QList<Widget *> shown;
    QList<QGraphicsItem *> items = root->childItems();
    for (qsizetype i = 0; i < items.size(); ++i) {
        items.append(items[i]->childItems());
        auto *widget = dynamic_cast<Widget *>(items[i]);
        if (widget && widget->scene() && widget->isVisible() && !widget->rect().isEmpty())
            shown.append(widget);
    }
    std::stable_sort(shown.begin(), shown.end(),
                     [place](const Widget *one, const Widget *other) { return place(one) < place(other); });
    return shown;
}

/** Returns the texts on the widgets of the class Widget, such as MLabel or MButton, in their order on screen.
 */
template <typename Widget>
QStringList shownTexts(const QGraphicsWidget *root)
{
    QStringList texts;
    for (const Widget *widget : shownWidgets<Widget>(root))
        texts.append(widget->text());
    return texts;
}

#endif
