// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <functional>

#include <QGraphicsPixmapItem>
#include <QSignalSpy>

#include <MMessageBox>

#include "scene/mdialog_p.h"
#include "scene/mscenemanager_p.h"
#include "theme/mtheme_p.h"
#include "touchtest.h"
#include "widgets/mscrollarea_p.h"

using namespace TouchTest;

namespace {

constexpr int delay = 500; // ms

/** One that may not want to go. */
class Question : public MMessageBox
{
public:
    using MMessageBox::MMessageBox;

    void dismiss() override
    {
        if (!stays)
            MMessageBox::dismiss();
    }

    bool stays = false;
};

/** A question in a window that is drawn when the test says so. */
class Stage
{
public:
    Stage()
    {
        window.show();
        ask();
    }

    void ask() { question.appear(&window); }
    QGraphicsWidget *card() { return MDialogPrivate::of(&question)->card; }
    MSlide *slide() { return &MSceneManagerPrivate::of(window.sceneManager())->slide; }
    qreal down() { return card()->transform().dy(); }
    void draw()
    {
        // A layout may take several rounds.
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        window.viewport()->repaint();
    }
    /** Returns whether the question has come to its place. */
    bool settle()
    {
        draw();
        return QTest::qWaitFor([this] { return !slide()->isMoving() && down() == 0; });
    }
    /** Lets the time pass after which the question takes input. */
    void ripen()
    {
        draw();
        finger.wait(delay);
        MDialogPrivate::of(&question)->guard.ripen();
        draw();
    }
    int pictures()
    {
        const QList<QGraphicsItem *> items = window.scene()->items();
        return int(std::count_if(items.cbegin(), items.cend(), [](QGraphicsItem *item) {
            return dynamic_cast<QGraphicsPixmapItem *>(item);
        }));
    }
    QPointF top() { return window.mapFromScene(card()->sceneBoundingRect().topLeft()) + QPointF(100, 12); }
    /** Drags the card from its top, slowly enough for not being a flick, and lifts the finger. */
    void drag(const QPointF &way) { finger.wait(1000).press(top()).move(top() + way, 1000).lift(); }
    bool isAnswered() const { return question.result() != 0; }
    bool isRefused() const { return question.result() == M::CancelButton && !question.clickedButton(); }

    MWindow window;
    Question question{QStringLiteral("Call?"), QStringLiteral("112"), M::YesButton | M::NoButton};
    TouchDriver finger{&window};
};

using Gesture = std::function<void(Stage *)>;

void dragFar(Stage *stage)
{
    stage->drag({0, stage->card()->size().height()});
}

void tapBeside(Stage *stage)
{
    stage->finger.tap(QPointF(100, 100));
}

void addGestures()
{
    QTest::addColumn<Gesture>("gesture");
    QTest::newRow("drag") << Gesture(dragFar);
    QTest::newRow("tap beside") << Gesture(tapBeside);
}

} // namespace

Q_DECLARE_METATYPE(Gesture)

class TestMSlide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("QUENZO_TOUCH_MOTION", "full");
        MInputGuard::setClock([] { return TouchDriver::time(); });
    }
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }
    void cleanup() { MThemePrivate::instance()->reducedMotion = false; }

    void questionComesInFromItsFirstFrame();
    void slideTakesTheTimeThatFeelsRight();
    void nothingSlidesWhereMotionIsReduced();
    void pageDoesNotSlide();
    void pictureLeavesWhenTheQuestionHasGone();
    void pictureLooksLikeTheQuestion();
    void pictureLeavesFromWhereTheFingerHasTheQuestion();
    void windowClosesWhenThePictureHasLeft();
    void nextQuestionComesIntoTheWindowOfTheLast();
    void pictureKeepsItsColorsBehindTheNextQuestion_data();
    void pictureKeepsItsColorsBehindTheNextQuestion();
    void answeredQuestionLeavesBehindTheOneThatItBrings();
    void questionThatIsCoveredLeavesNoPicture();
    void pictureOutlivesTheNextQuestion();
    void deletedQuestionLeavesNoPicture();
    void movingButtonsTakeNoInput();
    void gestureRefuses_data();
    void gestureRefuses();
    void flickRefuses();
    void dragGoesTheWayThatTheUserSees_data();
    void dragGoesTheWayThatTheUserSees();
    void shortDragGoesBack();
    void questionThatStaysGoesBack();
    void otherDragsMoveNothing_data();
    void otherDragsMoveNothing();
    void dragFromAButtonPressesNothing();
    void tapThatEndsElsewhereRefusesNothing();
    void scrolledContentsAreNotDragged();
    void gestureBeforeTheDelayRefusesNothing_data();
    void gestureBeforeTheDelayRefusesNothing();
    void fingerThatWasThereBeforeRefusesNothing();
    void nextQuestionEndsTheDrag();
    void buttonsOnTheirWayBackTakeNoInput();
    void refusedQuestionCanBeAskedAgain();
    void questionBelowHasNoShade();
};

