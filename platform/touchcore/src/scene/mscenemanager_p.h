// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCENEMANAGER_P_H
#define MSCENEMANAGER_P_H

#include <QGraphicsObject>
#include <QGraphicsScene>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QSize>

#include <MSceneManager>

#include "scene/mdismissal_p.h"
#include "scene/mslide_p.h"

class MInputGuard;
class MSceneHost;
class MWidget;

/** The scene of a window; it keeps the keyboard focus inside of the newest scene window. */
class MScene : public QGraphicsScene
{
    Q_OBJECT
public:
    explicit MScene(MSceneManagerPrivate *manager) : manager(manager) {}

    bool focusNextPrevChild(bool next) override;
    /** Takes the mouse away from whatever was pressed. */
    void endPresses();

protected:
    bool event(QEvent *event) override;
    void drawForeground(QPainter *painter, const QRectF &rect) override;

private:
    MSceneManagerPrivate *const manager;
};

class MSceneManagerPrivate
{
public:
    explicit MSceneManagerPrivate(MSceneManager *manager);
    ~MSceneManagerPrivate();

    static MSceneManagerPrivate *of(MSceneManager *manager) { return manager->d.get(); }

    /** Puts \a sceneWindow in front. */
    void add(MSceneWindow *sceneWindow);
    /** Takes \a sceneWindow out. When it was in front, the one below gets the focus back. */
    void remove(MSceneWindow *sceneWindow);
    /** Closes all scene windows as without a press, the newest first. */
    void dismissAll();

    MSceneWindow *front() const { return sceneWindows.isEmpty() ? nullptr : sceneWindows.last(); }
    /** Returns what decides about input in front, or null when everything counts. */
    MInputGuard *guard() const;
    /** Lets the user see again what has been out of sight before input counts. */
    void uncover();
    /** Returns what Tab visits in the newest scene window, or in the scene while there is none. */
    QList<QGraphicsWidget *> focusChain() const;
    /** Lets the nearest widget that lies in \a direction, as the user sees it, have the focus. */
    void moveFocus(const QPointF &direction);

    /** Returns the size that a window is made with. */
    static QSize defaultSize();
    QSize windowSize() const;
    QSize turnedSize() const;
    M::Orientation orientationAt(M::OrientationAngle at) const;
    /** Turns the scene windows and fits them into the window. */
    void place();

    MSceneManager *const q;
    MScene scene;
    MWidget *root; ///< Turned by the angle
    MSceneHost *host = nullptr;
    MSlide slide{this};
    MDismissal dismissal{this};
    QList<MSceneWindow *> sceneWindows; ///< The newest last
    M::OrientationAngle angle = M::Angle0;

private:
    MSceneWindow *sceneWindowOf(const QGraphicsItem *item) const;
    void followFocus(QGraphicsItem *now, Qt::FocusReason reason);
    void restoreFocus();
    /** Lets only the front dialog draw its shade: two would be darker than one. */
    void shadeOnce();
    void endPressesBelow(const MSceneWindow *sceneWindow);

    QHash<const MSceneWindow *, QPointer<QGraphicsObject>> lastFocus; ///< Null stands for the scene itself
    QMetaObject::Connection focusChanges;
    bool restoring = false;
};

#endif
