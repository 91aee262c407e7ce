// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGraphicsWidget>

#include <MButton>
#include <MDialog>
#include <MImageWidget>
#include <MLabel>
#include <MList>
#include <MProgressIndicator>
#include <MSceneWindow>
#include <MWindow>

#include "accessibility/maccessible_p.h"
#include "accessibility/maccessiblebutton_p.h"
#include "accessibility/maccessibledialog_p.h"
#include "accessibility/maccessiblelabel_p.h"
#include "accessibility/maccessiblelist_p.h"
#include "accessibility/maccessibleprogress_p.h"
#include "accessibility/maccessiblewindow_p.h"

namespace {

// The newest class first: Qt asks for each class of an object, and takes the first answer.
QAccessibleInterface *interfaceFor(const QString &, QObject *object)
{
    if (auto *window = qobject_cast<MWindow *>(object))
        return new MAccessibleWindow(window);
    if (auto *button = qobject_cast<MButton *>(object))
        return new MAccessibleButton(button);
    if (auto *label = qobject_cast<MLabel *>(object))
        return new MAccessibleLabel(label);
    if (auto *progress = qobject_cast<MProgressIndicator *>(object))
        return new MAccessibleProgress(progress);
    if (auto *list = qobject_cast<MList *>(object))
        return new MAccessibleList(list);
    if (auto *dialog = qobject_cast<MDialog *>(object))
        return new MAccessibleDialog(dialog);
    if (auto *image = qobject_cast<MImageWidget *>(object))
        return new MAccessibleWidget(image, QAccessible::Graphic);
    if (auto *page = qobject_cast<MSceneWindow *>(object))
        return new MAccessibleWidget(page, QAccessible::Pane);
    if (auto *widget = qobject_cast<MWidgetController *>(object))
        return new MAccessibleWidget(widget, QAccessible::Grouping);
    return nullptr;
}

} // namespace

void MAccessible::install()
{
    // Qt knows a factory that is there already.
    QAccessible::installFactory(interfaceFor);
}

void MAccessible::tell(QObject *object, QAccessible::Event event)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent news(object, event);
    QAccessible::updateAccessibility(&news);
}

void MAccessible::tellValue(QObject *object, int value)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent news(object, value);
    QAccessible::updateAccessibility(&news);
}

void MAccessible::tellChecked(QObject *object)
{
    if (!QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent news(object, changed);
    QAccessible::updateAccessibility(&news);
}

void MAccessible::tellRow(QObject *list, int row, QAccessible::Event event)
{
    QAccessibleInterface *told =
        QAccessible::isActive() ? QAccessible::queryAccessibleInterface(list) : nullptr;
    QAccessibleInterface *rowOfIt = told ? told->child(row) : nullptr;
    if (!rowOfIt)
        return;
    QAccessibleEvent news(rowOfIt, event);
    QAccessible::updateAccessibility(&news);
}

void MAccessible::introduce(QGraphicsWidget *sceneWindow)
{
    tell(sceneWindow, QAccessible::ObjectCreated);
    tell(sceneWindow, QAccessible::ObjectShow);
    QWidget *view = viewOf(sceneWindow);
    // A screen reader speaks name and description when it follows the focus.
    const auto *dialog = qobject_cast<MDialog *>(sceneWindow);
    if (!QAccessible::isActive() || !view || sceneWindow->hasFocus() || !dialog)
        return;
    const QAccessibleInterface *question = QAccessible::queryAccessibleInterface(sceneWindow);
    const QStringList words{question->text(QAccessible::Name), question->text(QAccessible::Description)};
    const bool asks = dialog->buttons().size() > 1 && !dialog->isNotice();
    announce(view, words.join(QLatin1Char('\n')).trimmed(), asks ? Assertive : Polite);
}

bool MAccessible::speaks(const QGraphicsWidget *widget)
{
    if (const auto *label = qobject_cast<const MLabel *>(widget))
        return !label->text().isEmpty();
    if (qobject_cast<const MButton *>(widget) || qobject_cast<const MProgressIndicator *>(widget) ||
        qobject_cast<const MList *>(widget) || qobject_cast<const MSceneWindow *>(widget))
        return true;
    // A picture or a panel without a name is decoration.
    const auto *controller = qobject_cast<const MWidgetController *>(widget);
    return controller && !controller->accessibleName().isEmpty();
}

QList<QGraphicsWidget *> MAccessible::contentsOf(const QGraphicsItem *item)
{
    QList<QGraphicsWidget *> found;
    const QList<QGraphicsItem *> children = item->childItems();
    for (QGraphicsItem *child : children) {
        if (!child->isVisible())
            continue;
        auto *widget = child->isWidget() ? static_cast<QGraphicsWidget *>(child) : nullptr;
        if (widget && speaks(widget))
            found.append(widget);
        else
            found.append(contentsOf(child));
    }
    return found;
}

QStringList MAccessible::textsIn(const QGraphicsItem *item)
{
    QStringList texts;
    const QList<QGraphicsWidget *> contents = contentsOf(item);
    for (QGraphicsWidget *widget : contents)
        if (auto *label = qobject_cast<MLabel *>(widget))
            texts.append(MAccessibleLabel::spoken(label));
    return texts;
}

QWidget *MAccessible::viewOf(const QGraphicsItem *item)
{
    const QGraphicsScene *scene = item->scene();
    const QList<QGraphicsView *> views = scene ? scene->views() : QList<QGraphicsView *>();
    return views.value(0);
}

QRect MAccessible::onScreen(const QGraphicsItem *item, const QRectF &area)
{
    const auto *view = qobject_cast<const QGraphicsView *>(viewOf(item));
    if (!view)
        return {};
    const QRect inView = view->viewportTransform().mapRect(item->mapRectToScene(area)).toRect();
    return {view->viewport()->mapToGlobal(inView.topLeft()), inView.size()};
}

bool MAccessible::isInSight(const QGraphicsItem *item, const QRectF &area)
{
    if (!item->scene())
        return false;
    QRectF seen = item->mapRectToScene(area);
    for (const QGraphicsItem *each = item->parentItem(); each; each = each->parentItem())
        if (each->flags().testFlag(QGraphicsItem::ItemClipsChildrenToShape))
            seen &= each->sceneBoundingRect();
    return !(seen & item->scene()->sceneRect()).isEmpty();
}