void TestMSlide::questionComesInFromItsFirstFrame()
{
    Stage stage;
    const qreal whole = stage.window.height() - stage.card()->y();
    QCOMPARE(stage.down(), whole);
    QTest::qWait(1);
    QVERIFY(stage.slide()->isMoving());
    QVERIFY(stage.settle());
    QVERIFY(!stage.isAnswered());
}

void TestMSlide::slideTakesTheTimeThatFeelsRight()
{
    const qreal duration = MThemePrivate::ownStyle("MSlide").duration;
    QVERIFY2(duration >= 200 && duration <= 250, qPrintable(QString::number(duration)));
    Stage stage;
    stage.draw();
    const auto animations = [&stage] { return stage.slide()->findChildren<QVariantAnimation *>(); };
    QCOMPARE(animations().size(), 1);
    QCOMPARE(animations().first()->duration(), int(duration));
    stage.question.reject();
    QCOMPARE(animations().size(), 2);
    QCOMPARE(animations().last()->duration(), int(duration));
}

void TestMSlide::nothingSlidesWhereMotionIsReduced()
{
    MThemePrivate::instance()->reducedMotion = true;
    Stage stage;
    QCOMPARE(stage.down(), 0);
    QVERIFY(!stage.slide()->isMoving());
    stage.question.reject();
    QCOMPARE(stage.pictures(), 0);
}

void TestMSlide::pageDoesNotSlide()
{
    MWindow window;
    window.show();
    MSceneWindow page;
    QVERIFY(!page.isDraggable());
    page.appear(&window);
    QVERIFY(page.transform().isIdentity());
    MSceneWindow sheet;
    sheet.setDraggable(true);
    sheet.appear(&window);
    QCOMPARE(sheet.transform().dy(), window.height());
}

void TestMSlide::pictureLeavesWhenTheQuestionHasGone()
{
    Stage stage;
    QVERIFY(stage.settle());
    QSignalSpy disappeared(&stage.question, &MSceneWindow::disappeared);
    stage.question.reject();
    QCOMPARE(disappeared.count(), 1);
    QVERIFY(!stage.question.scene());
    QCOMPARE(stage.pictures(), 1);
    QTRY_COMPARE(stage.pictures(), 0);
    QVERIFY(stage.window.isVisible());
}

void TestMSlide::pictureLooksLikeTheQuestion()
{
    Stage stage;
    QVERIFY(stage.settle());
    const QRectF place = stage.card()->sceneBoundingRect();
    // The corners are round, and what is behind them differs.
    const QRectF inside = place.adjusted(40, 8, -40, -8).toAlignedRect();
    const qreal ratio = stage.window.devicePixelRatioF();
    const QImage before = picture(stage.window.scene(), inside, ratio);
    stage.question.reject();
    QCOMPARE(stage.pictures(), 1);
    QCOMPARE(picture(stage.window.scene(), inside, ratio), before);
}

void TestMSlide::pictureLeavesFromWhereTheFingerHasTheQuestion()
{
    Stage stage;
    QVERIFY(stage.settle());
    stage.ripen();
    stage.finger.wait(1000).press(stage.top()).move(stage.top() + QPointF(0, 40), 1000);
    QVERIFY(stage.down() > 0);
    const QRect shown = stage.card()->sceneBoundingRect().toRect();
    stage.question.reject();
    const QList<QGraphicsItem *> items = stage.window.scene()->items();
    const auto picture = std::find_if(items.cbegin(), items.cend(), [](QGraphicsItem *item) {
        return dynamic_cast<QGraphicsPixmapItem *>(item);
    });
    QVERIFY(picture != items.cend());
    QCOMPARE((*picture)->sceneBoundingRect().toRect().top(), shown.top());
}

void TestMSlide::windowClosesWhenThePictureHasLeft()
{
    MMessageBox question(QStringLiteral("Call?"), QStringLiteral("112"), M::YesButton);
    question.appear();
    const QPointer<MWindow> window = qobject_cast<MWindow *>(question.scene()->views().first());
    question.reject();
    QVERIFY(window && window->isVisible());
    QTRY_VERIFY(!window);
}

