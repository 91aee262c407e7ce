// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MBUTTON_H
#define MBUTTON_H

#include <memory>

#include <MWidgetController>

class MButtonPrivate;

/**
 * A button that is pressed with a finger, or with Enter or Space while it has the focus.
 *
 * A text that holds variants of different length, separated by U+009C, shows the longest one that fits into
 * one line.
 */
class QUENZOTOUCHCORE_EXPORT MButton : public MWidgetController
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(ViewType viewType READ viewType WRITE setViewType)
    Q_PROPERTY(bool checkable READ isCheckable WRITE setCheckable)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked NOTIFY toggled)
public:
    /** How a button looks. */
    enum ViewType {
        pushType,   ///< A filled shape with the text in it
        switchType, ///< An on/off switch
    };
    Q_ENUM(ViewType)

    /** Makes a button inside \a parent, which then owns it. */
    explicit MButton(QGraphicsItem *parent = nullptr);
    /** Makes a button with \a text inside \a parent, which then owns it. */
    explicit MButton(const QString &text, QGraphicsItem *parent = nullptr);
    ~MButton() override;

    /** Returns the text on the button. */
    QString text() const;
    /** Shows \a text, as plain text. A switch shows none. */
    void setText(const QString &text);

    /** Returns how the button looks, pushType by default. */
    ViewType viewType() const;
    /**
     * Sets how the button looks. A switch is made checkable as well and takes its own style; a button that
     * was a switch takes its earlier one again.
     */
    void setViewType(ViewType type);

    /** Returns whether a press changes checked, false by default. */
    bool isCheckable() const;
    /** Makes every press change checked. A button that stops being checkable is unchecked. */
    void setCheckable(bool checkable);

    /** Returns whether the button is on. */
    bool isChecked() const;
    /** Switches the button on or off. Does nothing when it is not checkable. */
    void setChecked(bool checked);

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

public Q_SLOTS:
    /** Does what a press does: changes checked when checkable, then emits clicked(). Does nothing while
     * disabled. */
    void click();

Q_SIGNALS:
    /** The button was pressed and let go; \a checked is its state after that. A slot may delete the button.
     */
    void clicked(bool checked = false);
    /** The button is on or off now. A slot may delete the button. */
    void toggled(bool checked);

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void styleChanged() override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    friend class MButtonPrivate;
    const std::unique_ptr<MButtonPrivate> d;
};

#endif
