// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/phonewindow.h"

#include <QGraphicsScene>
#include <QScreen>

#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>

#include "screen/phonecase.h"

PhoneWindow::PhoneWindow() : phoneCase(new PhoneCase(this))
{
    setWindowTitle(QStringLiteral("Phone"));
    const QMargins margins = PhoneCase::margins();
    setViewportMargins(margins);
    // A low display has a small phone, not a wide one.
    QSize phone = sizeHint().grownBy(margins);
    const QSize room = screen()->availableSize();
    if (room.height() < phone.height() || room.width() < phone.width())
        phone.scale(room, Qt::KeepAspectRatio);
    resize(phone);
    addHint();
}

void PhoneWindow::resizeEvent(QResizeEvent *event)
{
    MWindow::resizeEvent(event);
    phoneCase->resize(size());
    phoneCase->raise();
}

// Users who see an empty screen do not know what to do.
void PhoneWindow::addHint()
{
    auto *text = new MLabel(qtTrId("qtn_nfc_phone_hint"));
    text->setStyleName(QStringLiteral("CommonQueryText"));
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignCenter);
    auto *hint = new MWidget;
    auto *policy = new MLinearLayoutPolicy(new MLayout(hint), Qt::Vertical);
    policy->addItem(new MImageWidget(QStringLiteral("icon-m-service-nfc")), Qt::AlignCenter);
    policy->addItem(text);
    scene()->addItem(hint);
    const auto place = [hint](const QRectF &screen) {
        const QSizeF size = hint->effectiveSizeHint(Qt::PreferredSize, QSizeF(screen.width() * 2 / 3, -1));
        QRectF middle(QPointF(), size);
        middle.moveCenter(screen.center());
        hint->setGeometry(middle);
    };
    place(scene()->sceneRect());
    connect(scene(), &QGraphicsScene::sceneRectChanged, hint, place);
}
