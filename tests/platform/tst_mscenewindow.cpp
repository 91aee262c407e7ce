// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QSignalSpy>

#include <MSceneWindow>

#include "touchtest.h"

using namespace TouchTest;

namespace {

MWindow *windowOf(const MSceneWindow &sceneWindow)
{
    return qobject_cast<MWindow *>(sceneWindow.scene()->views().first());
}

void deleteLaterNow()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class TestMSceneWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void windowIsMadeAndClosedWithTheLastSceneWindow();
    void activeWindowIsUsed();
    void indicationWindowIsNotUsed();
    void hiddenWindowIsNotUsed();
    void sceneWindowFillsTheWindow();
    void appearingInAnotherWindowMovesIt();
    void appearingAgainStaysInItsWindow();
    void disappearingTwiceEmitsOnce();
    void deletingSceneWindowClosesItsWindow();
    void deletedWindowKeepsItsSceneWindows();
    void itemsBelowGetNoTouches();
    void focusIsGivenBack_data();
    void focusIsGivenBack();
    void focusBelowIsKeptForLater_data();
    void focusBelowIsKeptForLater();
    void disabledControlLeavesKeysAlive();
    void minimizedWindowIsNotUsed();
    void withoutAWindowTheActiveOneIsUsed();
    void appearingAgainTakesTheDeletionBack();
    void shadeHasOneColor_data();
    void shadeHasOneColor();
};

void TestMSceneWindow::shadeHasOneColor_data()
{
    QTest::addColumn<qreal>("ratio");
    for (const qreal ratio : {1.0, 1.25, 1.5, 3.0})
        QTest::addRow("%g", ratio) << ratio;
}

void TestMSceneWindow::shadeHasOneColor()
{
    QFETCH(qreal, ratio);
    QGraphicsScene scene;
    auto *shade = new MSceneWindow;
    scene.addItem(shade);
    shade->setStyleName(QStringLiteral("MDialog"));
    shade->setGeometry(0, 0, 60, 200);
    QImage shown = picture(&scene, shade->rect(), ratio);
    shown.setDevicePixelRatio(1);
    QImage even(shown.size(), shown.format());
    even.fill(shown.pixelColor(0, 0));
    QVERIFY(even.pixelColor(0, 0) != QColor(Qt::white));
    QCOMPARE(shown, even);
}

void TestMSceneWindow::windowIsMadeAndClosedWithTheLastSceneWindow()
{
    MSceneWindow first;
    MSceneWindow second;
    first.appear();
    second.appear();
    QPointer<MWindow> window = windowOf(first);
    QVERIFY(window->isVisible());
    QCOMPARE(window->size(), QSize(480, 854));
    QCOMPARE(windowOf(second), window.data());
    first.disappear();
    deleteLaterNow();
    QVERIFY(window->isVisible());
    second.disappear();
    QVERIFY(!window->isVisible());
    deleteLaterNow();
    QVERIFY(!window);
}

void TestMSceneWindow::activeWindowIsUsed()
{
    MWindow first;
    MWindow second;
    QVERIFY(activate(&first));
    QVERIFY(activate(&second));
    first.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    MSceneWindow sceneWindow;
    sceneWindow.appear();
    QCOMPARE(windowOf(sceneWindow), &first);
    QCOMPARE(sceneWindow.sceneManager(), first.sceneManager());
    QVERIFY(sceneWindow.isVisible());
    sceneWindow.disappear();
    deleteLaterNow();
    QVERIFY(first.isVisible());
    QVERIFY(!sceneWindow.sceneManager());
}

void TestMSceneWindow::indicationWindowIsNotUsed()
{
    MWindow indication;
    indication.setWindowFlags(indication.windowFlags() | Qt::WindowDoesNotAcceptFocus);
    indication.show();
    MWindow other;
    other.setAttribute(Qt::WA_X11DoNotAcceptFocus);
    other.show();
    MSceneWindow sceneWindow;
    sceneWindow.appear();
    QVERIFY(windowOf(sceneWindow) != &indication);
    QVERIFY(windowOf(sceneWindow) != &other);
}

