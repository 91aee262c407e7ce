// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mscenemanager.h"

#include <algorithm>
#include <utility>

#include <QMetaObject>
#include <QPainter>

#include <MDialog>
#include <MSceneWindow>
#include <MWidget>

#include "accessibility/maccessible_p.h"
#include "scene/mdialog_p.h"
#include "scene/mscenehost_p.h"
#include "scene/mscenemanager_p.h"
#include "theme/mtheme_p.h"
#include "widgets/mscrollarea_p.h"

namespace {

void collectFocusable(QGraphicsItem *item, QList<QGraphicsWidget *> *found)
{
    if (!item->isVisible() || !item->isEnabled())
        return;
    if (item->isWidget()) {
        auto *widget = static_cast<QGraphicsWidget *>(item);
        if (widget->focusPolicy() & Qt::TabFocus)
            found->append(widget);
    }
    const QList<QGraphicsItem *> children = item->childItems();
    for (QGraphicsItem *child : children)
        collectFocusable(child, found);
}

QSize turnSize(const QSize &size, M::OrientationAngle angle)
{
    return angle == M::Angle90 || angle == M::Angle270 ? size.transposed() : size;
}

} // namespace

bool MScene::event(QEvent *event)
{
    MInputGuard::note(event);
    // The finger that drags came when input counted.
    if (manager->dismissal.isDragging() && manager->dismissal.takes(event))
        return true;
    MInputGuard *guard = manager->guard();
    if (!guard || guard->takes(event))
        return manager->dismissal.takes(event) || QGraphicsScene::event(event);
    manager->dismissal.cancel();
    if (event->type() == QEvent::GraphicsSceneMouseRelease) {
        // Scrolling decides nothing, and goes on by itself.
        if (dynamic_cast<MScrollArea *>(mouseGrabberItem()))
            return QGraphicsScene::event(event);
        endPresses();
    }
    // A user who goes on tapping or typing has not yet seen what appeared below the finger.
    guard->restart();
    event->accept();
    return true;
}

void MScene::endPresses()
{
    while (QGraphicsItem *pressed = mouseGrabberItem())
        pressed->ungrabMouse();
}

void MScene::drawForeground(QPainter *painter, const QRectF &rect)
{
    QGraphicsScene::drawForeground(painter, rect);
    // A picture of the scene is not what the user sees.
    if (painter->device()->devType() != QInternal::Widget)
        return;
    manager->slide.drawn();
    MInputGuard *guard = manager->guard();
    // Buttons that move have not been seen where they are.
    if (guard && !manager->slide.isMoving() && !manager->dismissal.isDragging())
        guard->drawn();
}

