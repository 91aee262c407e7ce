// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <functional>

#include <QScroller>

#include <MMessageBox>

#include "scene/mdialog_p.h"
#include "touchtest.h"
#include "widgets/mscrollarea_p.h"

using namespace TouchTest;

namespace {

constexpr int delay = 500; // ms
qint64 queued = 0;         // ms that the next event is late

/** A question in a window that is drawn when the test says so, at times that the test sets. */
class Stage
{
public:
    Stage()
    {
        window.show();
        question.setInputDelay(delay);
        question.appear(&window);
    }

    bool isActive() { return QTest::qWaitForWindowActive(&window); }
    MInputGuard *guard() { return &MDialogPrivate::of(&question)->guard; }
    MButtonModel *model() { return question.button(M::YesButton); }
    MButton *yes() { return viewOf(&question, model()); }

    void draw()
    {
        // A layout may take several rounds.
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        window.viewport()->repaint();
    }
    void pass(int milliseconds)
    {
        finger.wait(milliseconds);
        guard()->ripen();
        draw();
    }
    void ripen()
    {
        draw();
        pass(delay);
    }
    /** Taps on the button that agrees; returns whether that was an answer. */
    bool tap()
    {
        finger.press(finger.at(yes())).lift();
        return question.result() == M::YesButton;
    }

    MWindow window;
    MMessageBox question{QStringLiteral("Call?"), QStringLiteral("112"), M::YesButton | M::NoButton};
    TouchDriver finger{&window};
};

using Change = std::function<void(Stage *)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class TestMInputGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        MInputGuard::setClock([] { return TouchDriver::time() + queued; });
    }
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }
    void cleanup() { queued = 0; }

    void everythingCountsUnlessAsked();
    void inputCountsWhenTheButtonsWereSeenForLongEnough();
    void timeBeforeTheFirstFrameDoesNotCount();
    void pictureIsNoFrame();
    void tapBeforeTheActiveFrameIsLost();
    void tapsInARowAnswerNothing();
    void heldKeyAnswersNothing();
    void doubleTapAnswersOneOfTwoQuestions();
    void olderInputIsLost_data();
    void olderInputIsLost();
    void changeBeginsTheTimeAnew_data();
    void changeBeginsTheTimeAnew();
    void buttonThatMovesEndsThePress();
    void pressThatWasLostIsNotLifted();
    void fingerThatScrollsButtonsGoesOn();
    void refusalCountsAtOnce_data();
    void refusalCountsAtOnce();
    void programsClickAtOnce();
    void buttonsLookInactiveMeanwhile();
    void restingDialogIsNotDrawnAgain();
};

void TestMInputGuard::everythingCountsUnlessAsked()
{
    Stage stage;
    QCOMPARE(MDialog().inputDelay(), 0);
    QCOMPARE(stage.question.inputDelay(), delay);
    stage.question.setInputDelay(-1);
    QCOMPARE(stage.question.inputDelay(), 0);
    QVERIFY(stage.tap());
}

void TestMInputGuard::inputCountsWhenTheButtonsWereSeenForLongEnough()
{
    Stage stage;
    QVERIFY(stage.isActive());
    stage.draw();
    stage.pass(delay - 1);
    stage.finger.key(Qt::Key_Tab).key(Qt::Key_Return);
    QVERIFY(!stage.question.result());
    QVERIFY(!stage.tap());
    stage.ripen();
    QVERIFY(stage.tap());

    stage.question.appear(&stage.window);
    stage.ripen();
    stage.yes()->setFocus(Qt::TabFocusReason);
    stage.finger.key(Qt::Key_Return);
    QCOMPARE(stage.question.clickedButton(), stage.model());
}

void TestMInputGuard::timeBeforeTheFirstFrameDoesNotCount()
{
    Stage stage;
    stage.window.setUpdatesEnabled(false);
    for (int i = 0; i < 3; ++i)
        stage.pass(delay);
    QVERIFY(!stage.tap());
    stage.window.setUpdatesEnabled(true);
    stage.ripen();
    QVERIFY(stage.tap());
}

void TestMInputGuard::pictureIsNoFrame()
{
    Stage stage;
    stage.window.setUpdatesEnabled(false);
    for (int i = 0; i < 3; ++i) {
        picture(stage.window.scene(), stage.window.rect());
        stage.pass(delay);
    }
    QVERIFY(!stage.tap());
}

