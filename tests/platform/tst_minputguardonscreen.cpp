// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

#include <QKeyEvent>
#include <QProcess>

#include <MMessageBox>

#include "scene/mdialog_p.h"
#include "support/overlay.h"
#include "touchtest.h"

using namespace TouchTest;

namespace {

constexpr int delay = 500;      // ms
constexpr int patience = 60000; // ms: a busy machine may take its time

void xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("xdotool: %s", process.readAllStandardError().constData());
}

QStringList moveTo(QPoint place)
{
    return {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())};
}

/** A clock that goes on with what the user does, however slow the machine is. */
class InputClock : public QObject
{
public:
    explicit InputClock(int milliseconds) : step(milliseconds)
    {
        qApp->installEventFilter(this);
        MInputGuard::setClock([this] { return time; });
    }
    ~InputClock() override { MInputGuard::setClock({}); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool input = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress;
        if (input && watched->isWindowType()) {
            time += step;
            ++count;
        }
        if (event->type() == QEvent::KeyPress)
            lastKey = static_cast<const QKeyEvent *>(event)->key();
        return false;
    }

    const int step;
    qint64 time = 0;
    int count = 0;
    int lastKey = 0;
};

class Question : public MMessageBox
{
public:
    Question() : MMessageBox(QStringLiteral("Call?"), QStringLiteral("112"), M::YesButton | M::NoButton)
    {
        setInputDelay(delay);
    }

    bool isActive() const { return MDialogPrivate::of(this)->guard.isActive(); }
    QPoint place(const MWindow &window)
    {
        const MButton *yes = viewOf(this, button(M::YesButton));
        return window.mapToGlobal(window.mapFromScene(yes->sceneBoundingRect().center()));
    }
};

} // namespace

class TestMInputGuardOnScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { window.reset(); }

    void fingerTappingTenTimesASecondAnswersNothing();
    void doubleTapAnswersOneOfTwoQuestions();
    void heldEnterAnswersNothing();
    void keyThatIsHeldAnswersOneQuestion_data();
    void keyThatIsHeldAnswersOneQuestion();
    void fingerThatRestsAnswersOneQuestion();
    void tapsOnAFrozenDialogAnswerNothing();
    void tapAfterTheDelayAnswers();

private:
    static void waitForAll(const InputClock &clock);
    static void letDelayPass(const Question &question, InputClock &clock);
    void letGo(const QString &key, const InputClock &clock);

    std::unique_ptr<MWindow> window;
};

void TestMInputGuardOnScreen::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    window = std::make_unique<MWindow>();
    if (Support::hasOverlays()) {
        Support::makeOverlay(window.get(), QLatin1String("question"), Support::OverlayKeys::ToOverlay);
        window->show();
    } else {
        window->showFullScreen();
    }
    // No window manager does it on X11, and on Wayland the compositor does.
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        window->activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(window->isActiveWindow(), patience);
}

// A key arrives behind all that came before it, of which a compositor that is slow may lose something.
void TestMInputGuardOnScreen::waitForAll(const InputClock &clock)
{
    xdotool({QStringLiteral("key"), QStringLiteral("a")});
    QTRY_COMPARE_WITH_TIMEOUT(clock.lastKey, int(Qt::Key_A), patience);
}

// The delay begins again where a compositor gives the window another size.
void TestMInputGuardOnScreen::letDelayPass(const Question &question, InputClock &clock)
{
    QTRY_VERIFY_WITH_TIMEOUT((clock.time += delay, question.isActive()), patience);
}

// Qt takes the next press of a key for a repeat of the last one whose release no window has got: another key
// arrives behind the release.
void TestMInputGuardOnScreen::letGo(const QString &key, const InputClock &clock)
{
    xdotool({QStringLiteral("keyup"), key});
    waitForAll(clock);
}

// A finger that types on what was there before.
void TestMInputGuardOnScreen::fingerTappingTenTimesASecondAnswersNothing()
{
    constexpr int taps = 20;
    InputClock clock(100);
    Question question;
    question.appear(window.get());
    xdotool(moveTo(question.place(*window)));
    question.disappear();

    QProcess finger;
    finger.start(QStringLiteral("xdotool"),
                 {QStringLiteral("click"), QStringLiteral("--repeat"), QString::number(taps),
                  QStringLiteral("--delay"), QStringLiteral("100"), QStringLiteral("1")});
    QTRY_VERIFY_WITH_TIMEOUT(clock.count >= 3, patience);
    question.appear(window.get());
    QTRY_COMPARE_WITH_TIMEOUT(finger.state(), QProcess::NotRunning, patience);
    waitForAll(clock);
    QVERIFY(clock.count > taps / 2);
    QCOMPARE(question.result(), 0);
    QVERIFY(question.isVisible());
}

