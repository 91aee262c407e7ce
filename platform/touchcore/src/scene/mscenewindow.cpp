// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mscenewindow.h"

#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>

#include <MWindow>

#include "scene/mscenemanager_p.h"
#include "scene/mscenewindow_p.h"
#include "scene/mwindow_p.h"

void MSceneWindowPrivate::appearIn(MSceneManager *newManager, MSceneWindow::DeletionPolicy newPolicy)
{
    if (manager && manager != newManager)
        MSceneManagerPrivate::of(manager)->remove(q);
    policy = newPolicy;
    q->aboutToAppear();
    manager = newManager;
    MSceneManagerPrivate::of(manager)->add(q);
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
    d->appearIn(window->sceneManager(), policy);
}

MSceneManager *MSceneWindow::sceneManager() const
{
    return d->manager;
}

void MSceneWindow::disappear()
{
    if (!d->manager)
        return;
    MSceneManagerPrivate *manager = MSceneManagerPrivate::of(d->manager);
    d->manager = nullptr;
    manager->remove(this);
    if (d->policy == DestroyWhenDone)
        deleteLater();
    Q_EMIT disappeared();
}

void MSceneWindow::dismiss()
{
    disappear();
}

void MSceneWindow::aboutToAppear() {}

void MSceneWindow::keyPressEvent(QKeyEvent *event)
{
    MSceneManagerPrivate *manager = MSceneManagerPrivate::of(d->manager);
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Back:
        dismiss();
        return;
    case Qt::Key_Down:
        manager->moveFocus(QPointF(0, 1));
        return;
    case Qt::Key_Up:
        manager->moveFocus(QPointF(0, -1));
        return;
    case Qt::Key_Right:
        manager->moveFocus(QPointF(1, 0));
        return;
    case Qt::Key_Left:
        manager->moveFocus(QPointF(-1, 0));
        return;
    default:
        event->ignore();
    }
}

void MSceneWindow::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // Whatever stands below is out of reach.
    event->accept();
}
