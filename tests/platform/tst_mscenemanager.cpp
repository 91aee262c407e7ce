// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

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
    void managerMayGoBeforeItsWindow();
    void twoWindowsMayShareAManager_data();
    void twoWindowsMayShareAManager();
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

void TestMSceneManager::managerMayGoBeforeItsWindow()
{
    MWindow window;
    QVERIFY(TouchTest::activate(&window));
    MDialog dialog(M::OkButton);
    dialog.appear(&window);
    delete window.sceneManager();
    QVERIFY(!window.sceneManager());
    QCOMPARE(dialog.result(), int(M::CancelButton));
    window.resize(300, 300);
    window.setLayoutDirection(Qt::RightToLeft);
    TouchDriver finger(&window);
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Down, Qt::Key_A})
        finger.key(key);
    finger.tap(QPointF(100, 100));
    finger.wheel({100, 100}, -120);
    QCoreApplication::processEvents();
    MDialog later(M::OkButton);
    later.appear(&window);
    QVERIFY(later.scene());
    later.done(0);
    window.close();
}

void TestMSceneManager::twoWindowsMayShareAManager_data()
{
    QTest::addColumn<bool>("firstGoesFirst");
    QTest::newRow("first goes first") << true;
    QTest::newRow("second goes first") << false;
}

void TestMSceneManager::twoWindowsMayShareAManager()
{
    QFETCH(bool, firstGoesFirst);
    MSceneManager manager(this);
    auto first = std::make_unique<MWindow>(&manager);
    auto second = std::make_unique<MWindow>(&manager);
    QVERIFY(TouchTest::activate(first.get()));
    QVERIFY(TouchTest::activate(second.get()));
    second->resize(300, 500);
    QCOMPARE(manager.visibleSceneSize(), QSize(300, 500));
    MDialog dialog(M::OkButton);
    dialog.appear(second.get());
    (firstGoesFirst ? first : second).reset();
    MWindow *left = firstGoesFirst ? second.get() : first.get();
    QCOMPARE(bool(dialog.scene()), firstGoesFirst);
    left->resize(320, 480);
    QCOMPARE(manager.visibleSceneSize(), firstGoesFirst ? QSize(320, 480) : QSize(480, 854));
    TouchDriver finger(left);
    finger.tap(QPointF(5, 5)).key(Qt::Key_Tab).key(Qt::Key_Escape);
    QVERIFY(!dialog.scene());
    left->close();
}

QTEST_MAIN(TestMSceneManager)
#include "tst_mscenemanager.moc"
