// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MBUTTON_P_H
#define MBUTTON_P_H

#include <optional>

#include <QPointF>
#include <QString>

#include <MButton>

#include "widgets/mtextblockcache_p.h"

class MButtonPrivate
{
public:
    explicit MButtonPrivate(MButton *button) : q(button) {}

    static MButtonPrivate *of(MButton *button) { return button->d.get(); }

    void setDown(bool isDown);
    /** Lets the button look as if it were disabled. */
    void setWaiting(bool isWaiting);
    bool looksEnabled() const;
    QColor backgroundColor(const MStyle &style) const;
    QColor foregroundColor(const MStyle &style) const;
    /** Returns what the button is painted as: its rectangle, or a switch's track. */
    QRectF shape() const;
    /** Returns whether a finger that went down on a switch has dragged its knob by coming to \a place. */
    bool isDragged(const QPointF &place) const;
    /** Returns whether a finger at \a place still presses the button. */
    bool holds(const QPointF &place) const;
    /** Returns whether a finger at \a place has dragged the knob to the side where it is anyway. */
    bool isDraggedWhereItIs(const QPointF &place) const;
    void paintPush(QPainter *painter, const MStyle &style);
    void paintSwitch(QPainter *painter, const MStyle &style);
    /** Returns the longest variant of the text that fits into one line of \a width, or the shortest when none
     * does. */
    QString fittingVariant(qreal width, const MStyle &style) const;
    const MTextBlock &block(qreal width, const MStyle &style);

    MButton *const q;
    QString text;
    MButton::ViewType type = MButton::pushType;
    bool checkable = false;
    bool checked = false;
    bool down = false;
    bool waiting = false;
    qreal reach = 0; ///< Of the focus ring, beyond the button
    QPointF pressedAt;
    QString pushStyleName; ///< While it is a switch
    MTextBlockCache blocks;
};

#endif
