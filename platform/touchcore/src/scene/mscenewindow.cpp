// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mscenewindow.h"

#include <algorithm>
#include <iterator>

#include <QEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>

#include <MWindow>

#include "scene/mscenemanager_p.h"
#include "scene/mscenewindow_p.h"
#include "scene/mwindow_p.h"

namespace {

struct Way
{
    Qt::Key key;
    QPointF direction;
};

constexpr Way ways[] = {
    {Qt::Key_Down, {0, 1}},
    {Qt::Key_Up, {0, -1}},
    {Qt::Key_Right, {1, 0}},
    {Qt::Key_Left, {-1, 0}},
};

} // namespace

void MSceneWindowPrivate::appearIn(MSceneManager *newManager, MSceneWindow::DeletionPolicy newPolicy)
{
    if (manager && manager != newManager)
        MSceneManagerPrivate::of(manager)->remove(q);
    keep();
    policy = newPolicy;
    q->aboutToAppear();
    manager = newManager;
    MSceneManagerPrivate::of(manager)->add(q);
}

QGraphicsWidget *MSceneWindowPrivate::cardOf(MSceneWindow *sceneWindow)
{
    QGraphicsWidget *card = sceneWindow->d->card;
    return card ? card : sceneWindow;
}

MSceneWindowPrivate::~MSceneWindowPrivate()
{
    keep();
}

// Qt takes no deletion back, so it is asked for another object.
void MSceneWindowPrivate::deleteLater()
{
    deletion = new QObject;
    QObject::connect(deletion, &QObject::destroyed, q, [this] { delete q; });
    deletion->deleteLater();
}

void MSceneWindowPrivate::keep()
{
    if (!deletion)
        return;
    deletion->disconnect(q);
    delete deletion;
}

MSceneWindow::MSceneWindow() : d(std::make_unique<MSceneWindowPrivate>(this))
{
    setFocusPolicy(Qt::ClickFocus);
    applyStyle();
}

MSceneWindow::~MSceneWindow()
{
    if (d->manager)
        MSceneManagerPrivate::of(d->manager)->remove(this);
}

void MSceneWindow::appear(DeletionPolicy policy)
{
    const bool stays = d->manager && MSceneManagerPrivate::of(d->manager)->host;
    d->appearIn(stays ? d->manager.data() : MWindowPrivate::activeOrNew()->sceneManager(), policy);
}

void MSceneWindow::appear(MWindow *window, DeletionPolicy policy)
{
    if (window && window->sceneManager())
        d->appearIn(window->sceneManager(), policy);
    else
        appear(policy);
}

MSceneManager *MSceneWindow::sceneManager() const
{
    return d->manager;
}

bool MSceneWindow::isDraggable() const
{
    return d->draggable;
}

void MSceneWindow::setDraggable(bool draggable)
{
    d->draggable = draggable;
}

void MSceneWindow::disappear()
{
    if (!d->manager)
        return;
    MSceneManagerPrivate *manager = MSceneManagerPrivate::of(d->manager);
    manager->slide.takeOut(this);
    d->manager = nullptr;
    manager->remove(this);
    if (d->policy == DestroyWhenDone)
        d->deleteLater();
    Q_EMIT disappeared();
}

void MSceneWindow::dismiss()
{
    disappear();
}

void MSceneWindow::aboutToAppear() {}

void MSceneWindow::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const auto way =
        std::find_if(std::begin(ways), std::end(ways), [key](const Way &way) { return way.key == key; });
    if (key == Qt::Key_Escape || key == Qt::Key_Back) {
        // A key that is held refuses the question that the user saw, and not those behind it.
        if (!event->isAutoRepeat())
            dismiss();
    } else if (way != std::end(ways) && d->manager) {
        MSceneManagerPrivate::of(d->manager)->moveFocus(way->direction);
    } else {
        event->ignore();
    }
}

void MSceneWindow::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // The windows below are out of reach.
    event->accept();
}

bool MSceneWindow::sceneEvent(QEvent *event)
{
    // The windows below cannot be scrolled either. Not in wheelEvent(), which is virtual in the second base
    // only: overriding it would add a place to the virtual table of every dialog that programs derive from.
    if (event->type() != QEvent::GraphicsSceneWheel)
        return MWidget::sceneEvent(event);
    event->accept();
    return true;
}
