// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsLinearLayout>
#include <QScroller>
#include <QSignalSpy>

#include <MButton>
#include <MWidget>

#include "touchtest.h"
#include "widgets/mscrollarea_p.h"

using namespace TouchTest;

namespace {

MWidget *newColumn(int buttons)
{
    auto *column = new MWidget;
    auto *layout = new QGraphicsLinearLayout(Qt::Vertical, column);
    for (int i = 0; i < buttons; ++i)
        layout->addItem(new MButton(QString::number(i)));
    return column;
}

/** A column of buttons, much higher than the window that it is shown in. */
struct ShownArea
{
    ShownArea()
    {
        window.scene()->addItem(area);
        area->setGeometry(0, 0, 480, 854);
        window.show();
    }

    MButton *button(int number) const { return visibleBelow<MButton>(area).at(number); }
    QScroller::State state() const { return QScroller::scroller(area)->state(); }

    /** Returns the middle of the first button that is seen whole. */
    MButton *seenButton() const
    {
        const QList<MButton *> buttons = visibleBelow<MButton>(area);
        for (MButton *button : buttons)
            if (button->sceneBoundingRect().top() > 100)
                return button;
        return nullptr;
    }

    MWindow window;
    MScrollArea *area = new MScrollArea(newColumn(100));
    TouchDriver finger{&window};
};

constexpr QPointF low(240, 700);
constexpr QPointF high(240, 100);

} // namespace

class TestMScrollArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void tapThatEndsAFlickPressesNothing();
    void fingerThatEndsAFlickGoesOnScrolling();
    void secondPressOfADoubleTapScrolls();
    void scrollToEndsAFlick();
    void wheelEndsAFlick();
    void areaThatWasHiddenStartsAfresh_data();
    void areaThatWasHiddenStartsAfresh();
    void fingerThatLosesTheMouseScrollsNoMore();
    void wheelAtTheEndMovesNothingElse();
    void horizontalWheelMovesNothing();
    void otherMouseButtonsMoveNothing();
    void indicatorFollowsTheLayoutDirection();
    void itemsAreRevealedInAllAreasAroundThem();
    void contentThatShrinksIsShownFromItsTop();
};

void TestMScrollArea::tapThatEndsAFlickPressesNothing()
{
    ShownArea shown;
    shown.finger.flick(low, high);
    QCOMPARE(shown.state(), QScroller::Scrolling);
    MButton *button = shown.seenButton();
    QSignalSpy clicked(button, &MButton::clicked);
    shown.finger.tap(button);
    QVERIFY(clicked.isEmpty());
    QVERIFY(shown.state() != QScroller::Scrolling);
    QScroller::scroller(shown.area)->stop();
    shown.finger.tap(button);
    QCOMPARE(clicked.count(), 1);
}

void TestMScrollArea::fingerThatEndsAFlickGoesOnScrolling()
{
    ShownArea shown;
    shown.finger.flick(low, high);
    QCOMPARE(shown.state(), QScroller::Scrolling);
    shown.finger.press(low);
    const qreal before = shown.area->position();
    shown.finger.move(high);
    QTRY_VERIFY(shown.area->position() > before + 100);
}

void TestMScrollArea::secondPressOfADoubleTapScrolls()
{
    ShownArea shown;
    shown.finger.tap(low).wait(50).press(low).move(high);
    QTRY_VERIFY(shown.area->position() > 100);
}

void TestMScrollArea::scrollToEndsAFlick()
{
    ShownArea shown;
    shown.finger.flick(low, high);
    QCOMPARE(shown.state(), QScroller::Scrolling);
    shown.area->scrollTo(3000);
    QCOMPARE(shown.state(), QScroller::Inactive);
    QCOMPARE(shown.area->position(), 3000);
}

void TestMScrollArea::wheelEndsAFlick()
{
    ShownArea shown;
    shown.finger.flick(low, high);
    QCOMPARE(shown.state(), QScroller::Scrolling);
    shown.finger.wheel(low, -120);
    QCOMPARE(shown.state(), QScroller::Inactive);
}

void TestMScrollArea::areaThatWasHiddenStartsAfresh_data()
{
    QTest::addColumn<bool>("flicked");
    QTest::addColumn<bool>("removed");
    QTest::newRow("dragged, hidden") << false << false;
    QTest::newRow("dragged, out of its scene") << false << true;
    QTest::newRow("flicked, hidden") << true << false;
    QTest::newRow("flicked, out of its scene") << true << true;
}

