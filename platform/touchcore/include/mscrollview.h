// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCROLLVIEW_H
#define MSCROLLVIEW_H

#include <memory>

#include <MWidget>

class MScrollViewPrivate;

/**
 * Shows a widget that may be higher than the room for it.
 *
 * The view wants the size of its widget, but takes any height. Where the widget does not fit, a finger, the
 * wheel and the page keys move it up and down, and what gets the keyboard focus comes into sight. The width
 * never scrolls.
 */
class QUENZOTOUCHCORE_EXPORT MScrollView : public MWidget
{
    Q_OBJECT
public:
    /** Makes an empty view inside \a parent, which then owns it. */
    explicit MScrollView(QGraphicsItem *parent = nullptr);
    ~MScrollView() override;

    /** Returns the widget, or null when there is none. */
    QGraphicsWidget *widget() const;
    /** Shows \a widget from its top; null shows nothing. The view owns it and deletes the earlier one. */
    void setWidget(QGraphicsWidget *widget);

protected:
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;

private:
    const std::unique_ptr<MScrollViewPrivate> d;
};

#endif
