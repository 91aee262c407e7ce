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
    explicit MScrollArea(QGraphicsWidget *content, QGraphicsItem *parent = nullptr);
    ~MScrollArea() override;

    QGraphicsWidget *content() const { return inside; }

    /** Returns the height that the contents would like to have in \a width. */
    qreal contentHeight(qreal width) const;

    /** Returns how far the contents are moved up. */
    qreal position() const { return offset; }
    /** Moves the contents so far up, within their height. Returns whether that changed anything. */
    bool scrollTo(qreal position);
    /** Moves the contents so that what lies between \a top and \a bottom of them is seen. */
    void reveal(qreal top, qreal bottom);

Q_SIGNALS:
    /** The contents want another size. */
    void contentChanged();
    /** Another part of the contents is seen. */
    void scrolled();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool sceneEventFilter(QGraphicsItem *watched, QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;

private:
    void layOut();
    void place(qreal overshoot = 0);
    qreal range() const;
    bool scrollsInsteadOf(const QGraphicsItem *item) const;
    void press(QGraphicsSceneMouseEvent *event);
    bool drag(QGraphicsSceneMouseEvent *event);
    void release(QGraphicsSceneMouseEvent *event);

    QGraphicsWidget *const inside;
    MWidgetController *const indicator;
    qreal offset = 0;
};

#endif
