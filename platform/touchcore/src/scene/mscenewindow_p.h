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

    void appearIn(MSceneManager *newManager, MSceneWindow::DeletionPolicy newPolicy);

    ~MSceneWindowPrivate();

    /** Deletes the scene window from the event loop, unless it appears again before. */
    void deleteLater();
    void keep();

    MSceneWindow *const q;
    QPointer<MSceneManager> manager;
    MSceneWindow::DeletionPolicy policy = MSceneWindow::KeepWhenDone;
    QPointer<QObject> deletion; ///< Takes the scene window with it when the event loop deletes it
};

#endif
