// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QSignalSpy>

#include <MSceneManager>

#include "touchtest.h"

class TestMSceneManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void sizeFollowsWindowAndAngle();
    void everyChangeOfAngleEmitsBothSignals();
    void sameOrImpossibleAngleIsIgnored();
    void sceneWindowsTurnAndSceneDoesNot_data();
    void sceneWindowsTurnAndSceneDoesNot();
    void dialogTakesTouchesAtEveryAngle_data();
    void dialogTakesTouchesAtEveryAngle();
    void slotMayDeleteTheWindow();
    void managerWithoutWindowHasDefaultSize();
};

void TestMSceneManager::sizeFollowsWindowAndAngle()
{
    MWindow window;
    window.resize(854, 480);
    MSceneManager *manager = window.sceneManager();
    QCOMPARE(manager->orientationAngle(), M::Angle0);
    QCOMPARE(manager->orientation(), M::Landscape);
    QCOMPARE(manager->visibleSceneSize(), QSize(854, 480));
    manager->setOrientationAngle(M::Angle90);
    QCOMPARE(manager->orientation(), M::Portrait);
    QCOMPARE(manager->visibleSceneSize(), QSize(480, 854));
    manager->setOrientationAngle(M::Angle180);
    QCOMPARE(manager->visibleSceneSize(), QSize(854, 480));
    window.resize(480, 854);
    QCOMPARE(manager->visibleSceneSize(), QSize(480, 854));
    QCOMPARE(manager->orientation(), M::Portrait);
}

void TestMSceneManager::everyChangeOfAngleEmitsBothSignals()
{
    MWindow window;
    window.resize(854, 480);
    MSceneManager *manager = window.sceneManager();
    QSignalSpy about(manager, &MSceneManager::orientationAboutToChange);
    QSignalSpy finished(manager, &MSceneManager::orientationChangeFinished);
    M::OrientationAngle atAbout = M::Angle270;
    connect(manager, &MSceneManager::orientationAboutToChange, this,
            [&] { atAbout = manager->orientationAngle(); });
    manager->setOrientationAngle(M::Angle180);
    QCOMPARE(atAbout, M::Angle0);
    QCOMPARE(about.count(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(about.last().first().value<M::Orientation>(), M::Landscape);
    manager->setOrientationAngle(M::Angle90);
    QCOMPARE(about.last().first().value<M::Orientation>(), M::Portrait);
    QCOMPARE(finished.last().first().value<M::Orientation>(), M::Portrait);
    QCOMPARE(finished.count(), 2);
}

void TestMSceneManager::sameOrImpossibleAngleIsIgnored()
{
    MSceneManager manager;
    QSignalSpy about(&manager, &MSceneManager::orientationAboutToChange);
    for (const int angle : {0, 45, -90, 360, 1})
        manager.setOrientationAngle(M::OrientationAngle(angle));
    QVERIFY(about.isEmpty());
    QCOMPARE(manager.orientationAngle(), M::Angle0);
}

void TestMSceneManager::sceneWindowsTurnAndSceneDoesNot_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<QPointF>("corner");
    QTest::newRow("0") << 0 << QPointF(0, 0);
    QTest::newRow("90") << 90 << QPointF(480, 0);
    QTest::newRow("180") << 180 << QPointF(480, 854);
    QTest::newRow("270") << 270 << QPointF(0, 854);
}

void TestMSceneManager::sceneWindowsTurnAndSceneDoesNot()
{
    QFETCH(int, angle);
    QFETCH(QPointF, corner);
    MWindow window;
    MSceneWindow sceneWindow;
    sceneWindow.appear(&window);
    window.sceneManager()->setOrientationAngle(M::OrientationAngle(angle));
    QCOMPARE(sceneWindow.mapToScene(QPointF(0, 0)), corner);
    QCOMPARE(sceneWindow.sceneBoundingRect(), QRectF(0, 0, 480, 854));
    QCOMPARE(sceneWindow.size().toSize(), window.sceneManager()->visibleSceneSize());
    QCOMPARE(window.scene()->sceneRect(), QRectF(0, 0, 480, 854));
    QCOMPARE(window.mapFromScene(QPointF(7, 9)), QPoint(7, 9));
}

void TestMSceneManager::dialogTakesTouchesAtEveryAngle_data()
{
    QTest::addColumn<int>("angle");
    for (const int angle : {0, 90, 180, 270})
        QTest::addRow("%d", angle) << angle;
}

void TestMSceneManager::dialogTakesTouchesAtEveryAngle()
{
    QFETCH(int, angle);
    MWindow window;
    window.show();
    MDialog dialog(QStringLiteral("Turned"), M::YesButton | M::NoButton);
    dialog.appear(&window);
    window.sceneManager()->setOrientationAngle(M::OrientationAngle(angle));
    TouchTest::tap(&window, TouchTest::viewOf(&dialog, dialog.button(M::NoButton)));
    QCOMPARE(dialog.result(), 0x10000);
}

void TestMSceneManager::slotMayDeleteTheWindow()
{
    auto *window = new MWindow;
    connect(window->sceneManager(), &MSceneManager::orientationAboutToChange, this, [&] { delete window; });
    QPointer<MWindow> guard = window;
    window->sceneManager()->setOrientationAngle(M::Angle90);
    QVERIFY(!guard);
}

void TestMSceneManager::managerWithoutWindowHasDefaultSize()
{
    MSceneManager manager;
    QCOMPARE(manager.visibleSceneSize(), QSize(480, 854));
    manager.setOrientationAngle(M::Angle270);
    QCOMPARE(manager.visibleSceneSize(), QSize(854, 480));
}

QTEST_MAIN(TestMSceneManager)
#include "tst_mscenemanager.moc"