void TestMSceneWindow::hiddenWindowIsNotUsed()
{
    MWindow hidden;
    MSceneWindow sceneWindow;
    sceneWindow.appear();
    QVERIFY(windowOf(sceneWindow) != &hidden);
}

void TestMSceneWindow::sceneWindowFillsTheWindow()
{
    MWindow window;
    window.resize(854, 480);
    MSceneWindow sceneWindow;
    sceneWindow.appear(&window);
    QCOMPARE(sceneWindow.sceneBoundingRect(), QRectF(0, 0, 854, 480));
    window.resize(600, 500);
    window.show();
    QCOMPARE(sceneWindow.sceneBoundingRect(), QRectF(0, 0, 600, 500));
}

void TestMSceneWindow::appearingInAnotherWindowMovesIt()
{
    MWindow first;
    MWindow second;
    MSceneWindow sceneWindow;
    sceneWindow.appear(&first);
    sceneWindow.appear(&second);
    QCOMPARE(windowOf(sceneWindow), &second);
    first.close();
    QVERIFY(sceneWindow.isVisible());
}

void TestMSceneWindow::appearingAgainStaysInItsWindow()
{
    MWindow window;
    MSceneWindow sceneWindow;
    sceneWindow.appear(&window);
    sceneWindow.appear(MSceneWindow::KeepWhenDone);
    QCOMPARE(windowOf(sceneWindow), &window);
}

void TestMSceneWindow::disappearingTwiceEmitsOnce()
{
    MWindow window;
    MSceneWindow sceneWindow;
    QSignalSpy disappeared(&sceneWindow, &MSceneWindow::disappeared);
    sceneWindow.disappear();
    QVERIFY(disappeared.isEmpty());
    sceneWindow.appear(&window);
    sceneWindow.disappear();
    sceneWindow.disappear();
    QCOMPARE(disappeared.count(), 1);
}

void TestMSceneWindow::deletingSceneWindowClosesItsWindow()
{
    auto *sceneWindow = new MSceneWindow;
    sceneWindow->appear();
    QPointer<MWindow> window = windowOf(*sceneWindow);
    delete sceneWindow;
    deleteLaterNow();
    QVERIFY(!window);
}

void TestMSceneWindow::deletedWindowKeepsItsSceneWindows()
{
    MSceneWindow kept;
    QPointer<MSceneWindow> destroyed = new MSceneWindow;
    QSignalSpy disappeared(&kept, &MSceneWindow::disappeared);
    auto *window = new MWindow;
    kept.appear(window);
    destroyed->appear(window, MSceneWindow::DestroyWhenDone);
    delete window;
    QCOMPARE(disappeared.count(), 1);
    QVERIFY(!kept.scene());
    deleteLaterNow();
    QVERIFY(!destroyed);
}

void TestMSceneWindow::itemsBelowGetNoTouches()
{
    MWindow window;
    window.show();
    auto *below = new MButton(QStringLiteral("Below"));
    window.scene()->addItem(below);
    below->setGeometry(50, 50, 200, 60);
    QSignalSpy clicked(below, &MButton::clicked);
    MSceneWindow sceneWindow;
    sceneWindow.appear(&window);
    tap(&window, below);
    QVERIFY(clicked.isEmpty());
    sceneWindow.disappear();
    tap(&window, below);
    QCOMPARE(clicked.count(), 1);
}

void TestMSceneWindow::focusIsGivenBack_data()
{
    QTest::addColumn<bool>("onPage");
    QTest::newRow("to a scene window") << true;
    QTest::newRow("to the scene itself") << false;
}

