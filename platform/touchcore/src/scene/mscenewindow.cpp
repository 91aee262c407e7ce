// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mscenewindow.h"

#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>

#include <MWindow>

#include "scene/mscenemanager_p.h"
#include "scene/mscenewindow_p.h"
#include "scene/mwindow_p.h"

MSceneWindow::MSceneWindow() : d(std::make_unique<MSceneWindowPrivate>())
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
    MWindow *window = d->manager ? MSceneManagerPrivate::of(d->manager)->window.data() : nullptr;
    appear(window ? window : MWindowPrivate::activeOrNew(), policy);
}

void MSceneWindow::appear(MWindow *window, DeletionPolicy policy)
{
    if (d->manager && d->manager != window->sceneManager())
        MSceneManagerPrivate::of(d->manager)->remove(this);
    d->policy = policy;
    aboutToAppear();
    d->manager = window->sceneManager();
    MSceneManagerPrivate::of(d->manager)->add(this);
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
    // What stands below is out of reach.
    event->accept();
}
