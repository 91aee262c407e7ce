// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef CONNUI_TOUCHTEST_H
#define CONNUI_TOUCHTEST_H

#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <MButton>
#include <MButtonModel>
#include <MDialog>
#include <MSceneManager>
#include <MWindow>

#include "touchdriver.h"

/** Helpers that tests of the toolkit share. */
namespace TouchTest {

/** Returns all widgets of class \a T below \a root that are visible, in the order of their making. */
template <class T>
QList<T *> visibleBelow(QGraphicsItem *root)
{
    QList<T *> found;
    const QList<QGraphicsItem *> children = root->childItems();
    for (QGraphicsItem *child : children) {
        if (!child->isVisible())
            continue;
        if (auto *widget = dynamic_cast<T *>(child->toGraphicsObject()))
            found.append(widget);
        found.append(visibleBelow<T>(child));
    }
    return found;
}

/** Returns the button on the screen that shows \a model, or null. */
inline MButton *viewOf(MDialog *dialog, const MButtonModel *model)
{
    const QList<MButton *> buttons = visibleBelow<MButton>(dialog);
    for (MButton *button : buttons)
        if (model && button->text() == model->text())
            return button;
    return nullptr;
}

/** Taps on the middle of \a item in \a window. */
inline void tap(MWindow *window, const QGraphicsItem *item)
{
    TouchDriver(window).tap(item);
}

/** Returns what the window's scene looks like at \a rect. */
inline QImage picture(QGraphicsScene *scene, const QRectF &rect, qreal ratio = 1)
{
    QImage image((rect.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene->render(&painter, QRectF(QPointF(), rect.size()), rect);
    return image;
}

/** Shows \a window and waits until it takes keys. */
inline bool activate(MWindow *window)
{
    window->show();
    return QTest::qWaitForWindowActive(window);
}

} // namespace TouchTest

#endif
