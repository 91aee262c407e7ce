// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCENEWINDOW_P_H
#define MSCENEWINDOW_P_H

#include <QObject>
#include <QPointer>

#include <MSceneManager>
#include <MSceneWindow>

class MSceneWindowPrivate
{
public:
    explicit MSceneWindowPrivate(MSceneWindow *sceneWindow) : q(sceneWindow) {}

    /** Returns the part of \a sceneWindow that the user sees as a whole: it slides. */
    static QGraphicsWidget *cardOf(MSceneWindow *sceneWindow);
    /** Makes \a card, a child, that part. Without one, it is the scene window itself. */
    static void setCard(MSceneWindow *sceneWindow, QGraphicsWidget *card) { sceneWindow->d->card = card; }

    void appearIn(MSceneManager *newManager, MSceneWindow::DeletionPolicy newPolicy);

    ~MSceneWindowPrivate();

    /** Deletes the scene window from the event loop, unless it appears again before. */
    void deleteLater();
    void keep();

    MSceneWindow *const q;
    QPointer<MSceneManager> manager;
    QPointer<QGraphicsWidget> card;
    bool draggable = false;
    MSceneWindow::DeletionPolicy policy = MSceneWindow::KeepWhenDone;
    QPointer<QObject> deletion; ///< Takes the scene window with it when the event loop deletes it
};

#endif