void TestMScrollArea::areaThatWasHiddenStartsAfresh()
{
    QFETCH(bool, flicked);
    QFETCH(bool, removed);
    ShownArea shown;
    if (flicked)
        shown.finger.flick(low, high);
    else
        shown.finger.press(low).move({240, 600});
    QCOMPARE(shown.state(), flicked ? QScroller::Scrolling : QScroller::Dragging);
    if (removed) {
        shown.window.scene()->removeItem(shown.area);
        shown.window.scene()->addItem(shown.area);
    } else {
        shown.area->hide();
        shown.area->show();
    }
    QCOMPARE(shown.state(), QScroller::Inactive);
    const qreal before = shown.area->position();
    if (!flicked)
        shown.finger.lift();
    shown.finger.tap({240, 200});
    QCOMPARE(shown.area->position(), before);
}

void TestMScrollArea::fingerThatLosesTheMouseScrollsNoMore()
{
    ShownArea shown;
    shown.finger.press(low);
    QCOMPARE(shown.state(), QScroller::Pressed);
    shown.window.scene()->mouseGrabberItem()->ungrabMouse();
    QCOMPARE(shown.state(), QScroller::Inactive);
    shown.finger.lift().press(low).move({240, 600});
    QCOMPARE(shown.state(), QScroller::Dragging);
    shown.window.scene()->mouseGrabberItem()->ungrabMouse();
    QCOMPARE(shown.state(), QScroller::Inactive);
}

void TestMScrollArea::wheelAtTheEndMovesNothingElse()
{
    MWindow window;
    window.show();
    auto *content = new MWidget;
    auto *inner = new MScrollArea(newColumn(100), content);
    inner->setGeometry(0, 0, 480, 400);
    content->setMinimumHeight(3000);
    auto *outer = new MScrollArea(content);
    window.scene()->addItem(outer);
    outer->setGeometry(0, 0, 480, 854);
    TouchDriver wheel(&window);
    wheel.wheel({240, 200}, -120);
    QVERIFY(inner->position() > 0);
    for (int i = 0; i < 200; ++i)
        wheel.wheel({240, 200}, -120);
    QCOMPARE(outer->position(), 0);
    wheel.wheel({240, 600}, -120);
    QVERIFY(outer->position() > 0);
}

void TestMScrollArea::horizontalWheelMovesNothing()
{
    ShownArea shown;
    shown.finger.wheel(low, -120, Qt::Horizontal);
    QCOMPARE(shown.area->position(), 0);
}

void TestMScrollArea::otherMouseButtonsMoveNothing()
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        ShownArea shown;
        shown.finger.press(low, button).move(high);
        QCOMPARE(shown.state(), QScroller::Inactive);
        shown.finger.lift();
    }
}

void TestMScrollArea::indicatorFollowsTheLayoutDirection()
{
    ShownArea shown;
    const QGraphicsItem *indicator = shown.area->childItems().first();
    for (QGraphicsItem *child : shown.area->childItems())
        if (child->zValue() > 0)
            indicator = child;
    QVERIFY(indicator->pos().x() > 240);
    shown.window.setLayoutDirection(Qt::RightToLeft);
    shown.area->setLayoutDirection(Qt::RightToLeft);
    QVERIFY(indicator->pos().x() < 240);
}

void TestMScrollArea::itemsAreRevealedInAllAreasAroundThem()
{
    auto *content = new MWidget;
    auto *inner = new MScrollArea(newColumn(100), content);
    inner->setGeometry(0, 2000, 480, 400);
    content->setMinimumHeight(3000);
    MWindow window;
    auto *outer = new MScrollArea(content);
    window.scene()->addItem(outer);
    outer->setGeometry(0, 0, 480, 854);
    const MButton *last = visibleBelow<MButton>(inner).last();
    MScrollArea::revealInAll(last);
    QVERIFY(window.rect().contains(last->sceneBoundingRect().toRect()));
    QVERIFY(inner->sceneBoundingRect().contains(last->sceneBoundingRect()));
    const MButton *first = visibleBelow<MButton>(inner).first();
    MScrollArea::revealInAll(first);
    QVERIFY(inner->sceneBoundingRect().contains(first->sceneBoundingRect()));
}

void TestMScrollArea::contentThatShrinksIsShownFromItsTop()
{
    const ShownArea shown;
    const QList<MButton *> buttons = visibleBelow<MButton>(shown.area);
    const qreal top = buttons.constFirst()->sceneBoundingRect().top();
    QVERIFY(shown.area->scrollTo(100000));
    QVERIFY(buttons.constFirst()->sceneBoundingRect().top() < top);
    qDeleteAll(buttons.mid(3));
    QTRY_COMPARE(buttons.constFirst()->sceneBoundingRect().top(), top);
    QVERIFY(!shown.area->scrollTo(1));
}

QTEST_MAIN(TestMScrollArea)
#include "tst_mscrollarea.moc"
