// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsLinearLayout>
#include <QKeyEvent>
#include <QPointer>

#include <MButton>
#include <MLabel>
#include <MScrollView>

#include "touchtest.h"

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

/** A view of a column of buttons, as large as the window that shows it. */
struct ShownView
{
    explicit ShownView(int buttons)
    {
        view->setWidget(newColumn(buttons));
        window.scene()->addItem(view);
        view->setGeometry(0, 0, 480, 854);
        window.show();
    }

    qreal position() const { return -view->widget()->scenePos().y(); }
    MButton *button(int number) const { return visibleBelow<MButton>(view).at(number); }
    bool shows(const QGraphicsItem *item) const
    {
        return view->sceneBoundingRect().contains(item->sceneBoundingRect());
    }

    MWindow window;
    MScrollView *view = new MScrollView;
    TouchDriver finger{&window};
};

constexpr QPointF low(240, 700);
constexpr QPointF high(240, 100);

} // namespace

class TestMScrollView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void newViewIsEmpty();
    void viewOwnsItsWidget();
    void viewWantsTheSizeOfItsWidgetButTakesAnyHeight();
    void viewFollowsTheSizeOfItsWidget();
    void viewAsksForTheHeightInItsWidth();
    void widgetThatFitsFillsTheView();
    void widgetThatFitsStaysWhereItIs();
    void fingerScrolls();
    void wheelScrolls();
    void tapThatEndsAFlickPressesNothing();
    void pageKeysScroll();
    void otherKeysAreLeftToOthers();
    void focusByKeyboardScrollsIntoSight();
    void newWidgetIsShownFromItsTop();
};

void TestMScrollView::newViewIsEmpty()
{
    const MScrollView view;
    QCOMPARE(view.widget(), nullptr);
    QCOMPARE(view.effectiveSizeHint(Qt::PreferredSize), QSizeF(0, 0));
}

void TestMScrollView::viewOwnsItsWidget()
{
    auto *view = new MScrollView;
    const QPointer<QGraphicsWidget> first(new MLabel);
    const QPointer<QGraphicsWidget> second(new MLabel);
    view->setWidget(first);
    QCOMPARE(view->widget(), first);
    view->setWidget(second);
    QVERIFY(!first);
    QCOMPARE(view->widget(), second);
    delete view;
    QVERIFY(!second);
    MScrollView emptied;
    const QPointer<QGraphicsWidget> third(new MLabel);
    emptied.setWidget(third);
    emptied.setWidget(nullptr);
    QVERIFY(!third);
    QCOMPARE(emptied.widget(), nullptr);
}

void TestMScrollView::viewWantsTheSizeOfItsWidgetButTakesAnyHeight()
{
    MScrollView view;
    MWidget *column = newColumn(100);
    view.setWidget(column);
    QCOMPARE(view.effectiveSizeHint(Qt::PreferredSize), column->effectiveSizeHint(Qt::PreferredSize));
    QCOMPARE(view.effectiveSizeHint(Qt::MinimumSize),
             QSizeF(column->effectiveSizeHint(Qt::MinimumSize).width(), 0));
}