void TestMInputGuard::tapBeforeTheActiveFrameIsLost()
{
    Stage stage;
    stage.draw();
    stage.window.setUpdatesEnabled(false);
    stage.pass(delay);
    QVERIFY(!stage.tap());
}

void TestMInputGuard::tapsInARowAnswerNothing()
{
    Stage stage;
    stage.draw();
    for (int i = 0; i < 30; ++i) {
        QVERIFY(!stage.tap());
        stage.pass(100);
    }
    stage.pass(delay);
    QVERIFY(stage.tap());
}

void TestMInputGuard::heldKeyAnswersNothing()
{
    Stage stage;
    QVERIFY(stage.isActive());
    stage.yes()->setFocus(Qt::TabFocusReason);
    stage.draw();
    for (int i = 0; i < 30; ++i) {
        stage.finger.key(Qt::Key_Return, i > 0);
        QVERIFY(!stage.question.result());
        stage.pass(100);
    }
}

void TestMInputGuard::doubleTapAnswersOneOfTwoQuestions()
{
    Stage stage;
    MMessageBox upper(QStringLiteral("Call?"), QStringLiteral("113"), M::YesButton | M::NoButton);
    upper.setInputDelay(delay);
    stage.ripen();
    upper.appear(&stage.window);
    stage.draw();
    stage.finger.wait(delay);
    MDialogPrivate::of(&upper)->guard.ripen();
    stage.draw();
    const QPointF place = stage.finger.at(viewOf(&upper, upper.button(M::YesButton)));
    QCOMPARE(place, stage.finger.at(stage.yes()));
    for (int i = 0; i < 2; ++i) {
        stage.finger.press(place).lift();
        stage.pass(100);
    }
    QCOMPARE(upper.result(), int(M::YesButton));
    QVERIFY(!stage.question.result());
    stage.pass(delay);
    QVERIFY(stage.tap());
}

void TestMInputGuard::olderInputIsLost_data()
{
    QTest::addColumn<int>("passed"); // since the frame with active buttons
    QTest::addColumn<int>("late");   // comes the event
    QTest::addColumn<bool>("counts");
    QTest::newRow("fresh") << 1000 << 0 << true;
    QTest::newRow("as old as the frame") << 1000 << 1000 << true;
    QTest::newRow("older than the frame") << 1000 << 1001 << false;
    QTest::newRow("of another clock") << 100'000 << 100'001 << true;
}

void TestMInputGuard::olderInputIsLost()
{
    QFETCH(int, passed);
    QFETCH(int, late);
    QFETCH(bool, counts);
    Stage stage;
    // An event that comes at once, to compare others with.
    stage.finger.press({1, 1}).lift();
    stage.ripen();
    const QPointF place = stage.finger.at(stage.yes());
    stage.finger.wait(passed - late);
    queued = late;
    stage.finger.press(place).lift();
    QCOMPARE(stage.question.result() == M::YesButton, counts);
}

void TestMInputGuard::changeBeginsTheTimeAnew_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row(
        "text of the button", [](Stage *stage) { stage->model()->setText(QStringLiteral("Answer")); });
    row(
        "another button", [](Stage *stage) { stage->question.addButton(QStringLiteral("More")); });
    row(
        "button that goes",
        [](Stage *stage) { stage->question.removeButton(stage->question.button(M::NoButton)); });
    row(
        "title", [](Stage *stage) { stage->question.setTitle(QStringLiteral("Pay?")); });
    row(
        "text", [](Stage *stage) { stage->question.setText(QStringLiteral("Pay?")); });
    row(
        "size of the window", [](Stage *stage) { stage->window.resize(480, 600); });
    row(
        "angle", [](Stage *stage) { stage->window.sceneManager()->setOrientationAngle(M::Angle180); });
    row(
        "direction", [](Stage *stage) { stage->window.setLayoutDirection(Qt::RightToLeft); });
    row("appearing again", [](Stage *stage) { stage->question.appear(&stage->window); });
    row("hidden window", [](Stage *stage) {
        stage->window.hide();
        QCoreApplication::processEvents();
        stage->window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&stage->window));
    });
    row("window that comes to the front", [](Stage *stage) {
        QEvent activated(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&stage->window, &activated);
    });
    row(
        "dialog above",
        [](Stage *stage) {
            MDialog above(M::OkButton);
            above.appear(&stage->window);
            stage->draw();
            above.done(0);
        });
    row("other delay", [](Stage *stage) { stage->question.setInputDelay(delay); });
}

