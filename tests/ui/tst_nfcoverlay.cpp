// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QElapsedTimer>
#include <QPointer>
#include <QPropertyAnimation>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <IndicationItem>
#include <MSceneManager>
#include <MSceneWindow>
#include <MWindow>
#include <NfcOverlay>

#include "ui/nfcoverlay_p.h"

using namespace ConnUi;

namespace {

constexpr QSize upright(480, 854);
constexpr QSize wide(854, 480);
constexpr int height = 80; // of both pictures
constexpr int slideTime = 200;
constexpr int holdTime = 2000;
constexpr int frame = 16; // of an animation

// The warnings of the platform plugin about missing abilities, the only ones that are expected.
constexpr const char *noRaise = "This plugin does not support raise()";
constexpr const char *noMask = "This plugin does not support setting window masks";

// A banner with its insides in reach.
class Banner
{
public:
    explicit Banner(QSize size = upright) : d(overlay.findChild<NfcOverlayPrivate *>())
    {
        overlay.resize(size);
    }

    bool display()
    {
        overlay.showIndication();
        return QTest::qWaitFor([this] { return d->item != nullptr; });
    }
    bool isSlidingIn() const { return isRunning() && d->animation->endValue() == 1.0F; }
    bool isSlidingOut() const { return isRunning() && d->animation->endValue() == -0.1F; }
    bool isHidden() const
    {
        return !overlay.isVisible() && !d->showing && !d->animation && !d->timer->isActive() &&
               (!d->item || !d->item->isVisible());
    }
    void slideTo(int milliseconds) { d->animation->setCurrentTime(milliseconds); }
    float factor() const { return d->item->visibilityFactor(); }

    NfcOverlay overlay;
    NfcOverlayPrivate *const d;

private:
    bool isRunning() const { return d->animation && d->animation->state() == QAbstractAnimation::Running; }
};

} // namespace

class TestNfcOverlay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void windowStaysOutOfTheWay();
    void sceneManagerIsItsOwn();
    void dialogsDoNotAppearInIt();
    void nothingIsShownUnasked();
    void onlyThePlatformsLackOfMasksWarns();

    void indicationWaitsForTheWindow();
    void itemIsMadeOnce();
    void windowWithoutIndicationHasAHiddenItem();

    void bannerSlidesInWithin200Milliseconds();
    void bannerStaysForTwoSeconds();
    void bannerLeavesByItself();
    void bannerSlidesOutWithin200Milliseconds();
    void bannerSlidesOutFromWhereItIs();
    void bannerHidesWhenItIsOut();
    void secondHideChangesNothing();
    void hideWhileHiddenChangesNothing();
    void hideBeforeTheWindowHidesIt();
    void indicationBeginsAnewWhileShown();
    void indicationBeginsAnewWhileSlidingOut();
    void bannerComesAndGoesTwice();
    void overlayMayGoInMidSlide();
    void timerGoesWithItsOverlay();
    void wholeIndicationInRealTime();
    void bannerStaysForTwoSecondsAfterTheLastIndication();

    void maskIsTheStrip_data();
    void maskIsTheStrip();
    void maskIsTheWholeHeightBeforeThereIsABanner();
    void maskIsAwayWhileTheScreenTurns();
    void maskStaysWhenNothingIsShown();
    void bannerTurnsWithTheScreen_data();
    void bannerTurnsWithTheScreen();
    void bannerFollowsHalfATurn();
    void bannerIsWholeInAWideWindow();
};

void TestNfcOverlay::init()
{
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!%1$|%2$)")
            .arg(QRegularExpression::escape(QString::fromLatin1(noRaise)), QString::fromLatin1(noMask))));
}

