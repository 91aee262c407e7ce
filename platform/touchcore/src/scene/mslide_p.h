// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSLIDE_P_H
#define MSLIDE_P_H

#include <QList>
#include <QObject>
#include <QPointer>
#include <QVariantAnimation>

class MSceneManagerPrivate;
class MSceneWindow;
class QGraphicsPixmapItem;
class QGraphicsWidget;

/**
 * Moves the card of a scene window into sight and along with a finger, and a picture of it out of sight: the
 * scene window itself goes at once, and its owner may delete it.
 */
class MSlide : public QObject
{
    Q_OBJECT
public:
    explicit MSlide(MSceneManagerPrivate *manager);

    /** Lets \a sceneWindow come in across the lower edge, from the first frame on that shows it. */
    void slideIn(MSceneWindow *sceneWindow);
    /** Lets a picture of \a sceneWindow, which is about to go, leave across the lower edge. */
    void takeOut(MSceneWindow *sceneWindow);
    /** Moves \a sceneWindow so many pixels \a down. */
    void follow(MSceneWindow *sceneWindow, qreal down);
    /** Lets what was moved down go back to its place. */
    void goBack();
    /** Puts \a sceneWindow in its place at once. */
    void forget(MSceneWindow *sceneWindow);
    /** Learns that a frame has been drawn. */
    void drawn();

    /** Returns whether something moves towards its place by itself, or is about to. */
    bool isMoving() const;
    /** Returns whether a picture is still seen. */
    bool isLeaving() const { return !leaving.isEmpty(); }

private:
    bool moves(const MSceneWindow *sceneWindow) const;
    void setDown(qreal down);
    void startLeaving(const QGraphicsWidget *what, qreal layer);
    void shadeLeavingOnce(MSceneWindow *next);
    void putBehindAll(QGraphicsPixmapItem *picture);

    MSceneManagerPrivate *const manager;
    QPointer<QGraphicsWidget> card;
    QVariantAnimation way;
    bool awaitsFrame = false;
    QList<QGraphicsPixmapItem *> leaving;
};

#endif