void TestMSlide::nextQuestionComesIntoTheWindowOfTheLast()
{
    MMessageBox first(QStringLiteral("Call?"), QStringLiteral("112"), M::YesButton);
    MMessageBox second(QStringLiteral("Open?"), QStringLiteral("example.org"), M::YesButton);
    first.appear();
    QGraphicsView *window = first.scene()->views().first();
    first.reject();
    second.appear();
    QCOMPARE(second.scene()->views().first(), window);
    QTRY_VERIFY(!MSceneManagerPrivate::of(second.sceneManager())->slide.isLeaving());
    QVERIFY(window->isVisible());
}

void TestMSlide::pictureKeepsItsColorsBehindTheNextQuestion_data()
{
    QTest::addColumn<bool>("isAboveAnother");
    QTest::newRow("alone") << false;
    QTest::newRow("above another question") << true;
}

void TestMSlide::pictureKeepsItsColorsBehindTheNextQuestion()
{
    QFETCH(bool, isAboveAnother);
    MMessageBox below(QStringLiteral("Pair?"), QStringLiteral("Phone"), M::YesButton);
    MMessageBox next(QStringLiteral("Open?"), QStringLiteral("example.org"), M::YesButton);
    Stage stage;
    if (isAboveAnother) {
        below.appear(&stage.window);
        stage.question.disappear();
        stage.ask();
    }
    QVERIFY(stage.settle());
    QTRY_VERIFY(!stage.slide()->isLeaving());
    const QRectF place = stage.card()->sceneBoundingRect();
    const QRectF inside = place.adjusted(40, 8, -40, -8).toAlignedRect();
    const QImage card = picture(stage.window.scene(), inside);
    const QImage shade = picture(stage.window.scene(), QRectF(0, 0, 100, 100));
    stage.question.reject();
    next.appear(&stage.window);
    // Its card waits below the screen for the first frame.
    QCOMPARE(picture(stage.window.scene(), inside), card);
    QCOMPARE(picture(stage.window.scene(), QRectF(0, 0, 100, 100)), shade);
    stage.slide()->follow(&next, 0);
    const QRectF over =
        MDialogPrivate::of(&next)->card->sceneBoundingRect().adjusted(40, 8, -40, -8).toAlignedRect();
    const QImage inFront = picture(stage.window.scene(), over);
    QTRY_COMPARE(stage.pictures(), 0);
    QCOMPARE(picture(stage.window.scene(), over), inFront);
}

void TestMSlide::answeredQuestionLeavesBehindTheOneThatItBrings()
{
    MMessageBox next(QStringLiteral("Open?"), QStringLiteral("example.org"), M::YesButton);
    Stage stage;
    QVERIFY(stage.settle());
    const QRectF inside = stage.card()->sceneBoundingRect().adjusted(40, 8, -40, -8).toAlignedRect();
    const QImage card = picture(stage.window.scene(), inside);
    connect(&stage.question, &MDialog::finished, &next, [&] { next.appear(&stage.window); });
    stage.question.reject();
    QCOMPARE(stage.pictures(), 1);
    QCOMPARE(picture(stage.window.scene(), inside), card);
    QTRY_COMPARE(stage.pictures(), 0);
}

void TestMSlide::questionThatIsCoveredLeavesNoPicture()
{
    MMessageBox next(QStringLiteral("Open?"), QStringLiteral("example.org"), M::YesButton);
    Stage stage;
    QVERIFY(stage.settle());
    next.appear(&stage.window);
    QVERIFY(QTest::qWaitFor([&stage] {
        stage.draw();
        return !stage.slide()->isMoving();
    }));
    stage.question.reject();
    QCOMPARE(stage.pictures(), 0);
}

void TestMSlide::pictureOutlivesTheNextQuestion()
{
    Stage stage;
    QVERIFY(stage.settle());
    stage.question.reject();
    auto next = std::make_unique<MMessageBox>(QString(), QStringLiteral("example.org"), M::YesButton);
    next->appear(&stage.window);
    QCOMPARE(stage.pictures(), 1);
    next.reset();
    QCOMPARE(stage.pictures(), 1);
    QTRY_COMPARE(stage.pictures(), 0);
    QVERIFY(!stage.slide()->isLeaving());
}

void TestMSlide::deletedQuestionLeavesNoPicture()
{
    MWindow window;
    window.show();
    auto question = std::make_unique<MMessageBox>(QString(), QStringLiteral("112"), M::YesButton);
    question->appear(&window);
    question.reset();
    QVERIFY(!MSceneManagerPrivate::of(window.sceneManager())->slide.isLeaving());
}