void TestMInputGuard::changeBeginsTheTimeAnew()
{
    QFETCH(Change, change);
    Stage stage;
    QVERIFY(stage.isActive());
    stage.ripen();
    change(&stage);
    QCoreApplication::sendPostedEvents();
    QVERIFY(!stage.tap());
    stage.draw();
    stage.pass(delay - 1);
    QVERIFY(!stage.tap());
    stage.ripen();
    QVERIFY(stage.tap());
}

void TestMInputGuard::buttonThatMovesEndsThePress()
{
    Stage stage;
    stage.ripen();
    const auto look = [&] { return picture(stage.window.scene(), stage.yes()->sceneBoundingRect()); };
    const QImage resting = look();
    const QPointF place = stage.finger.at(stage.yes());
    stage.finger.press(place);
    stage.question.setText(QStringLiteral("Long text. ").repeated(40));
    stage.question.setText(QStringLiteral("113"));
    stage.draw();
    QCOMPARE(stage.finger.at(stage.yes()), place);
    stage.finger.lift();
    QVERIFY(!stage.question.result());
    stage.ripen();
    QCOMPARE(look(), resting);
    QVERIFY(stage.tap());
}

void TestMInputGuard::pressThatWasLostIsNotLifted()
{
    Stage stage;
    stage.draw();
    stage.finger.press(stage.finger.at(stage.yes()));
    stage.ripen();
    stage.finger.lift();
    QVERIFY(!stage.question.result());
}

void TestMInputGuard::fingerThatScrollsButtonsGoesOn()
{
    Stage stage;
    stage.window.resize(200, 120);
    stage.question.setText(QStringLiteral("Long text. ").repeated(40));
    stage.ripen();
    const qreal top = stage.yes()->scenePos().y();
    stage.finger.press({100, 100}).move({100, 10}, 100);
    QTRY_VERIFY(stage.yes()->scenePos().y() < top);
    stage.draw();
    QVERIFY(stage.guard()->isWaiting());
    stage.finger.lift();
    QCOMPARE(QScroller::scroller(MDialogPrivate::of(&stage.question)->bodyArea)->state(),
             QScroller::Scrolling);
}

void TestMInputGuard::refusalCountsAtOnce_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("back") << Qt::Key_Back;
}

void TestMInputGuard::refusalCountsAtOnce()
{
    QFETCH(Qt::Key, key);
    Stage stage;
    QVERIFY(stage.isActive());
    stage.finger.key(key);
    QCOMPARE(stage.question.result(), int(M::CancelButton));
}

void TestMInputGuard::programsClickAtOnce()
{
    Stage stage;
    stage.model()->click();
    QCOMPARE(stage.question.result(), int(M::YesButton));

    stage.question.appear(&stage.window);
    stage.question.accept();
    QCOMPARE(stage.question.result(), int(M::OkButton));
}

void TestMInputGuard::buttonsLookInactiveMeanwhile()
{
    Stage stage;
    const auto look = [&] { return picture(stage.window.scene(), stage.yes()->sceneBoundingRect()); };
    const QImage waiting = look();
    stage.draw();
    stage.pass(delay - 1);
    QCOMPARE(look(), waiting);
    stage.pass(1);
    const QImage active = look();
    QVERIFY(active != waiting);
    stage.yes()->setEnabled(false);
    QCOMPARE(look(), waiting);
    stage.yes()->setEnabled(true);
    QCOMPARE(look(), active);
    stage.question.setInputDelay(delay);
    QCOMPARE(look(), waiting);
    stage.question.setInputDelay(0);
    QCOMPARE(look(), active);
    stage.question.setInputDelay(delay);
    const MButtonModel *added = stage.question.addButton(QStringLiteral("Added"));
    const MButton *view = viewOf(&stage.question, added);
    const QImage late = picture(stage.window.scene(), view->sceneBoundingRect());
    stage.ripen();
    QVERIFY(picture(stage.window.scene(), view->sceneBoundingRect()) != late);
}

void TestMInputGuard::restingDialogIsNotDrawnAgain()
{
    class Frames : public QObject
    {
    public:
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint;
            return false;
        }

        int count = 0;
    };
    Stage stage;
    stage.ripen();
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    Frames frames;
    stage.window.viewport()->installEventFilter(&frames);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(frames.count, 0);
}

QTEST_MAIN(TestMInputGuard)
#include "tst_minputguard.moc"
