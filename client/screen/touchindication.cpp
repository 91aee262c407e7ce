// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/touchindication.h"

#include <algorithm>
#include <limits>

#include <QApplication>
#include <QGraphicsScene>
#include <QPropertyAnimation>
#include <QSequentialAnimationGroup>

#include <MButton>
#include <MLabel>
#include <MSceneManager>
#include <MSceneWindow>
#include <MWindow>

#include "support/overlay.h"

using ConnUi::IndicationItem;
using ConnUi::NfcOverlay;

namespace {

// In milliseconds.
constexpr int questionFollows = 500;
constexpr int shownFor = 2000;
constexpr int slideTime = 200;

bool showsQuestion(const MWindow &window)
{
    const QList<QGraphicsItem *> items = window.scene()->items();
    return std::any_of(items.cbegin(), items.cend(), [](QGraphicsItem *item) {
        return item->isVisible() && qobject_cast<const MSceneWindow *>(item->toGraphicsObject());
    });
}

QPropertyAnimation *newSlide(IndicationItem *banner, float from, float to)
{
    auto *slide = new QPropertyAnimation(banner, "visibilityFactor");
    slide->setDuration(slideTime);
    slide->setStartValue(from);
    slide->setEndValue(to);
    return slide;
}

// Whether something to read or to press lies below the banner.
bool coversWords(const IndicationItem &banner)
{
    const QList<QGraphicsItem *> below = banner.scene()->items(banner.sceneBoundingRect());
    return std::any_of(below.cbegin(), below.cend(), [](QGraphicsItem *item) {
        const QGraphicsObject *object = item->toGraphicsObject();
        return qobject_cast<const MLabel *>(object) || qobject_cast<const MButton *>(object);
    });
}

} // namespace

TouchIndication::TouchIndication(const MWindow *phone) : phone(phone)
{
    awaitingQuestion.setSingleShot(true);
    awaitingQuestion.setInterval(questionFollows);
    connect(&awaitingQuestion, &QTimer::timeout, this, &TouchIndication::notify);
    // The first time it waits for the compositor, which no question should.
    Support::hasOverlays();
}

TouchIndication::~TouchIndication()
{
    delete banner;
}

void TouchIndication::prepare()
{
    if (overlay || !canBeAbove())
        return;
    overlay.emplace();
    Support::makeOverlay(&*overlay, QLatin1String("banner"), Support::OverlayKeys::ToOthers);
}

// Wayland has no windows above others, except by a protocol that not all compositors speak. It covers a whole
// screen, so a phone in a window has the banner within.
bool TouchIndication::canBeAbove() const
{
    const bool onWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return !onWayland || (Support::hasOverlays() && !phone);
}

// The one that the user looks at. A window whose question slides out is about to go.
MWindow *TouchIndication::windowInFront() const
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *window = qobject_cast<MWindow *>(widget);
        if (window && window->isVisible() && (window == phone || showsQuestion(*window)))
            return window;
    }
    return nullptr;
}

void TouchIndication::show()
{
    if (canBeAbove())
        showAbove();
    else if (MWindow *window = windowInFront())
        slideInto(window);
    else
        awaitingQuestion.start();
}

void TouchIndication::questionAppeared()
{
    if (overlay && overlay->isVisible() && Support::hasOverlays()) {
        // The overlay that came last is in front, and the question's shade would darken the banner.
        overlay->hide();
        overlay->show();
    }
    if (!awaitingQuestion.isActive())
        return;
    awaitingQuestion.stop();
    if (MWindow *window = windowInFront())
        slideInto(window);
}

void TouchIndication::showAbove()
{
    prepare();
    if (const MWindow *window = windowInFront())
        overlay->sceneManager()->setOrientationAngle(window->sceneManager()->orientationAngle());
    if (phone)
        overlay->setGeometry({phone->viewport()->mapToGlobal(QPoint()), phone->viewport()->size()});
    overlay->showIndication();
}

void TouchIndication::slideInto(MWindow *window)
{
    delete banner;
    banner = new IndicationItem;
    // A tap is for what the banner covers.
    banner->setAcceptedMouseButtons(Qt::NoButton);
    banner->setZValue(std::numeric_limits<qreal>::max());
    window->scene()->addItem(banner);
    banner->setOrientationAngle(window->sceneManager()->orientationAngle());
    // The user decides meanwhile, and has to see about what.
    connect(window->scene(), &QGraphicsScene::changed, banner,
            [shown = banner.data()] { shown->setVisible(!coversWords(*shown)); });
    auto *slides = new QSequentialAnimationGroup(banner);
    slides->addAnimation(newSlide(banner, 0.0F, 1.0F));
    slides->addPause(shownFor - slideTime);
    slides->addAnimation(newSlide(banner, 1.0F, -0.1F));
    connect(slides, &QSequentialAnimationGroup::finished, banner, &QObject::deleteLater);
    slides->start();
    window->announce(qtTrId("qtn_nfc_touched"));
}

void TouchIndication::notify()
{
    Question touched;
    touched.title = qtTrId("qtn_nfc_touched");
    notification.show(touched, shownFor);
}