void TestMInputGuardOnScreen::doubleTapAnswersOneOfTwoQuestions()
{
    InputClock clock(100);
    Question first;
    Question second;
    connect(&first, &MDialog::finished, this, [&] { second.appear(window.get()); });
    first.appear(window.get());
    xdotool(moveTo(first.place(*window)));
    letDelayPass(first, clock);
    // The window may have got another size since.
    xdotool(moveTo(first.place(*window)));
    xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
             QStringLiteral("--delay"), QStringLiteral("80"), QStringLiteral("1")});
    QTRY_COMPARE_WITH_TIMEOUT(clock.count, 2, patience);
    QCOMPARE(first.result(), int(M::YesButton));
    QCOMPARE(second.result(), 0);
    QVERIFY(second.isVisible());
}

void TestMInputGuardOnScreen::heldEnterAnswersNothing()
{
    InputClock clock(40);
    xdotool({QStringLiteral("keydown"), QStringLiteral("Return")});
    QTRY_VERIFY_WITH_TIMEOUT(clock.count >= 3, patience);
    Question question;
    question.appear(window.get());
    viewOf(&question, question.button(M::YesButton))->setFocus(Qt::TabFocusReason);
    const int before = clock.count;
    QTRY_VERIFY_WITH_TIMEOUT(clock.count >= before + 30, patience);
    letGo(QStringLiteral("Return"), clock);
    QCOMPARE(question.result(), 0);
    QVERIFY(question.isVisible());
}

void TestMInputGuardOnScreen::keyThatIsHeldAnswersOneQuestion_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("answer");
    QTest::newRow("Return") << QStringLiteral("Return") << int(M::YesButton);
    QTest::newRow("Escape") << QStringLiteral("Escape") << int(M::CancelButton);
}

// The X server repeats a key that stays down.
void TestMInputGuardOnScreen::keyThatIsHeldAnswersOneQuestion()
{
    QFETCH(QString, key);
    QFETCH(int, answer);
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        QSKIP("On Wayland it is Qt that repeats a key");
    InputClock clock(0);
    Question first;
    Question second;
    first.setInputDelay(0);
    second.setInputDelay(0);
    connect(&first, &MDialog::finished, this, [&] {
        second.appear(window.get());
        viewOf(&second, second.button(M::YesButton))->setFocus(Qt::TabFocusReason);
    });
    first.appear(window.get());
    viewOf(&first, first.button(M::YesButton))->setFocus(Qt::TabFocusReason);
    xdotool({QStringLiteral("keydown"), key});
    QTRY_VERIFY_WITH_TIMEOUT(clock.count >= 30, patience);
    letGo(key, clock);
    QCOMPARE(first.result(), answer);
    QCOMPARE(second.result(), 0);
    QVERIFY(second.isVisible());
}

// Letting go is what counts, whenever that is.
void TestMInputGuardOnScreen::fingerThatRestsAnswersOneQuestion()
{
    InputClock clock(0);
    Question first;
    Question second;
    connect(&first, &MDialog::finished, this, [&] { second.appear(window.get()); });
    first.appear(window.get());
    letDelayPass(first, clock);
    xdotool(moveTo(first.place(*window)));
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
    QTRY_COMPARE_WITH_TIMEOUT(clock.count, 1, patience);
    clock.time += 3600000;
    QCoreApplication::processEvents();
    QCOMPARE(first.result(), 0);
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
    QTRY_COMPARE_WITH_TIMEOUT(first.result(), int(M::YesButton), patience);
    QCOMPARE(second.result(), 0);
    QVERIFY(second.isVisible());
}

void TestMInputGuardOnScreen::tapsOnAFrozenDialogAnswerNothing()
{
    Question question;
    question.appear(window.get());
    xdotool(moveTo(question.place(*window)));
    InputClock count(0);
    MInputGuard::setClock({});
    QTRY_VERIFY_WITH_TIMEOUT(MDialogPrivate::of(&question)->guard.isSeen(), patience);
    // No event is looked at meanwhile.
    xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("10"),
             QStringLiteral("--delay"), QStringLiteral("100"), QStringLiteral("1")});
    QVERIFY(MDialogPrivate::of(&question)->guard.isWaiting());
    waitForAll(count);
    QVERIFY(count.count > 5);
    QCOMPARE(question.result(), 0);
    QVERIFY(question.isVisible());
}

void TestMInputGuardOnScreen::tapAfterTheDelayAnswers()
{
    Question question;
    question.appear(window.get());
    xdotool(moveTo(question.place(*window)));
    QTRY_VERIFY_WITH_TIMEOUT(question.isActive(), patience);
    xdotool(moveTo(question.place(*window)));
    xdotool({QStringLiteral("click"), QStringLiteral("1")});
    QTRY_COMPARE_WITH_TIMEOUT(question.result(), int(M::YesButton), patience);
}

QTEST_MAIN(TestMInputGuardOnScreen)
#include "tst_minputguardonscreen.moc"
