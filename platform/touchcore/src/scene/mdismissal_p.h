// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MDISMISSAL_P_H
#define MDISMISSAL_P_H

#include <QPointer>
#include <QPointF>

class MSceneManagerPrivate;
class MSceneWindow;
class QEvent;
class QGraphicsSceneMouseEvent;

/**
 * Recognizes the gestures that dismiss the front scene window, if it is draggable: a drag downwards, and a
 * tap beside its card.
 */
class MDismissal
{
public:
    explicit MDismissal(MSceneManagerPrivate *manager) : manager(manager) {}

    /** Returns whether a finger drags the scene window. */
    bool isDragging() const { return dragging; }
    /** Learns about \a event of the scene, which counts; returns whether it is for nobody else. */
    bool takes(const QEvent *event);
    /** Forgets what the finger has done so far. */
    void cancel();

private:
    void press(const QGraphicsSceneMouseEvent *event);
    bool move(const QGraphicsSceneMouseEvent *event);
    bool release(const QGraphicsSceneMouseEvent *event);
    QPointF wayOf(const QGraphicsSceneMouseEvent *event) const;
    bool mayDrag(const QPointF &way) const;
    bool isFar(const QGraphicsSceneMouseEvent *event) const;
    void dismiss();

    MSceneManagerPrivate *const manager;
    QPointer<MSceneWindow> touched; ///< Null when the finger can no longer dismiss it
    QPointF start;                  ///< In the scene
    quint64 startTime = 0;          ///< In milliseconds, as the events have them
    bool beside = false;
    bool dragging = false;
};

#endif
