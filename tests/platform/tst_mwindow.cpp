// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QSignalSpy>

#include <MTheme>

#include "touchtest.h"

using namespace TouchTest;

namespace {

class CountingWindow : public MWindow
{
public:
    using MWindow::MWindow;

    void enterDisplayEvent() override { ++entered; }

    int entered = 0;
};

} // namespace

class TestMWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void newWindowHasTheThemesSize();
    void windowUsesAndOwnsGivenManager();
    void managerWithParentOutlivesTheWindow();
    void enterDisplayEventComesAtEachShowing();
    void backgroundColorComesFromTheTheme();
    void translucentWindowHasNoBackground();
    void sceneLeavesTheMarginsOfItsWindow();
    void closedWindowCanBeShownAgain();
    void dialogOpenedWhileItsWindowClosesGetsAnotherWindow();
};

void TestMWindow::newWindowHasTheThemesSize()
{
    MWindow window;
    QCOMPARE(window.size(), QSize(480, 854));
    QVERIFY(window.sceneManager());
    QCOMPARE(window.scene(), window.sceneManager()->scene());
}

void TestMWindow::windowUsesAndOwnsGivenManager()
{
    QPointer<MSceneManager> manager = new MSceneManager;
    {
        MWindow window(manager);
        QCOMPARE(window.sceneManager(), manager.data());
        QCOMPARE(window.scene(), manager->scene());
        QCOMPARE(manager->scene()->views().first(), &window);
    }
    QVERIFY(!manager);
}

void TestMWindow::managerWithParentOutlivesTheWindow()
{
    MSceneManager manager(this);
    {
        MWindow window(&manager);
        QCOMPARE(window.sceneManager(), &manager);
    }
    QVERIFY(manager.scene()->views().isEmpty());
    QCOMPARE(manager.visibleSceneSize(), QSize(480, 854));
}

void TestMWindow::enterDisplayEventComesAtEachShowing()
{
    CountingWindow window;
    QCOMPARE(window.entered, 0);
    window.show();
    QTRY_COMPARE(window.entered, 1);
    window.resize(500, 500);
    QTest::qWait(0);
    QCOMPARE(window.entered, 1);
    window.hide();
    window.show();
    QTRY_COMPARE(window.entered, 2);
}

void TestMWindow::backgroundColorComesFromTheTheme()
{
    MWindow window;
    const QColor light = window.grab().toImage().pixelColor(10, 10);
    MTheme::instance()->setVariant(MTheme::Dark);
    const QColor dark = window.grab().toImage().pixelColor(10, 10);
    MTheme::instance()->setVariant(MTheme::Light);
    QVERIFY(light.lightness() > 200);
    QVERIFY(dark.lightness() < 60);
}

void TestMWindow::translucentWindowHasNoBackground()
{
    MWindow window;
    window.setAttribute(Qt::WA_TranslucentBackground);
    QCOMPARE(window.grab().toImage().pixelColor(10, 10).alpha(), 0);
}

void TestMWindow::sceneLeavesTheMarginsOfItsWindow()
{
    struct Framed : MWindow
    {
        Framed() { setViewportMargins(10, 20, 30, 40); }
    } window;
    window.resize(400, 600);
    window.show();
    QCOMPARE(window.scene()->sceneRect(), QRectF(0, 0, 360, 540));
    QCOMPARE(window.viewport()->geometry(), QRect(10, 20, 360, 540));
}

void TestMWindow::closedWindowCanBeShownAgain()
{
    MWindow window;
    window.show();
    window.close();
    window.show();
    MDialog dialog(M::OkButton);
    dialog.appear();
    QCOMPARE(dialog.scene(), window.scene());
}

void TestMWindow::dialogOpenedWhileItsWindowClosesGetsAnotherWindow()
{
    MWindow window;
    window.show();
    MDialog first(M::OkButton);
    MDialog second(M::OkButton);
    connect(&first, &MDialog::finished, &second, [&second] { second.appear(); });
    first.appear();
    QCOMPARE(first.scene(), window.scene());
    window.close();
    QVERIFY(second.scene());
    QVERIFY(second.scene() != window.scene());
    QVERIFY(second.scene()->views().constFirst()->isVisible());
}

QTEST_MAIN(TestMWindow)
#include "tst_mwindow.moc"
