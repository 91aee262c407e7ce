// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGETCONTROLLER_H
#define MWIDGETCONTROLLER_H

#include <memory>

#include <MWidget>

struct MStyle;
class MWidgetControllerPrivate;

/**
 * A widget that looks as its style in the theme says.
 *
 * Without a style name it takes the style that carries the name of its class, or of the nearest base class
 * that has one. The style gives the background, the margins around the contents and the size, so that the
 * class itself serves as a panel (with a layout) or as a spacer (without).
 */
class QUENZOTOUCHCORE_EXPORT MWidgetController : public MWidget
{
    Q_OBJECT
    Q_PROPERTY(QString styleName READ styleName WRITE setStyleName)
    Q_PROPERTY(QString accessibleName READ accessibleName WRITE setAccessibleName)
public:
    /** Makes a widget inside \a parent, which then owns it. */
    explicit MWidgetController(QGraphicsItem *parent = nullptr);
    ~MWidgetController() override;

    /** Returns the name set with setStyleName(), empty by default. */
    QString styleName() const;

    /**
     * Takes the look that the theme keeps under \a name. A name that the theme does not know is logged once
     * and shown in the look of the class.
     */
    void setStyleName(const QString &name);

    /** Returns the name set with setAccessibleName(), empty by default. */
    QString accessibleName() const;

    /**
     * Names the widget for users who do not see it, where it has no text of its own: a switch beside its
     * label, a picture that says something. A picture or panel without a name is decoration to them.
     */
    void setAccessibleName(const QString &name);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

protected:
    /** Returns the style in use. */
    const MStyle &style() const;

    /**
     * Looks the style up again. A constructor calls it last, so that its class's own style applies.
     */
    void applyStyle();

    /** Is called after style() has become another one. Does nothing here. */
    virtual void styleChanged();

    /** Returns whether the widget has the focus and the user moves it with the keyboard. */
    bool showsFocus() const;

    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    friend class MWidgetControllerPrivate;
    const std::unique_ptr<MWidgetControllerPrivate> d;
};

#endif