void TestMSlide::movingButtonsTakeNoInput()
{
    Stage stage;
    stage.question.setInputDelay(delay);
    stage.draw();
    QVERIFY(stage.slide()->isMoving());
    QVERIFY(!MDialogPrivate::of(&stage.question)->guard.isSeen());
    QVERIFY(stage.settle());
    stage.draw();
    QVERIFY(MDialogPrivate::of(&stage.question)->guard.isSeen());
}

void TestMSlide::gestureRefuses_data()
{
    addGestures();
}

void TestMSlide::gestureRefuses()
{
    QFETCH(Gesture, gesture);
    Stage stage;
    stage.question.setInputDelay(delay);
    QVERIFY(stage.settle());
    stage.ripen();
    gesture(&stage);
    QVERIFY(stage.isRefused());
}

void TestMSlide::flickRefuses()
{
    Stage stage;
    stage.question.setText(QStringLiteral("Line\n").repeated(10));
    QVERIFY(stage.settle());
    // Not far enough for a slow drag.
    QVERIFY(stage.card()->size().height() > 300);
    stage.finger.flick(stage.top(), stage.top() + QPointF(0, 90));
    QVERIFY(stage.isRefused());
}

void TestMSlide::dragGoesTheWayThatTheUserSees_data()
{
    QTest::addColumn<M::OrientationAngle>("angle");
    QTest::addColumn<QPointF>("down");
    QTest::newRow("90") << M::Angle90 << QPointF(-1, 0);
    QTest::newRow("180") << M::Angle180 << QPointF(0, -1);
    QTest::newRow("270") << M::Angle270 << QPointF(1, 0);
}

void TestMSlide::dragGoesTheWayThatTheUserSees()
{
    QFETCH(M::OrientationAngle, angle);
    QFETCH(QPointF, down);
    Stage stage;
    stage.window.sceneManager()->setOrientationAngle(angle);
    QVERIFY(stage.settle());
    const QPointF middle = stage.finger.at(stage.card());
    stage.finger.wait(1000).press(middle).move(middle - 300 * down, 1000).lift();
    QVERIFY(!stage.isAnswered());
    stage.finger.wait(1000).press(middle).move(middle + 300 * down, 1000).lift();
    QVERIFY(stage.isRefused());
}

void TestMSlide::shortDragGoesBack()
{
    Stage stage;
    QVERIFY(stage.settle());
    const QPointF place = stage.top();
    stage.finger.wait(1000).press(place).move(place + QPointF(0, 50), 1000);
    // The first pixels may be those of a finger that rests.
    QCOMPARE(stage.down(), 40);
    stage.finger.lift();
    QVERIFY(!stage.isAnswered());
    QVERIFY(stage.slide()->isMoving());
    QVERIFY(stage.settle());
}

void TestMSlide::questionThatStaysGoesBack()
{
    Stage stage;
    QVERIFY(stage.settle());
    stage.ripen();
    stage.question.stays = true;
    dragFar(&stage);
    QVERIFY(!stage.isAnswered());
    QVERIFY(stage.down() > 0);
    QTRY_COMPARE(stage.down(), 0.0);
}

void TestMSlide::otherDragsMoveNothing_data()
{
    QTest::addColumn<QPointF>("way");
    QTest::newRow("up") << QPointF(0, -300);
    QTest::newRow("to the left") << QPointF(-90, 0);
    QTest::newRow("to the right") << QPointF(300, 20);
    QTest::newRow("up and far down") << QPointF(0, -15);
}

void TestMSlide::otherDragsMoveNothing()
{
    QFETCH(QPointF, way);
    Stage stage;
    QVERIFY(stage.settle());
    stage.finger.wait(1000).press(stage.top()).move(stage.top() + way);
    stage.finger.move(stage.top() + QPointF(0, 700), 1000).lift();
    QVERIFY(!stage.isAnswered());
    QCOMPARE(stage.down(), 0);
}

void TestMSlide::dragFromAButtonPressesNothing()
{
    Stage stage;
    QVERIFY(stage.settle());
    const QPointF yes = stage.finger.at(viewOf(&stage.question, stage.question.button(M::YesButton)));
    QSignalSpy clicked(stage.question.button(M::YesButton), &MButtonModel::clicked);
    stage.finger.wait(1000).press(yes).move(yes + QPointF(0, 20), 500).lift();
    QVERIFY(clicked.isEmpty());
    QVERIFY(stage.settle());
    stage.finger.wait(1000).press(yes).move(yes + QPointF(0, 300), 500).lift();
    QVERIFY(clicked.isEmpty());
    QVERIFY(stage.isRefused());
}

void TestMSlide::tapThatEndsElsewhereRefusesNothing()
{
    Stage stage;
    QVERIFY(stage.settle());
    stage.finger.wait(1000).press({100, 100}).move({160, 160}).lift();
    QVERIFY(!stage.isAnswered());
    stage.finger.tap({100, 100}, Qt::RightButton);
    QVERIFY(!stage.isAnswered());
}

