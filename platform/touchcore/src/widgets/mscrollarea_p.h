// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCROLLAREA_P_H
#define MSCROLLAREA_P_H

#include <MWidget>

class MWidgetController;

/** Shows a part of contents that are higher than itself; a finger, the wheel and keys move them. */
class MScrollArea : public MWidget
{
    Q_OBJECT
public:
    /** The part of the height that a page key moves, so that it does not jump over lines. */
    static constexpr qreal pageStep = 0.8;

    explicit MScrollArea(QGraphicsWidget *content, QGraphicsItem *parent = nullptr);
    ~MScrollArea() override;

    QGraphicsWidget *content() const { return inside; }

    /** Returns the height that the contents would like to have in \a width. */
    qreal contentHeight(qreal width) const;

    /** Returns how far the contents are moved up. */
    qreal position() const { return offset; }
    /**
     * Moves the contents so far up, within their height, and ends a movement that goes on. Returns whether
     * that changed anything.
     */
    bool scrollTo(qreal position);
    /** Moves the contents so that what lies between \a top and \a bottom of them is seen. */
    void reveal(qreal top, qreal bottom);
    /** Moves the contents so that \a item, which is one of them, is seen. */
    void reveal(const QGraphicsItem *item);
    /** Moves the contents of every area around \a item so that it is seen, with the row that it stands in. */
    static void revealInAll(const QGraphicsItem *item);

Q_SIGNALS:
    /** The contents want another size. */
    void contentChanged();
    /** A finger, its flick or the wheel has moved the contents. */
    void movedByUser();

protected:
    /** Returns the height of the contents. */
    virtual qreal contentLength() const;
    /** Gives the contents their size. */
    virtual void resizeContent();
    /** Moves the contents \a up from where they begin. */
    virtual void moveContent(qreal up);

    void layOut();

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool sceneEventFilter(QGraphicsItem *watched, QEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;

private:
    void place(qreal overshoot = 0);
    qreal range() const;
    bool setOffset(qreal position);
    bool isMoving() const;
    bool scrollsInsteadOf(const QGraphicsItem *item) const;
    bool endsMovement(const QGraphicsItem *watched, QGraphicsSceneMouseEvent *event);
    bool takeOver();
    void press(QGraphicsSceneMouseEvent *event);
    bool drag(QGraphicsSceneMouseEvent *event);
    void release(QGraphicsSceneMouseEvent *event);
    void endPress();
    void stop();

    QGraphicsWidget *const inside;
    MWidgetController *const indicator;
    qreal offset = 0;
    bool takingOver = false; ///< The mouse, from what was touched
};

#endif
