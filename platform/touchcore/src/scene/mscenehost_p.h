// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCENEHOST_P_H
#define MSCENEHOST_P_H

class QSize;

/** The window that a scene manager shows its scene in, as far as the manager has to know it. */
class MSceneHost
{
public:
    /** Returns the size of the area that shows the scene, in pixels. */
    virtual QSize sceneSize() const = 0;

    /** Returns how many pixels of the screen one of the scene has. */
    virtual qreal pixelRatio() const = 0;

    /** Returns whether the user may see the scene. */
    virtual bool isShown() const = 0;

    /** Is called after a scene window has gone away and is no longer seen. */
    virtual void sceneWindowLeft() = 0;

protected:
    ~MSceneHost() = default;
};

#endif
