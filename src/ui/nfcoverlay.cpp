// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcoverlay.h"

#include <QGraphicsScene>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <MSceneManager>

#include "ui/nfcoverlay_p.h"

namespace ConnUi {

namespace {

// The edges along which the banner slides are the screen's. Elsewhere the place of a window is not for its
// program.
void coverScreen(QWidget *overlay)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    const QScreen *screen = overlay->screen();
    overlay->setGeometry(screen->geometry());
    QObject::connect(screen, &QScreen::geometryChanged, overlay,
                     [overlay](const QRect &geometry) { overlay->setGeometry(geometry); });
}

} // namespace

// The scene manager is handed to the window as its child; it is the overlay's own, so that dialogs of the
// application do not appear in it.
NfcOverlay::NfcOverlay() : MWindow(new MSceneManager), d(new NfcOverlayPrivate(this))
{
    sceneManager()->setParent(this);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_X11DoNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    // Only a native window takes the type; before there is one, the attribute has no effect.
    winId();
    setAttribute(Qt::WA_X11NetWmWindowTypeNotification);
    coverScreen(this);
    setProperty("followsCurrentApplicationWindowOrientation", true);

    connect(sceneManager(), &MSceneManager::orientationAboutToChange, d, &NfcOverlayPrivate::clearWindowMask);
    connect(sceneManager(), &MSceneManager::orientationChangeFinished, d,
            &NfcOverlayPrivate::updateWindowMask);
    // A compositor that turns the screen gives the window another size.
    connect(scene(), &QGraphicsScene::sceneRectChanged, d, &NfcOverlayPrivate::updateWindowMask);
}

NfcOverlay::~NfcOverlay()
{
    // Before the scene, whose item it animates.
    delete d;
}

void NfcOverlay::showIndication()
{
    d->showing = true;
    show();
    raise();
    d->show();
    announce(qtTrId("qtn_nfc_touched"));
}

void NfcOverlay::hideIndication()
{
    d->timer->stop();
    if (d->showing)
        d->slideOut();
}

void NfcOverlay::enterDisplayEvent()
{
    if (d->item)
        return;
    d->createItem();
    if (d->showing)
        d->show();
}

} // namespace ConnUi
