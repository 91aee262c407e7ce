// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWINDOW_P_H
#define MWINDOW_P_H

#include <QList>
#include <QPointer>

#include <MWindow>

#include "scene/mscenehost_p.h"

class MWindowPrivate final : public MSceneHost
{
public:
    MWindowPrivate(MWindow *window, MSceneManager *manager);

    static MWindowPrivate *of(MWindow *window) { return window->d.get(); }

    /**
     * Returns the active window, or else the visible one that was active last. When no window can take a
     * scene window, shows a new one above all others that goes away with the last scene window in it.
     */
    static MWindow *activeOrNew();

    QSize sceneSize() const override;
    qreal pixelRatio() const override;
    bool isShown() const override;
    /** Closes a window that was made for its scene windows when none is left. */
    void sceneWindowLeft() override;

    void setOnDisplay(bool now);

    /** Returns whether the scene manager is still there and its scene windows stand in this window. */
    bool isHost() const;
    /** Lets the user see again what the window shows before input counts. */
    void uncover();
    /** Closes the scene windows of this window as without a press. */
    void dismissAll();
    /**
     * Returns whether \a event, the next one of the window, repeats a key that stays down without saying so.
     */
    bool isUnmarkedRepeat(const QEvent *event);

    MWindow *const q;
    QPointer<MSceneManager> manager;
    bool madeForSceneWindows = false;
    bool closing = false;
    bool onDisplay = false;

private:
    bool takesSceneWindows() const;

    int releasedKey = 0;
    quint64 releasedAt = 0; // milliseconds, as the events have them
};

#endif