void TestMSceneWindow::focusIsGivenBack()
{
    QFETCH(bool, onPage);
    MWindow window;
    QVERIFY(activate(&window));
    MSceneWindow page;
    auto *first = new MButton(QStringLiteral("First"));
    auto *second = new MButton(QStringLiteral("Second"));
    for (MButton *button : {first, second})
        if (onPage)
            button->setParentItem(&page);
        else
            window.scene()->addItem(button);
    if (onPage)
        page.appear(&window);
    second->setFocus();
    MDialog dialog(M::OkButton);
    MDialog nested(M::OkButton);
    dialog.appear(&window);
    QVERIFY(!second->hasFocus());
    nested.appear(&window);
    dialog.done(0);
    nested.done(0);
    QVERIFY(second->hasFocus());
}

void TestMSceneWindow::focusBelowIsKeptForLater_data()
{
    focusIsGivenBack_data();
}

void TestMSceneWindow::focusBelowIsKeptForLater()
{
    QFETCH(bool, onPage);
    MWindow window;
    QVERIFY(activate(&window));
    MSceneWindow page;
    auto *below = new MButton(QStringLiteral("Below"));
    if (onPage) {
        below->setParentItem(&page);
        page.appear(&window);
    } else {
        window.scene()->addItem(below);
    }
    QSignalSpy clicked(below, &MButton::clicked);
    MDialog dialog(M::OkButton);
    dialog.appear(&window);
    TouchDriver keys(&window);
    keys.key(Qt::Key_Tab);
    const MButton *ok = viewOf(&dialog, dialog.button(M::OkButton));
    QVERIFY(ok->hasFocus());
    below->setFocus();
    QVERIFY(ok->hasFocus());
    below->setFocus(Qt::MouseFocusReason);
    QVERIFY(ok->hasFocus());
    keys.key(Qt::Key_Escape);
    QVERIFY(clicked.isEmpty());
    QVERIFY(!dialog.scene());
    QVERIFY(below->hasFocus());
    keys.key(Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
}

void TestMSceneWindow::disabledControlLeavesKeysAlive()
{
    for (const bool hidden : {false, true}) {
        MWindow window;
        QVERIFY(activate(&window));
        MSceneWindow page;
        auto *button = new MButton(QStringLiteral("Button"), &page);
        page.appear(&window);
        button->setFocus();
        QVERIFY(button->hasFocus());
        if (hidden)
            button->hide();
        else
            button->setEnabled(false);
        QVERIFY(page.hasFocus());
        TouchDriver(&window).key(Qt::Key_Escape);
        QVERIFY(!page.scene());
    }
}

void TestMSceneWindow::minimizedWindowIsNotUsed()
{
    MWindow window;
    QVERIFY(activate(&window));
    window.showMinimized();
    MSceneWindow sceneWindow;
    sceneWindow.appear();
    QVERIFY(windowOf(sceneWindow) != &window);
}

void TestMSceneWindow::withoutAWindowTheActiveOneIsUsed()
{
    MWindow window;
    QVERIFY(activate(&window));
    MSceneWindow sceneWindow;
    sceneWindow.appear(nullptr);
    QCOMPARE(windowOf(sceneWindow), &window);
}

void TestMSceneWindow::appearingAgainTakesTheDeletionBack()
{
    MWindow window;
    QPointer<MSceneWindow> sceneWindow = new MSceneWindow;
    sceneWindow->appear(&window, MSceneWindow::DestroyWhenDone);
    sceneWindow->disappear();
    sceneWindow->appear(&window, MSceneWindow::KeepWhenDone);
    deleteLaterNow();
    QVERIFY(sceneWindow);
    sceneWindow->disappear();
    deleteLaterNow();
    QVERIFY(sceneWindow);
    sceneWindow->appear(&window, MSceneWindow::DestroyWhenDone);
    sceneWindow->disappear();
    QVERIFY(sceneWindow);
    deleteLaterNow();
    QVERIFY(!sceneWindow);
    // It may be deleted while that is still to come.
    sceneWindow = new MSceneWindow;
    sceneWindow->appear(&window, MSceneWindow::DestroyWhenDone);
    sceneWindow->disappear();
    delete sceneWindow;
    deleteLaterNow();
}

QTEST_MAIN(TestMSceneWindow)
#include "tst_mscenewindow.moc"
