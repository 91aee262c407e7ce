// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/waitingbadge.h"

#include <QGraphicsScene>

#include <MSceneWindow>
#include <MWindow>

void WaitingBadge::show(MSceneWindow *window, qsizetype waiting)
{
    delete label;
    if (!window || waiting == 0)
        return;
    label = new MLabel(qtTrId("qtn_nfc_waiting_more", int(waiting)).arg(waiting), window);
    if (auto *view = qobject_cast<MWindow *>(window->scene()->views().value(0)))
        view->announce(label->text());
    label->setStyleName(QStringLiteral("WaitingBadge"));
    label->resize(label->preferredSize());
    moveToEdge();
    connect(window, &MSceneWindow::geometryChanged, label, [this] { moveToEdge(); });
}

void WaitingBadge::moveToEdge()
{
    const QRectF area = label->parentWidget()->rect();
    const bool mirrored = label->layoutDirection() == Qt::RightToLeft;
    // Below the banner of a touch.
    const qreal top = area.top() + area.height() / 6;
    label->setPos(mirrored ? area.left() : area.right() - label->size().width(), top);
}
