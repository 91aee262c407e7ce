// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCENEWINDOW_H
#define MSCENEWINDOW_H

#include <memory>

#include <MWidgetController>

class MSceneManager;
class MSceneWindowPrivate;
class MWindow;

/**
 * A page, sheet or dialog: it fills the whole visible area of a window. Several stand one above the other,
 * and only the newest takes input.
 */
class QUENZOTOUCHCORE_EXPORT MSceneWindow : public MWidgetController
{
    Q_OBJECT
public:
    /** The fate of a scene window that has gone away. */
    enum DeletionPolicy {
        KeepWhenDone = 0,    ///< It stays with its owner and may appear again
        DestroyWhenDone = 1, ///< It is deleted from the event loop
    };
    Q_ENUM(DeletionPolicy)

    /** Makes a scene window that has not appeared yet and that the caller owns. */
    MSceneWindow();
    ~MSceneWindow() override;

    /**
     * Appears in front in the application's active window. When there is none, a window is made, which goes
     * away with the last scene window in it. Returns at once.
     */
    void appear(DeletionPolicy policy = KeepWhenDone);

    /**
     * Appears in front in \a window, which is not shown by that; without one, where appear() would. Returns
     * at once.
     */
    void appear(MWindow *window, DeletionPolicy policy = KeepWhenDone);

    /** Returns the manager of the window that it has appeared in, or null. */
    MSceneManager *sceneManager() const;

    /** Returns whether the user can drag it away, false by default, and true for a dialog. */
    bool isDraggable() const;
    /**
     * Lets it slide in and out, except where motion is reduced, and lets the user dismiss it: by dragging it
     * down, or by a tap beside it where it leaves room. A drag that ends too early slides back.
     */
    void setDraggable(bool draggable);

public Q_SLOTS:
    /** Goes away as the deletion policy says. Does nothing when it has not appeared. */
    void disappear();

    /** Does what the back gesture, Escape and closing the window do; disappears here. */
    virtual void dismiss();

Q_SIGNALS:
    /** It has gone away, whatever the reason. A slot may delete it. */
    void disappeared();

protected:
    /** Is called each time before it appears. Does nothing here. */
    virtual void aboutToAppear();

    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    bool sceneEvent(QEvent *event) override;

private:
    friend class MSceneWindowPrivate;
    const std::unique_ptr<MSceneWindowPrivate> d;
};

#endif
