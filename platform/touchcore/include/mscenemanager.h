// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCENEMANAGER_H
#define MSCENEMANAGER_H

#include <memory>

#include <QObject>
#include <QSize>

#include <MTypes>

class MSceneManagerPrivate;
class MSceneWindow;
class MWindow;
class QGraphicsScene;

/**
 * Manages the content of a window: the scene, the order of its scene windows and the angle that they are
 * turned by.
 *
 * Scene coordinates are the window's own, whatever the angle; only scene windows are turned.
 */
class QUENZOTOUCHCORE_EXPORT MSceneManager : public QObject
{
    Q_OBJECT
public:
    /** Makes a manager with an empty scene. The window that it is given to owns it if it has no parent. */
    explicit MSceneManager(QObject *parent = nullptr);
    /** Dismisses the scene windows that are still there. */
    ~MSceneManager() override;

    /** Returns the scene, which the manager owns. */
    QGraphicsScene *scene() const;

    /** Returns the shape of visibleSceneSize(). */
    M::Orientation orientation() const;

    /** Returns the angle, M::Angle0 by default. */
    M::OrientationAngle orientationAngle() const;

    /** Returns the size of the visible area as the user sees it, in pixels: the window's, turned by the
     * angle. */
    QSize visibleSceneSize() const;

public Q_SLOTS:
    /** Turns the scene windows at once. Does nothing when \a angle is the current one or no multiple of 90
     * degrees. */
    void setOrientationAngle(M::OrientationAngle angle);

Q_SIGNALS:
    /** The angle is about to change; afterwards the orientation will be \a orientation, maybe the same as
     * before. */
    void orientationAboutToChange(M::Orientation orientation);
    /** The angle has changed and the scene windows have their new places. */
    void orientationChangeFinished(M::Orientation orientation);

private:
    friend class MSceneManagerPrivate;
    const std::unique_ptr<MSceneManagerPrivate> d;
};

#endif
