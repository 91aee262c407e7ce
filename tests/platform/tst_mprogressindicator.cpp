// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <limits>

#include <QAbstractEventDispatcher>
#include <QGraphicsScene>

#include <MProgressIndicator>

#include "touchtest.h"

using namespace TouchTest;

namespace {

/** Counts how often an object is woken by a timer. */
class TimerCounter : public QObject
{
public:
    explicit TimerCounter(QObject *watched) : watched(watched) { watched->installEventFilter(this); }

    bool runs() const { return !QAbstractEventDispatcher::instance()->registeredTimers(watched).isEmpty(); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Timer;
        return false;
    }

    int count = 0;

private:
    QObject *const watched;
};

} // namespace

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
    void spinnerStaysInItsArea();
    void spinnerThatNobodySeesSleeps_data();
    void spinnerThatNobodySeesSleeps();
    void barWithoutAWayStaysEmpty();
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

void TestMProgressIndicator::spinnerStaysInItsArea()
{
    MWindow window;
    const QRect area(8, 8, 32, 32);
    const QRect around = area.adjusted(-8, -8, 8, 8);
    const QImage before = picture(window.scene(), around);
    auto *spinner = new MProgressIndicator(nullptr, MProgressIndicator::spinnerType);
    window.scene()->addItem(spinner);
    spinner->setGeometry(area);
    QImage image = picture(window.scene(), around);
    QVERIFY(image != before);
    QPainter(&image).drawImage(area.topLeft(), before, area);
    QCOMPARE(image, before);
}

void TestMProgressIndicator::spinnerThatNobodySeesSleeps_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"hidden window", "minimized window", "hidden spinner", "out of sight"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestMProgressIndicator::spinnerThatNobodySeesSleeps()
{
    QFETCH(QString, way);
    MWindow window;
    QVERIFY(activate(&window));
    auto *spinner = new MProgressIndicator(nullptr, MProgressIndicator::spinnerType);
    window.scene()->addItem(spinner);
    const QRectF place(QPointF(100, 100), spinner->preferredSize());
    spinner->setGeometry(place);
    TimerCounter timers(spinner);
    QTRY_VERIFY(timers.count > 2);

    const auto hide = [&](bool hidden) {
        if (way == QLatin1String("hidden window"))
            window.setVisible(!hidden);
        else if (way == QLatin1String("minimized window"))
            window.setWindowState(hidden ? Qt::WindowMinimized : Qt::WindowNoState);
        else if (way == QLatin1String("hidden spinner"))
            spinner->setVisible(!hidden);
        else
            spinner->setGeometry(place.translated(hidden ? QPointF(2000, 0) : QPointF()));
        window.viewport()->update();
    };
    hide(true);
    // At most the frames that were under way; then the timer has ended.
    QTRY_VERIFY(!timers.runs());
    hide(false);
    timers.count = 0;
    QTRY_VERIFY(timers.count > 2);
}

void TestMProgressIndicator::barWithoutAWayStaysEmpty()
{
    MWindow window;
    auto *bar = new MProgressIndicator;
    window.scene()->addItem(bar);
    bar->setGeometry(0, 0, 220, 48);
    const QImage empty = picture(window.scene(), bar->rect());
    bar->setMinimum(7);
    bar->setMaximum(7);
    bar->setValue(7);
    QCOMPARE(picture(window.scene(), bar->rect()), empty);
}

QTEST_MAIN(TestMProgressIndicator)
#include "tst_mprogressindicator.moc"
