// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLE_P_H
#define MACCESSIBLE_P_H

#include <QAccessible>
#include <QList>

class QGraphicsItem;
class QGraphicsWidget;
class QWidget;

/**
 * The tree of this toolkit that assistive technology sees.
 *
 * The tree has windows, scene windows, and what in them says something or can be used; panels and layouts are
 * left out, and so is what stands below the scene window in front, since the user cannot reach it.
 */
namespace MAccessible {

/** The urgency of an announcement. */
enum Politeness {
    Polite = 1,    ///< It is spoken when nothing else is
    Assertive = 2, ///< It is spoken at once
};

/** Lets Qt find the classes of this toolkit. Does nothing the second time. */
void install();

/** Announces \a event of \a object if somebody listens. */
void tell(QObject *object, QAccessible::Event event);
/** Announces that the value of \a object is \a value now. */
void tellValue(QObject *object, int value);
/** Announces that a switch, \a object, is on or off now. */
void tellChecked(QObject *object);

/** Says \a text on behalf of \a object. */
void announce(QObject *object, const QString &text, Politeness politeness);

/** Announces \a event of a row of \a list. */
void tellRow(QObject *list, int row, QAccessible::Event event);

/** Announces a page or question that has appeared: the text of a question at once, unless it has the focus.
 */
void introduce(QGraphicsWidget *sceneWindow);

/** Returns whether \a widget is in the tree itself. */
bool speaks(const QGraphicsWidget *widget);

/** Returns what is in the tree right below \a item, in the order of reading. */
QList<QGraphicsWidget *> contentsOf(const QGraphicsItem *item);

/** Returns all texts below \a item, in the order of reading. */
QStringList textsIn(const QGraphicsItem *item);

/** Returns the widget that shows the scene of \a item, or null. */
QWidget *viewOf(const QGraphicsItem *item);

/** Returns where \a area of \a item stands on the screen. */
QRect onScreen(const QGraphicsItem *item, const QRectF &area);

/** Returns whether a part of \a area of \a item is not scrolled away. */
bool isInSight(const QGraphicsItem *item, const QRectF &area);

} // namespace MAccessible

#endif