void TestNfcOverlay::windowStaysOutOfTheWay()
{
    const NfcOverlay overlay;
    QVERIFY(overlay.testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(overlay.testAttribute(Qt::WA_X11DoNotAcceptFocus));
    QVERIFY(overlay.testAttribute(Qt::WA_X11NetWmWindowTypeNotification));
    QVERIFY(overlay.testAttribute(Qt::WA_ShowWithoutActivating));
    QVERIFY(overlay.windowFlags() & Qt::WindowDoesNotAcceptFocus);
    QVERIFY(overlay.windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(overlay.property("followsCurrentApplicationWindowOrientation"), QVariant(true));
}

void TestNfcOverlay::sceneManagerIsItsOwn()
{
    const MWindow window;
    const NfcOverlay overlay;
    const NfcOverlay another;
    QVERIFY(overlay.sceneManager());
    QVERIFY(overlay.sceneManager() != window.sceneManager());
    QVERIFY(overlay.sceneManager() != another.sceneManager());
    QCOMPARE(overlay.scene(), overlay.sceneManager()->scene());
    const QPointer<MSceneManager> manager = std::make_unique<NfcOverlay>()->sceneManager();
    QVERIFY(!manager);
}

void TestNfcOverlay::dialogsDoNotAppearInIt()
{
    Banner banner;
    QVERIFY(banner.display());
    MSceneWindow dialog;
    dialog.appear();
    QVERIFY(dialog.sceneManager());
    QVERIFY(dialog.sceneManager() != banner.overlay.sceneManager());
}

void TestNfcOverlay::nothingIsShownUnasked()
{
    const Banner banner;
    QVERIFY(banner.isHidden());
    QVERIFY(!banner.d->item);
    QCOMPARE(banner.d->parent(), &banner.overlay);
    QCOMPARE(banner.overlay.findChildren<QTimer *>(), QList<QTimer *>{banner.d->timer});
    QCOMPARE(banner.d->timer->interval(), holdTime);
    QVERIFY(banner.d->timer->isSingleShot());
    QCOMPARE(banner.d->timer->timerType(), Qt::PreciseTimer);
}

void TestNfcOverlay::onlyThePlatformsLackOfMasksWarns()
{
    Banner banner;
    QTest::ignoreMessage(QtWarningMsg, noRaise);
    QTest::ignoreMessage(QtWarningMsg, noMask);
    QVERIFY(banner.display());
}

void TestNfcOverlay::indicationWaitsForTheWindow()
{
    Banner banner;
    banner.overlay.showIndication();
    QVERIFY(banner.overlay.isVisible());
    QVERIFY(banner.d->showing);
    QVERIFY(!banner.d->item);
    QVERIFY(!banner.d->animation);
    QVERIFY(!banner.d->timer->isActive());
    QVERIFY(banner.overlay.mask().isEmpty());
    QTRY_VERIFY(banner.d->item);
    QVERIFY(banner.d->item->isVisible());
    QCOMPARE(banner.d->item->scene(), banner.overlay.scene());
    QVERIFY(banner.isSlidingIn());
    QVERIFY(banner.d->timer->isActive());
    QVERIFY(!banner.overlay.mask().isEmpty());
}

void TestNfcOverlay::itemIsMadeOnce()
{
    Banner banner;
    QVERIFY(banner.display());
    const IndicationItem *item = banner.d->item;
    const QPropertyAnimation *animation = banner.d->animation;
    banner.overlay.hide();
    banner.overlay.show();
    QVERIFY(QTest::qWaitForWindowExposed(&banner.overlay));
    QCOMPARE(banner.d->item, item);
    QCOMPARE(banner.d->animation, animation);
}

void TestNfcOverlay::windowWithoutIndicationHasAHiddenItem()
{
    Banner banner;
    banner.overlay.show();
    QTRY_VERIFY(banner.d->item);
    QVERIFY(!banner.d->item->isVisible());
    QVERIFY(!banner.d->animation);
    QVERIFY(!banner.d->timer->isActive());
    QVERIFY(banner.overlay.mask().isEmpty());
    banner.overlay.showIndication();
    QVERIFY(banner.d->item->isVisible());
    QVERIFY(banner.isSlidingIn());
}

void TestNfcOverlay::bannerSlidesInWithin200Milliseconds()
{
    Banner banner;
    QVERIFY(banner.display());
    QCOMPARE(banner.d->animation->duration(), slideTime);
    QCOMPARE(banner.d->animation->startValue(), QVariant(0.0F));
    QCOMPARE(banner.d->animation->endValue(), QVariant(1.0F));
    QCOMPARE(banner.d->animation->easingCurve(), QEasingCurve(QEasingCurve::Linear));
    QCOMPARE(banner.d->animation->targetObject(), banner.d->item);
    QCOMPARE(banner.d->animation->propertyName(), QByteArray("visibilityFactor"));
    banner.slideTo(100);
    QCOMPARE(banner.factor(), 0.5F);
    QCOMPARE(banner.d->item->pos(), QPointF(0, -height / 2));
    const QPointer<QPropertyAnimation> animation = banner.d->animation;
    banner.slideTo(slideTime);
    QCOMPARE(banner.factor(), 1.0F);
    QCOMPARE(banner.d->item->pos(), QPointF(0, 0));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(animation);
    QCOMPARE(banner.d->animation, animation);
    QVERIFY(banner.overlay.isVisible());
}

void TestNfcOverlay::bannerStaysForTwoSeconds()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    QVERIFY(banner.d->timer->isActive());
    QCOMPARE(banner.d->timer->interval(), holdTime);
    QVERIFY(banner.d->timer->remainingTime() > 0);
}

void TestNfcOverlay::bannerLeavesByItself()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    banner.d->timer->start(0);
    QTRY_VERIFY(banner.isSlidingOut());
    QVERIFY(!banner.d->timer->isActive());
}

