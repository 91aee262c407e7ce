// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TABKEY_H
#define CONNUI_TABKEY_H

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QList>
#include <QTest>

/**
 * Returns what gets the focus in \a window, which is active, when the user goes round once with \a key, Tab
 * or Backtab.
 */
inline QList<QGraphicsItem *> itemsInFocusOrder(QGraphicsView *window, Qt::Key key)
{
    QList<QGraphicsItem *> items;
    QTest::keyClick(window->viewport(), key);
    for (QGraphicsItem *focused = window->scene()->focusItem(); focused && !items.contains(focused);
         focused = window->scene()->focusItem()) {
        items.append(focused);
        QTest::keyClick(window->viewport(), key);
    }
    return items;
}

/** Returns \a widgets as the items that they are. */
template <typename Widget>
QList<QGraphicsItem *> asItems(const QList<Widget *> &widgets)
{
    return QList<QGraphicsItem *>(widgets.cbegin(), widgets.cend());
}

#endif
