// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/touchindication.h"

#include <QApplication>

#include <MSceneManager>
#include <MWindow>
#include <NfcAgent>
#include <NfcOverlay>
#include <NfcTagNotSupportedDialog>

#include "screen/dialogqueue.h"

using ConnUi::NfcAgent;
using ConnUi::NfcOverlay;
using ConnUi::NfcTagNotSupportedDialog;

namespace {

// As the window that the person looks at is turned.
M::OrientationAngle angleInFront(const NfcOverlay *overlay)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        const auto *window = qobject_cast<const MWindow *>(widget);
        if (window && window != overlay && window->isVisible())
            return window->sceneManager()->orientationAngle();
    }
    return overlay->sceneManager()->orientationAngle();
}

} // namespace

TouchIndication::TouchIndication(NfcAgent *agent, NfcOverlay *overlay, DialogQueue *queue)
    : QObject(agent)
    , overlay(overlay)
    , queue(queue)
{
    connect(agent, &NfcAgent::notifyTouch, this, &TouchIndication::tell);
}

void TouchIndication::tell(const QDBusObjectPath &, int status)
{
    overlay->sceneManager()->setOrientationAngle(angleInFront(overlay));
    overlay->showIndication();
    if (status == NfcAgent::Ok)
        return;
    queue->ask({[] { return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::UnsupportedTagError); },
                [](MDialog *, int) {}});
}