// In the layout that the view stands in.
void TestMScrollView::viewFollowsTheSizeOfItsWidget()
{
    MWindow window;
    auto *page = new MWidget;
    auto *layout = new QGraphicsLinearLayout(Qt::Vertical, page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *view = new MScrollView;
    layout->addItem(view);
    layout->addStretch(1);
    window.scene()->addItem(page);
    page->resize(480, 854);
    window.show();
    auto *label = new MLabel(QStringLiteral("one"));
    view->setWidget(label);
    QTRY_COMPARE(view->size().height(), label->effectiveSizeHint(Qt::PreferredSize).height());
    const qreal before = view->size().height();
    QVERIFY(before > 0);
    label->setText(QStringLiteral("one\ntwo"));
    QTRY_VERIFY(view->size().height() > before);
    QCOMPARE(label->size().height(), view->size().height());
    view->setWidget(nullptr);
    QTRY_COMPARE(view->size().height(), 0);
}

void TestMScrollView::viewAsksForTheHeightInItsWidth()
{
    MWidget page;
    auto *layout = new QGraphicsLinearLayout(Qt::Vertical, &page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *view = new MScrollView;
    auto *label = new MLabel(QStringLiteral("many words that need several lines where there is little room"));
    label->setWordWrap(true);
    view->setWidget(label);
    layout->addItem(view);
    layout->addStretch(1);
    page.resize(100, 854);
    layout->activate();
    const qreal narrow = view->size().height();
    QCOMPARE(narrow, label->effectiveSizeHint(Qt::PreferredSize, QSizeF(100, -1)).height());
    page.resize(480, 854);
    layout->activate();
    QVERIFY(view->size().height() < narrow);
}

void TestMScrollView::widgetThatFitsFillsTheView()
{
    const ShownView shown(2);
    QCOMPARE(shown.view->widget()->size(), shown.view->size());
}

void TestMScrollView::widgetThatFitsStaysWhereItIs()
{
    ShownView shown(2);
    shown.finger.press(low).move(high).lift().wheel(low, -120);
    QCOMPARE(shown.position(), 0);
}

void TestMScrollView::fingerScrolls()
{
    ShownView shown(100);
    shown.finger.press(low).move(high);
    QTRY_VERIFY(shown.position() > 100);
}

void TestMScrollView::wheelScrolls()
{
    ShownView shown(100);
    shown.finger.wheel(low, -120);
    QCOMPARE(shown.position(), 120);
}

void TestMScrollView::tapThatEndsAFlickPressesNothing()
{
    ShownView shown(100);
    const QList<MButton *> buttons = visibleBelow<MButton>(shown.view);
    int clicked = 0;
    for (const MButton *button : buttons)
        connect(button, &MButton::clicked, this, [&clicked] { ++clicked; });
    shown.finger.flick(low, high).tap({240, 400});
    QCOMPARE(clicked, 0);
}

void TestMScrollView::pageKeysScroll()
{
    ShownView shown(100);
    QVERIFY(activate(&shown.window));
    shown.button(0)->setFocus();
    const auto press = [&shown](Qt::Key key) { QTest::keyClick(shown.window.viewport(), key); };
    press(Qt::Key_PageDown);
    const qreal page = shown.position();
    QVERIFY(page > 400);
    QVERIFY(page < 854);
    press(Qt::Key_PageDown);
    QCOMPARE(shown.position(), 2 * page);
    press(Qt::Key_PageUp);
    QCOMPARE(shown.position(), page);
}

void TestMScrollView::otherKeysAreLeftToOthers()
{
    const ShownView shown(100);
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_A}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.ignore(); // as a key that somebody else has let pass
        shown.window.scene()->sendEvent(shown.view, &event);
        QCOMPARE(event.isAccepted(), key == Qt::Key_PageDown);
    }
}

void TestMScrollView::focusByKeyboardScrollsIntoSight()
{
    ShownView shown(100);
    QVERIFY(activate(&shown.window));
    MButton *last = shown.button(99);
    QVERIFY(!shown.shows(last));
    last->setFocus(Qt::TabFocusReason);
    QVERIFY(shown.shows(last));
    shown.button(0)->setFocus(Qt::TabFocusReason);
    QVERIFY(shown.shows(shown.button(0)));
}

void TestMScrollView::newWidgetIsShownFromItsTop()
{
    ShownView shown(100);
    shown.finger.wheel(low, -1200);
    QVERIFY(shown.position() > 0);
    shown.view->setWidget(newColumn(100));
    QCoreApplication::processEvents();
    QCOMPARE(shown.position(), 0);
}

QTEST_MAIN(TestMScrollView)
#include "tst_mscrollview.moc"
