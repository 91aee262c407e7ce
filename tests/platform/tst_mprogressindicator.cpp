// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <limits>

#include <QGraphicsScene>

#include <MProgressIndicator>

#include "touchtest.h"

using namespace TouchTest;

class TestMProgressIndicator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void valueStaysInItsRange();
    void minimumAndMaximumMoveEachOther();
    void barFillsFromItsStart();
    void extremeRangesAreDrawn();
    void visibleSpinnerTurns();
};

void TestMProgressIndicator::valueStaysInItsRange()
{
    MProgressIndicator bar;
    QCOMPARE(bar.viewType(), MProgressIndicator::barType);
    QCOMPARE(bar.minimum(), 0);
    QCOMPARE(bar.maximum(), 100);
    QCOMPARE(bar.value(), 0);
    bar.setValue(40);
    QCOMPARE(bar.value(), 40);
    bar.setValue(400);
    QCOMPARE(bar.value(), 100);
    bar.setValue(-1);
    QCOMPARE(bar.value(), 0);
    bar.setMaximum(5000);
    bar.setValue(4000);
    QCOMPARE(bar.value(), 4000);
    bar.setMaximum(3000);
    QCOMPARE(bar.value(), 3000);
    MProgressIndicator spinner(nullptr, MProgressIndicator::spinnerType);
    QCOMPARE(spinner.viewType(), MProgressIndicator::spinnerType);
}

void TestMProgressIndicator::minimumAndMaximumMoveEachOther()
{
    MProgressIndicator bar;
    bar.setMinimum(200);
    QCOMPARE(bar.maximum(), 200);
    QCOMPARE(bar.value(), 200);
    bar.setMaximum(50);
    QCOMPARE(bar.minimum(), 50);
    QCOMPARE(bar.value(), 50);
}

void TestMProgressIndicator::barFillsFromItsStart()
{
    MWindow window;
    auto *bar = new MProgressIndicator;
    bar->setStyleName(QStringLiteral("CommonProgressBarInverted"));
    window.scene()->addItem(bar);
    bar->setGeometry(0, 0, 220, 48);
    const auto colorAt = [&](int x) { return picture(window.scene(), bar->rect()).pixelColor(x, 24); };
    const QColor empty = colorAt(30);
    bar->setValue(50);
    QVERIFY(colorAt(30) != empty);
    QCOMPARE(colorAt(200), empty);
    bar->setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(colorAt(20), empty);
    QVERIFY(colorAt(190) != empty);
}

void TestMProgressIndicator::extremeRangesAreDrawn()
{
    MWindow window;
    auto *bar = new MProgressIndicator;
    window.scene()->addItem(bar);
    bar->setGeometry(0, 0, 220, 48);
    bar->setMaximum(0);
    const QImage none = picture(window.scene(), bar->rect());
    bar->setMinimum(std::numeric_limits<int>::min());
    bar->setMaximum(std::numeric_limits<int>::max());
    bar->setValue(std::numeric_limits<int>::min());
    QCOMPARE(picture(window.scene(), bar->rect()), none);
    bar->setValue(std::numeric_limits<int>::max());
    QVERIFY(picture(window.scene(), bar->rect()) != none);
}

void TestMProgressIndicator::visibleSpinnerTurns()
{
    MWindow window;
    QVERIFY(activate(&window));
    auto *spinner = new MProgressIndicator(nullptr, MProgressIndicator::spinnerType);
    window.scene()->addItem(spinner);
    spinner->setGeometry(QRectF(QPointF(), spinner->preferredSize()));
    const QImage before = picture(window.scene(), spinner->rect());
    QTRY_VERIFY(picture(window.scene(), spinner->rect()) != before);
}

QTEST_MAIN(TestMProgressIndicator)
#include "tst_mprogressindicator.moc"