bool MScene::focusNextPrevChild(bool next)
{
    const QList<QGraphicsWidget *> chain = manager->focusChain();
    if (chain.isEmpty())
        return false;
    const auto current = std::find(chain.cbegin(), chain.cend(), focusItem());
    const int step = next ? 1 : -1;
    // Without one of them in focus, Tab starts at the first and Backtab at the last.
    int start = next ? -1 : 0;
    if (current != chain.cend())
        start = int(current - chain.cbegin());
    const int to = (start + step + int(chain.size())) % int(chain.size());
    chain.at(to)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

QList<QGraphicsWidget *> MSceneManagerPrivate::focusChain() const
{
    QList<QGraphicsWidget *> chain;
    if (front()) {
        collectFocusable(front(), &chain);
        return chain;
    }
    const QList<QGraphicsItem *> all = scene.items(Qt::AscendingOrder);
    for (QGraphicsItem *item : all)
        if (!item->parentItem())
            collectFocusable(item, &chain);
    return chain;
}

MInputGuard *MSceneManagerPrivate::guard() const
{
    const auto *dialog = qobject_cast<MDialog *>(front());
    return dialog ? &MDialogPrivate::of(dialog)->guard : nullptr;
}

void MSceneManagerPrivate::uncover()
{
    if (MInputGuard *covered = guard())
        covered->restart();
}

void MSceneManagerPrivate::moveFocus(const QPointF &direction)
{
    const auto middle = [this](const QGraphicsItem *item) {
        return root->mapFromScene(item->sceneBoundingRect().center());
    };
    const QList<QGraphicsWidget *> chain = focusChain();
    const QGraphicsItem *current = scene.focusItem();
    if (std::find(chain.cbegin(), chain.cend(), current) == chain.cend()) {
        scene.focusNextPrevChild(true);
        return;
    }
    QGraphicsWidget *nearest = nullptr;
    qreal shortest = 0;
    for (QGraphicsWidget *widget : chain) {
        const QPointF way = middle(widget) - middle(current);
        const qreal ahead = QPointF::dotProduct(way, direction);
        // A widget that lies aside counts as farther than it is: a key goes along its row or column first.
        const qreal distance = 2 * way.manhattanLength() - ahead;
        if (ahead > 0 && (!nearest || distance < shortest)) {
            nearest = widget;
            shortest = distance;
        }
    }
    if (nearest)
        nearest->setFocus(Qt::TabFocusReason);
}

MSceneManagerPrivate::MSceneManagerPrivate(MSceneManager *manager)
    : q(manager)
    , scene(this)
    , root(new MWidget)
{
    scene.addItem(root);
    // In front of what a program puts into the scene itself.
    root->setZValue(1);
    focusChanges = QObject::connect(
        &scene, &QGraphicsScene::focusItemChanged, &scene,
        [this](QGraphicsItem *now, QGraphicsItem *, Qt::FocusReason reason) { followFocus(now, reason); });
    place();
}

MSceneManagerPrivate::~MSceneManagerPrivate()
{
    // The scene deletes its items after everything else here has gone.
    QObject::disconnect(focusChanges);
}

MSceneWindow *MSceneManagerPrivate::sceneWindowOf(const QGraphicsItem *item) const
{
    for (MSceneWindow *sceneWindow : sceneWindows)
        if (sceneWindow == item || sceneWindow->isAncestorOf(item))
            return sceneWindow;
    return nullptr;
}

void MSceneManagerPrivate::followFocus(QGraphicsItem *now, Qt::FocusReason reason)
{
    if (restoring)
        return;
    if (!now) {
        // While the window is inactive nothing has the focus. Otherwise its control is about to be disabled
        // or hidden, and keys go to what holds it.
        if (scene.hasFocus()) {
            lastFocus.remove(front());
            restoreFocus();
        }
        return;
    }
    MSceneWindow *owner = sceneWindowOf(now);
    lastFocus.insert(owner, now->toGraphicsObject());
    if (owner != front())
        restoreFocus();
    else if (reason != Qt::MouseFocusReason)
        MScrollArea::revealInAll(now);
}

// Lets the control of the front scene window that had the focus last have it again.
void MSceneManagerPrivate::restoreFocus()
{
    const QGraphicsObject *last = lastFocus.value(front());
    QGraphicsObject *next = front();
    if (last && last->isVisible() && last->isEnabled() && sceneWindowOf(last) == front())
        next = lastFocus.value(front());
    restoring = true;
    if (next)
        next->setFocus(Qt::ActiveWindowFocusReason);
    else
        scene.setFocusItem(nullptr);
    restoring = false;
}

void MSceneManagerPrivate::endPressesBelow(const MSceneWindow *sceneWindow)
{
    for (QGraphicsItem *pressed = scene.mouseGrabberItem(); pressed; pressed = scene.mouseGrabberItem()) {
        if (pressed == sceneWindow || sceneWindow->isAncestorOf(pressed))
            return;
        pressed->ungrabMouse();
    }
}

void MSceneManagerPrivate::shadeOnce()
{
    for (MSceneWindow *sceneWindow : std::as_const(sceneWindows))
        if (qobject_cast<MDialog *>(sceneWindow))
            sceneWindow->setFlag(QGraphicsItem::ItemHasNoContents, sceneWindow != front());
}

void MSceneManagerPrivate::place()
{
    const QSize whole = windowSize();
    const QSize size = turnedSize();
    QPointF corner;
    if (angle == M::Angle90 || angle == M::Angle180)
        corner.setX(whole.width());
    if (angle == M::Angle180 || angle == M::Angle270)
        corner.setY(whole.height());
    root->setRotation(angle);
    root->setGeometry(QRectF(corner, size));
    scene.setSceneRect(QRectF(QPointF(), whole));
    for (MSceneWindow *sceneWindow : std::as_const(sceneWindows))
        sceneWindow->setGeometry(QRectF(QPointF(), size));
}

QSize MSceneManagerPrivate::defaultSize()
{
    const MStyle &style = MThemePrivate::ownStyle("MWindow");
    return QSizeF(style.width, style.height).toSize();
}

QSize MSceneManagerPrivate::windowSize() const
{
    return host ? host->sceneSize() : defaultSize();
}

QSize MSceneManagerPrivate::turnedSize() const
{
    return turnSize(windowSize(), angle);
}

M::Orientation MSceneManagerPrivate::orientationAt(M::OrientationAngle at) const
{
    const QSize size = turnSize(windowSize(), at);
    return size.width() > size.height() ? M::Landscape : M::Portrait;
}

void MSceneManagerPrivate::add(MSceneWindow *sceneWindow)
{
    endPressesBelow(sceneWindow);
    dismissal.cancel();
    const bool isNew = !sceneWindows.removeOne(sceneWindow);
    sceneWindows.append(sceneWindow);
    sceneWindow->setParentItem(root);
    // Qt follows the direction of a parent only when that changes.
    if (!sceneWindow->testAttribute(Qt::WA_SetLayoutDirection))
        sceneWindow->unsetLayoutDirection();
    for (int i = 0; i < sceneWindows.size(); ++i)
        sceneWindows.at(i)->setZValue(i);
    shadeOnce();
    place();
    if (isNew)
        slide.slideIn(sceneWindow);
    sceneWindow->show();
    sceneWindow->setFocus(Qt::ActiveWindowFocusReason);
    MAccessible::introduce(sceneWindow);
}

void MSceneManagerPrivate::remove(MSceneWindow *sceneWindow)
{
    const bool wasFront = front() == sceneWindow;
    if (!sceneWindows.removeOne(sceneWindow))
        return;
    lastFocus.remove(sceneWindow);
    dismissal.cancel();
    slide.forget(sceneWindow);
    // Qt would look for another control that can have the focus.
    restoring = true;
    sceneWindow->hide();
    MAccessible::tell(sceneWindow, QAccessible::ObjectHide);
    scene.removeItem(sceneWindow);
    restoring = false;
    if (wasFront) {
        restoreFocus();
        uncover();
        shadeOnce();
    }
    if (host && !slide.isLeaving())
        host->sceneWindowLeft();
}

void MSceneManagerPrivate::dismissAll()
{
    const QList<MSceneWindow *> present = sceneWindows;
    QList<QPointer<MSceneWindow>> newestFirst(present.crbegin(), present.crend());
    for (const QPointer<MSceneWindow> &sceneWindow : newestFirst)
        if (sceneWindow && sceneWindows.contains(sceneWindow))
            sceneWindow->dismiss();
}

MSceneManager::MSceneManager(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<MSceneManagerPrivate>(this))
{}

MSceneManager::~MSceneManager()
{
    d->dismissAll();
    // A program's own dialog may refuse to be dismissed, but not to leave a scene that ends.
    while (MSceneWindow *sceneWindow = d->front())
        sceneWindow->disappear();
}

QGraphicsScene *MSceneManager::scene() const
{
    return &d->scene;
}

M::Orientation MSceneManager::orientation() const
{
    return d->orientationAt(d->angle);
}

M::OrientationAngle MSceneManager::orientationAngle() const
{
    return d->angle;
}

QSize MSceneManager::visibleSceneSize() const
{
    return d->turnedSize();
}

void MSceneManager::setOrientationAngle(M::OrientationAngle angle)
{
    if (angle == d->angle || angle % M::Angle90 != 0 || angle < M::Angle0 || angle > M::Angle270)
        return;
    const QPointer<MSceneManager> self(this);
    Q_EMIT orientationAboutToChange(d->orientationAt(angle));
    if (!self)
        return;
    d->angle = angle;
    d->place();
    Q_EMIT orientationChangeFinished(orientation());
}
