// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWINDOW_H
#define MWINDOW_H

#include <memory>

#include <QGraphicsView>
#include <quenzotouchcore_export.h>

class MSceneManager;
class MWindowPrivate;

/** A window of the touch interface. Its first size is that of the theme's phone, as far as the screen has
 * room for it. */
class QUENZOTOUCHCORE_EXPORT MWindow : public QGraphicsView
{
    Q_OBJECT
public:
    /** Makes a window with a scene manager of its own. */
    explicit MWindow(QWidget *parent = nullptr);
    /**
     * Makes a window on \a manager, which it owns from then on unless the manager has a parent. Of several
     * windows on one manager the newest gives the scene windows their size.
     */
    explicit MWindow(MSceneManager *manager, QWidget *parent = nullptr);
    /** Dismisses the scene windows that are still there. */
    ~MWindow() override;

    /** Returns the scene manager, or null once somebody else has deleted it. */
    MSceneManager *sceneManager() const;

    /**
     * Announces \a text once to users who do not see the screen, when nothing else is being spoken. For news
     * that stand in no place which has the focus.
     */
    void announce(const QString &text);

    QSize sizeHint() const override;

protected:
    /** Is called when the window has come on the display, the first time and each time after it was hidden.
     */
    virtual void enterDisplayEvent();

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    friend class MWindowPrivate;
    const std::unique_ptr<MWindowPrivate> d;
};

#endif
