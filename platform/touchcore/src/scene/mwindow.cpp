// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mwindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGraphicsWidget>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>

#include <MSceneManager>
#include <MSceneWindow>
#include <MTheme>

#include "accessibility/maccessible_p.h"
#include "mwidget.h"
#include "scene/mscenemanager_p.h"
#include "scene/mwindow_p.h"
#include "support/overlay.h"
#include "theme/mtheme_p.h"

namespace {

// All windows of this process, the one that was active last at the end.
QList<MWindow *> &windows()
{
    static QList<MWindow *> list;
    return list;
}

// Nobody looks at windows on the platform "offscreen", whose screen is smaller than the theme's phone.
QSize sizeOnScreen(const QWidget &window)
{
    const QSize size = window.sizeHint();
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return size;
    return size.boundedTo(window.screen()->availableSize());
}

} // namespace

MWindowPrivate::MWindowPrivate(MWindow *window, MSceneManager *manager) : q(window), manager(manager)
{
    if (!manager->parent())
        manager->setParent(window);
    MSceneManagerPrivate::of(manager)->host = this;
    windows().prepend(window);
}

bool MWindowPrivate::isHost() const
{
    return manager && MSceneManagerPrivate::of(manager)->host == this;
}

void MWindowPrivate::uncover()
{
    if (isHost())
        MSceneManagerPrivate::of(manager)->uncover();
}

void MWindowPrivate::dismissAll()
{
    if (isHost())
        MSceneManagerPrivate::of(manager)->dismissAll();
}

QSize MWindowPrivate::sceneSize() const
{
    return q->size().shrunkBy(q->viewportMargins());
}

qreal MWindowPrivate::pixelRatio() const
{
    return q->devicePixelRatioF();
}

bool MWindowPrivate::isShown() const
{
    return q->isVisible() && !q->isMinimized() && !closing;
}

bool MWindowPrivate::takesSceneWindows() const
{
    // A window that takes no focus, such as an indication, cannot be answered in.
    return manager && isShown() && !q->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus) &&
           !q->testAttribute(Qt::WA_X11DoNotAcceptFocus);
}

MWindow *MWindowPrivate::activeOrNew()
{
    const QList<MWindow *> &all = windows();
    for (auto window = all.crbegin(); window != all.crend(); ++window)
        if (of(*window)->takesSceneWindows())
            return *window;
    auto *made = new MWindow;
    of(made)->madeForSceneWindows = true;
    // Never a text of somebody else's, such as a device's name in a question.
    made->setWindowTitle(QGuiApplication::applicationDisplayName());
    made->setWindowFlag(Qt::WindowStaysOnTopHint);
    if (Support::hasOverlays()) {
        // The shade is drawn over what the user was doing.
        made->setAttribute(Qt::WA_TranslucentBackground);
        Support::makeOverlay(made, QLatin1String("question"), Support::OverlayKeys::ToOverlay);
    }
    made->show();
    return made;
}

void MWindowPrivate::sceneWindowLeft()
{
    if (madeForSceneWindows && manager && MSceneManagerPrivate::of(manager)->sceneWindows.isEmpty()) {
        closing = true;
        q->hide();
        q->deleteLater();
    }
}

void MWindowPrivate::setOnDisplay(bool now)
{
    if (onDisplay == now)
        return;
    onDisplay = now;
    uncover();
    if (now)
        q->enterDisplayEvent();
}

// An X server repeats a key by releasing and pressing it at one time. Qt marks the pair only where both have
// arrived when it looks at the first of them.
bool MWindowPrivate::isUnmarkedRepeat(const QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto *key = static_cast<const QKeyEvent *>(event);
    // Keys that assistive technology has seen first come without their times.
    if (event->type() == QEvent::KeyPress)
        return !key->isAutoRepeat() && key->timestamp() != 0 && key->key() == releasedKey &&
               key->timestamp() == releasedAt;
    releasedKey = key->key();
    releasedAt = key->timestamp();
    return false;
}

MWindow::MWindow(QWidget *parent) : MWindow(new MSceneManager, parent) {}

MWindow::MWindow(MSceneManager *manager, QWidget *parent)
    : QGraphicsView(parent)
    , d(std::make_unique<MWindowPrivate>(this, manager))
{
    MAccessible::install();
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setRenderHint(QPainter::Antialiasing);
    // drawBackground() covers it, except in a translucent window.
    viewport()->setAutoFillBackground(false);
    setScene(manager->scene());
    resize(sizeOnScreen(*this));
    connect(MTheme::instance(), &MTheme::changed, viewport(), qOverload<>(&QWidget::update));
}

MWindow::~MWindow()
{
    windows().removeOne(this);
    d->closing = true;
    // A deleted window is closed like any other, whoever the scene windows belong to.
    d->madeForSceneWindows = false;
    d->dismissAll();
    if (d->isHost())
        MSceneManagerPrivate::of(d->manager)->host = nullptr;
}

MSceneManager *MWindow::sceneManager() const
{
    return d->manager;
}

void MWindow::announce(const QString &text)
{
    MAccessible::announce(this, text, MAccessible::Polite);
}

QSize MWindow::sizeHint() const
{
    return MSceneManagerPrivate::defaultSize();
}

void MWindow::enterDisplayEvent() {}

bool MWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::WindowActivate:
        windows().removeOne(this);
        windows().append(this);
        d->uncover();
        break;
    case QEvent::LayoutDirectionChange:
        if (d->isHost())
            MSceneManagerPrivate::of(d->manager)->root->setLayoutDirection(layoutDirection());
        break;
    default:
        break;
    }
    return QGraphicsView::event(event);
}

bool MWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle() && event->type() == QEvent::Expose && windowHandle()->isExposed())
        d->setOnDisplay(true);
    if (watched == windowHandle() && d->isUnmarkedRepeat(event))
        return true;
    return QGraphicsView::eventFilter(watched, event);
}

void MWindow::closeEvent(QCloseEvent *event)
{
    d->closing = true;
    const QPointer<MWindow> self(this);
    d->dismissAll();
    if (!self)
        return;
    d->closing = d->madeForSceneWindows;
    QGraphicsView::closeEvent(event);
}

void MWindow::drawBackground(QPainter *painter, const QRectF &rect)
{
    if (!testAttribute(Qt::WA_TranslucentBackground))
        painter->fillRect(rect, MThemePrivate::ownStyle("MWindow").background);
}

void MWindow::keyPressEvent(QKeyEvent *event)
{
    const QPointer<MWindow> self(this);
    QGraphicsView::keyPressEvent(event);
    const bool back = event->key() == Qt::Key_Escape || event->key() == Qt::Key_Back;
    if (!self || event->isAccepted() || !back || event->isAutoRepeat() || !d->isHost())
        return;
    if (MSceneWindow *front = MSceneManagerPrivate::of(d->manager)->front()) {
        event->accept();
        front->dismiss();
    }
}

void MWindow::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    if (d->isHost())
        MSceneManagerPrivate::of(d->manager)->place();
}

void MWindow::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    if (windowHandle())
        windowHandle()->installEventFilter(this);
}

void MWindow::hideEvent(QHideEvent *event)
{
    d->setOnDisplay(false);
    QGraphicsView::hideEvent(event);
}
