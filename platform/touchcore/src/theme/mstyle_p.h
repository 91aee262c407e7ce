// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSTYLE_P_H
#define MSTYLE_P_H

#include <QColor>
#include <QFont>
#include <QMarginsF>
#include <QString>

/**
 * One style of the theme file. Sizes are in pixels at 1x; -1 means that the widget decides.
 * Colors are those of the variant in use.
 */
struct MStyle
{
    QFont font;
    qreal fontSize = 18;
    qreal fontWeight = QFont::Normal;
    qreal lineHeight = 1; ///< Factor on the font's own
    bool wordWrap = false;
    bool elide = false;

    QMarginsF margins;
    qreal spacing = 0;
    qreal width = -1;
    qreal height = -1;
    qreal minimumWidth = 0;
    qreal minimumHeight = 0;
    qreal maximumWidth = -1;
    bool bottom = false; ///< Stands at the bottom edge rather than in the middle

    qreal radius = 0;
    qreal borderWidth = 0;
    qreal strokeWidth = 0; ///< Of lines that the widget draws itself
    qreal glyph = 0;       ///< Size of a sign or knob that the widget draws itself
    qreal focusWidth = 0;
    qreal focusGap = 0; ///< Between what has the focus and the ring round it
    qreal duration = 0; ///< Of one turn or move, in milliseconds

    QColor color = Qt::black;
    QColor background = Qt::transparent;
    QColor border = Qt::transparent;
    QColor focus = Qt::transparent;
    QColor disabledColor = Qt::transparent;
    QColor disabledBackground = Qt::transparent;
    QColor pressedBackground = Qt::transparent;
    QColor checkedColor = Qt::transparent;
    QColor checkedBackground = Qt::transparent;
};

#endif