void TestNfcOverlay::bannerSlidesOutWithin200Milliseconds()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    banner.overlay.hideIndication();
    QVERIFY(banner.isSlidingOut());
    QVERIFY(!banner.d->timer->isActive());
    QCOMPARE(banner.d->animation->duration(), slideTime);
    QCOMPARE(banner.d->animation->startValue(), QVariant(1.0F));
    QCOMPARE(banner.d->animation->endValue(), QVariant(-0.1F));
    QCOMPARE(banner.d->animation->easingCurve(), QEasingCurve(QEasingCurve::Linear));
    banner.slideTo(100);
    QVERIFY(qAbs(banner.factor() - 0.45F) < 0.001F);
    QVERIFY(banner.overlay.isVisible());
}

void TestNfcOverlay::bannerSlidesOutFromWhereItIs()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(100);
    const QPointer<QPropertyAnimation> slideIn = banner.d->animation;
    banner.overlay.hideIndication();
    QVERIFY(!slideIn);
    QVERIFY(banner.isSlidingOut());
    QCOMPARE(banner.d->animation->startValue(), QVariant(0.5F));
    QCOMPARE(banner.factor(), 0.5F);
}

void TestNfcOverlay::bannerHidesWhenItIsOut()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.overlay.hideIndication();
    const QPointer<QPropertyAnimation> slideOut = banner.d->animation;
    banner.slideTo(slideTime);
    QVERIFY(banner.isHidden());
    QCOMPARE(banner.factor(), -0.1F);
    QVERIFY(slideOut);
    QTRY_VERIFY(!slideOut);
}

void TestNfcOverlay::secondHideChangesNothing()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    banner.overlay.hideIndication();
    banner.slideTo(100);
    const QPointer<QPropertyAnimation> slideOut = banner.d->animation;
    banner.overlay.hideIndication();
    QCOMPARE(banner.d->animation, slideOut);
    QVERIFY(slideOut);
    QVERIFY(slideOut->currentTime() >= 100);
    banner.slideTo(slideTime);
    QVERIFY(banner.isHidden());
}

void TestNfcOverlay::hideWhileHiddenChangesNothing()
{
    Banner banner;
    banner.overlay.hideIndication();
    QVERIFY(banner.isHidden());
    QVERIFY(!banner.d->item);
    QVERIFY(banner.display());
    banner.overlay.hideIndication();
    banner.slideTo(slideTime);
    banner.overlay.hideIndication();
    QVERIFY(banner.isHidden());
}

void TestNfcOverlay::hideBeforeTheWindowHidesIt()
{
    Banner banner;
    banner.overlay.showIndication();
    banner.overlay.hideIndication();
    QVERIFY(banner.isHidden());
    QVERIFY(banner.display());
    QVERIFY(banner.isSlidingIn());
}

void TestNfcOverlay::indicationBeginsAnewWhileShown()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    const QPointer<QPropertyAnimation> first = banner.d->animation;
    banner.d->timer->stop();
    banner.overlay.showIndication();
    QVERIFY(!first);
    QVERIFY(banner.isSlidingIn());
    QCOMPARE(banner.factor(), 0.0F);
    QVERIFY(banner.d->timer->isActive());
}

