// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MPAINT_P_H
#define MPAINT_P_H

class QColor;
class QPainter;
class QRectF;
struct MStyle;

/** Shapes that several widgets draw. */
namespace MPaint {

/** Fills \a rect with \a background and draws the border, both with the corners of \a style. */
void panel(QPainter *painter, const QRectF &rect, const MStyle &style, const QColor &background);
/** The same with a \a border that is not the one of \a style. */
void panel(QPainter *painter, const QRectF &rect, const MStyle &style, const QColor &background,
           const QColor &border);

/** Returns how far the focus ring reaches beyond what it goes round. */
qreal focusReach(const MStyle &style);
/** Draws the ring that marks what has the keyboard focus round \a rect. */
void focusRing(QPainter *painter, const QRectF &rect, const MStyle &style);

} // namespace MPaint

#endif
