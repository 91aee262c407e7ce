// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mwidgetcontroller.h"

#include <QFocusEvent>
#include <QPainter>

#include <MTheme>

#include "accessibility/maccessible_p.h"
#include "theme/mpaint_p.h"
#include "theme/mtheme_p.h"
#include "widgets/mwidgetcontroller_p.h"

namespace {

const MStyle *styleOfClass(const QMetaObject *type)
{
    for (; type; type = type->superClass())
        if (const MStyle *style = MThemePrivate::instance()->style(QString::fromLatin1(type->className())))
            return style;
    static const MStyle plain;
    return &plain;
}

} // namespace

void MWidgetControllerPrivate::showFocus(MWidgetController *widget)
{
    byKeyboard = true;
    focusShown = true;
    widget->update();
}

MWidgetController::MWidgetController(QGraphicsItem *parent)
    : MWidget(parent)
    , d(std::make_unique<MWidgetControllerPrivate>())
{
    connect(MTheme::instance(), &MTheme::changed, this, [this] { applyStyle(); });
    applyStyle();
}

MWidgetController::~MWidgetController() = default;

QString MWidgetController::styleName() const
{
    return d->styleName;
}

void MWidgetController::setStyleName(const QString &name)
{
    d->styleName = name;
    applyStyle();
}

QString MWidgetController::accessibleName() const
{
    return d->accessibleName;
}

void MWidgetController::setAccessibleName(const QString &name)
{
    if (d->accessibleName == name)
        return;
    d->accessibleName = name;
    MAccessible::tell(this, QAccessible::NameChanged);
}

const MStyle &MWidgetController::style() const
{
    return *d->style;
}

void MWidgetController::applyStyle()
{
    d->style = d->styleName.isEmpty() ? nullptr : MThemePrivate::instance()->style(d->styleName);
    if (!d->style) {
        if (!d->styleName.isEmpty())
            MThemePrivate::instance()->warnAboutStyle(d->styleName);
        d->style = styleOfClass(metaObject());
    }
    QMarginsF margins = d->style->margins;
    if (layoutDirection() == Qt::RightToLeft)
        margins = QMarginsF(margins.right(), margins.top(), margins.left(), margins.bottom());
    setContentsMargins(margins);
    updateGeometry();
    update();
    styleChanged();
}

void MWidgetController::styleChanged() {}

bool MWidgetController::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutDirectionChange)
        applyStyle();
    return MWidget::event(event);
}

bool MWidgetController::showsFocus() const
{
    return d->focusShown;
}

void MWidgetController::focusInEvent(QFocusEvent *event)
{
    MWidget::focusInEvent(event);
    MAccessible::tell(this, QAccessible::Focus);
    const Qt::FocusReason reason = event->reason();
    // A focus that is given back is the one that it was.
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        d->byKeyboard = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    d->focusShown = d->byKeyboard;
    update();
}

void MWidgetController::focusOutEvent(QFocusEvent *event)
{
    MWidget::focusOutEvent(event);
    d->focusShown = false;
    update();
}

void MWidgetController::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    MPaint::panel(painter, rect(), style(), style().background);
}

QSizeF MWidgetController::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    const MStyle &look = style();
    QSizeF given = constraint;
    if (look.width >= 0)
        given.setWidth(look.width);
    QSizeF size = MWidget::sizeHint(which, given);
    if (which == Qt::MaximumSize && look.maximumWidth >= 0)
        size.setWidth(look.maximumWidth);
    if (which == Qt::MinimumSize || which == Qt::PreferredSize)
        size = size.expandedTo(QSizeF(look.minimumWidth, look.minimumHeight));
    if (look.width >= 0)
        size.setWidth(look.width);
    if (look.height >= 0)
        size.setHeight(look.height);
    return size;
}