void TestNfcOverlay::indicationBeginsAnewWhileSlidingOut()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    banner.overlay.hideIndication();
    banner.slideTo(199);
    const QPointer<QPropertyAnimation> slideOut = banner.d->animation;
    banner.overlay.showIndication();
    QVERIFY(!slideOut);
    QVERIFY(banner.isSlidingIn());
    QCOMPARE(banner.factor(), 0.0F);
    QVERIFY(banner.d->timer->isActive());
    banner.slideTo(slideTime);
    QVERIFY(banner.overlay.isVisible());
    QVERIFY(banner.d->item->isVisible());
    QVERIFY(banner.d->showing);
}

void TestNfcOverlay::bannerComesAndGoesTwice()
{
    Banner banner;
    for (int i = 0; i < 2; ++i) {
        QVERIFY(banner.display());
        QVERIFY(banner.isSlidingIn());
        QVERIFY(banner.d->item->isVisible());
        banner.slideTo(slideTime);
        banner.overlay.hideIndication();
        banner.slideTo(slideTime);
        QVERIFY(banner.isHidden());
    }
}

void TestNfcOverlay::overlayMayGoInMidSlide()
{
    auto banner = std::make_unique<Banner>();
    QVERIFY(banner->display());
    banner->slideTo(100);
    banner.reset();

    banner = std::make_unique<Banner>();
    QVERIFY(banner->display());
    banner->overlay.hideIndication();
    const QPointer<QPropertyAnimation> slideOut = banner->d->animation;
    banner.reset();
    QVERIFY(!slideOut);
}

void TestNfcOverlay::timerGoesWithItsOverlay()
{
    auto banner = std::make_unique<Banner>();
    QVERIFY(banner->display());
    const QPointer<QTimer> timer = banner->d->timer;
    QVERIFY(timer->isActive());
    QVERIFY(banner->overlay.findChildren<QTimer *>().contains(timer));
    banner.reset();
    QVERIFY(!timer);
}

void TestNfcOverlay::wholeIndicationInRealTime()
{
    Banner banner;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(banner.display());
    QTRY_COMPARE(banner.factor(), 1.0F);
    QTRY_VERIFY_WITH_TIMEOUT(banner.isSlidingOut(), 60000);
    QVERIFY2(clock.elapsed() >= holdTime, qPrintable(QString::number(clock.elapsed())));
    QTRY_VERIFY(banner.isHidden());
    QVERIFY2(clock.elapsed() >= holdTime + slideTime - frame, qPrintable(QString::number(clock.elapsed())));
}

void TestNfcOverlay::bannerStaysForTwoSecondsAfterTheLastIndication()
{
    Banner banner;
    QVERIFY(banner.display());
    QTRY_VERIFY(banner.d->timer->remainingTime() < holdTime / 2);
    QElapsedTimer clock;
    clock.start();
    banner.overlay.showIndication();
    QTRY_VERIFY_WITH_TIMEOUT(banner.isSlidingOut(), 60000);
    QVERIFY2(clock.elapsed() >= holdTime, qPrintable(QString::number(clock.elapsed())));
}

void TestNfcOverlay::maskIsTheStrip_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<M::OrientationAngle>("angle");
    QTest::addColumn<QRect>("strip");
    QTest::newRow("upright, at 0") << upright << M::Angle0 << QRect(0, 0, 480, height);
    QTest::newRow("upright, at 90") << upright << M::Angle90 << QRect(480 - height, 0, height, 480);
    QTest::newRow("upright, at 180") << upright << M::Angle180 << QRect(0, 854 - height, 480, height);
    QTest::newRow("upright, at 270") << upright << M::Angle270 << QRect(0, 0, height, 480);
    QTest::newRow("wide, at 0") << wide << M::Angle0 << QRect(0, 0, 854, height);
    QTest::newRow("wide, at 90") << wide << M::Angle90 << QRect(854 - height, 0, height, 854);
    QTest::newRow("wide, at 180") << wide << M::Angle180 << QRect(0, 480 - height, 854, height);
    QTest::newRow("wide, at 270") << wide << M::Angle270 << QRect(0, 0, height, 854);
}

void TestNfcOverlay::maskIsTheStrip()
{
    QFETCH(QSize, window);
    QFETCH(M::OrientationAngle, angle);
    QFETCH(QRect, strip);
    Banner turnedBefore(window);
    turnedBefore.overlay.sceneManager()->setOrientationAngle(angle);
    QVERIFY(turnedBefore.display());
    QCOMPARE(turnedBefore.overlay.mask(), QRegion(strip));

    Banner turnedMeanwhile(window);
    QVERIFY(turnedMeanwhile.display());
    turnedMeanwhile.overlay.sceneManager()->setOrientationAngle(angle);
    QCOMPARE(turnedMeanwhile.overlay.mask(), QRegion(strip));
}