void TestMSlide::scrolledContentsAreNotDragged()
{
    Stage stage;
    stage.question.setText(QStringLiteral("Line\n").repeated(200));
    QVERIFY(stage.settle());
    MScrollArea *area = MDialogPrivate::of(&stage.question)->bodyArea;
    QVERIFY(area->scrollTo(300));
    const QPointF middle = stage.finger.at(area);
    stage.finger.wait(1000).press(middle).move(middle + QPointF(0, 100), 500);
    QCOMPARE(stage.down(), 0);
    QTRY_VERIFY(area->position() < 300);
    stage.finger.lift();
    QVERIFY(!stage.isAnswered());
    area->scrollTo(0);
    stage.finger.wait(1000).press(middle).move(middle + QPointF(0, 100), 500);
    QCOMPARE(stage.down(), 90);
}

void TestMSlide::gestureBeforeTheDelayRefusesNothing_data()
{
    addGestures();
}

void TestMSlide::gestureBeforeTheDelayRefusesNothing()
{
    QFETCH(Gesture, gesture);
    Stage stage;
    stage.question.setInputDelay(delay);
    QVERIFY(stage.settle());
    stage.draw();
    gesture(&stage);
    QVERIFY(!stage.isAnswered());
    QCOMPARE(stage.down(), 0);
}

void TestMSlide::fingerThatWasThereBeforeRefusesNothing()
{
    Stage stage;
    stage.question.reject();
    QTRY_COMPARE(stage.pictures(), 0);
    // Where the card will be, and beside it.
    for (const QPointF &place : {QPointF(100, 800), QPointF(100, 100)}) {
        stage.finger.wait(1000).press(place);
        stage.ask();
        QVERIFY(stage.settle());
        stage.finger.move(place + QPointF(0, 500), 1000).lift();
        QVERIFY(stage.window.scene() == stage.question.scene());
        QCOMPARE(stage.down(), 0);
        stage.question.disappear();
        QTRY_COMPARE(stage.pictures(), 0);
    }
    stage.finger.wait(1000).press({100, 100});
    stage.ask();
    QVERIFY(stage.settle());
    stage.finger.lift();
    QVERIFY(stage.question.scene());
}

void TestMSlide::nextQuestionEndsTheDrag()
{
    Stage stage;
    QVERIFY(stage.settle());
    stage.finger.wait(1000).press(stage.top()).move(stage.top() + QPointF(0, 50), 1000);
    MMessageBox next(QStringLiteral("Open?"), QStringLiteral("example.org"), M::YesButton);
    next.appear(&stage.window);
    stage.finger.move(QPointF(100, 850), 1000).lift();
    QVERIFY(!stage.isAnswered());
    QVERIFY(next.scene());
    QCOMPARE(stage.down(), 0);
}

void TestMSlide::buttonsOnTheirWayBackTakeNoInput()
{
    Stage stage;
    stage.question.setInputDelay(delay);
    QVERIFY(stage.settle());
    stage.ripen();
    const QPointF yes = stage.finger.at(viewOf(&stage.question, stage.question.button(M::YesButton)));
    stage.drag({0, 40});
    QVERIFY(stage.slide()->isMoving());
    stage.finger.tap(yes);
    QVERIFY(!stage.isAnswered());
    QVERIFY(stage.settle());
    stage.ripen();
    stage.finger.tap(yes);
    QCOMPARE(stage.question.result(), int(M::YesButton));
}

void TestMSlide::refusedQuestionCanBeAskedAgain()
{
    Stage stage;
    QVERIFY(stage.settle());
    dragFar(&stage);
    QVERIFY(stage.isRefused());
    QVERIFY(stage.card()->transform().isIdentity());
    stage.ask();
    QVERIFY(stage.settle());
    tapBeside(&stage);
    QVERIFY(stage.isRefused());
}

void TestMSlide::questionBelowHasNoShade()
{
    MThemePrivate::instance()->reducedMotion = true;
    Stage stage;
    const QRectF corner(0, 0, 8, 8);
    const QImage once = picture(stage.window.scene(), corner);
    MMessageBox next(QStringLiteral("Open?"), QStringLiteral("example.org"), M::YesButton);
    next.appear(&stage.window);
    QCOMPARE(picture(stage.window.scene(), corner), once);
    next.reject();
    QCOMPARE(picture(stage.window.scene(), corner), once);
}

QTEST_MAIN(TestMSlide)
#include "tst_mslide.moc"