void TestNfcOverlay::maskIsTheWholeHeightBeforeThereIsABanner()
{
    Banner banner;
    banner.overlay.showIndication();
    QVERIFY(!banner.d->item);
    banner.overlay.sceneManager()->setOrientationAngle(M::Angle180);
    QCOMPARE(banner.overlay.mask(), QRegion(0, 0, 480, 854));
    QTRY_COMPARE(banner.overlay.mask(), QRegion(0, 854 - height, 480, height));
}

void TestNfcOverlay::maskIsAwayWhileTheScreenTurns()
{
    Banner banner;
    QVERIFY(banner.display());
    int turns = 0;
    connect(banner.overlay.sceneManager(), &MSceneManager::orientationAboutToChange, this, [&] {
        QVERIFY(banner.overlay.mask().isEmpty());
        ++turns;
    });
    for (const M::OrientationAngle angle : {M::Angle90, M::Angle270, M::Angle0, M::Angle180}) {
        banner.overlay.sceneManager()->setOrientationAngle(angle);
        QVERIFY(!banner.overlay.mask().isEmpty());
    }
    QCOMPARE(turns, 4);
}

void TestNfcOverlay::maskStaysWhenNothingIsShown()
{
    Banner banner;
    const QRegion mask(1, 2, 3, 4);
    banner.overlay.setMask(mask);
    banner.overlay.sceneManager()->setOrientationAngle(M::Angle90);
    QCOMPARE(banner.overlay.mask(), mask);
    QVERIFY(banner.display());
    QVERIFY(banner.overlay.mask() != mask);
    banner.overlay.hideIndication();
    banner.slideTo(slideTime);
    banner.overlay.setMask(mask);
    banner.overlay.sceneManager()->setOrientationAngle(M::Angle0);
    QCOMPARE(banner.overlay.mask(), mask);
    QCOMPARE(banner.d->item->rotation(), 90.0);
}

void TestNfcOverlay::bannerTurnsWithTheScreen_data()
{
    QTest::addColumn<M::OrientationAngle>("angle");
    QTest::addColumn<QRectF>("place");
    QTest::newRow("0") << M::Angle0 << QRectF(0, 0, 854, height);
    QTest::newRow("90") << M::Angle90 << QRectF(480 - height, 0, height, 480);
    QTest::newRow("180") << M::Angle180 << QRectF(480 - 854, 854 - height, 854, height);
    QTest::newRow("270") << M::Angle270 << QRectF(0, 854 - 480, height, 480);
}

void TestNfcOverlay::bannerTurnsWithTheScreen()
{
    QFETCH(M::OrientationAngle, angle);
    QFETCH(QRectF, place);
    Banner banner;
    QVERIFY(banner.display());
    banner.overlay.sceneManager()->setOrientationAngle(angle);
    banner.slideTo(slideTime);
    QCOMPARE(banner.d->item->sceneBoundingRect(), place);
}

// A compositor that turns the screen gives the window another size, and the angle stays 0.
void TestNfcOverlay::bannerIsWholeInAWideWindow()
{
    Banner banner(wide);
    QVERIFY(banner.display());
    banner.slideTo(slideTime);
    QCOMPARE(banner.overlay.sceneManager()->orientationAngle(), M::Angle0);
    QCOMPARE(banner.d->item->sceneBoundingRect(), QRectF(0, 0, wide.width(), height));
    QCOMPARE(banner.overlay.mask(), QRegion(0, 0, wide.width(), height));
}

void TestNfcOverlay::bannerFollowsHalfATurn()
{
    Banner banner;
    QVERIFY(banner.display());
    banner.slideTo(100);
    banner.overlay.sceneManager()->setOrientationAngle(M::Angle180);
    QCOMPARE(banner.factor(), 0.5F);
    QCOMPARE(banner.d->item->pos(), QPointF(480, 854 + height / 2));
    QVERIFY(banner.isSlidingIn());
}

QTEST_MAIN(TestNfcOverlay)
#include "tst_nfcoverlay.moc"
