// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

#include <QProcess>

#include <MMessageBox>

#include "scene/mdialog_p.h"
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
        return false;
    }

    const int step;
    qint64 time = 0;
    int count = 0;
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
    void tapsOnAFrozenDialogAnswerNothing();
    void tapAfterTheDelayAnswers();

private:
    std::unique_ptr<MWindow> window;
};

void TestMInputGuardOnScreen::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    window = std::make_unique<MWindow>();
    window->showFullScreen();
    // No window manager does it on X11, and on Wayland the compositor does.
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        window->activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(window->isActiveWindow(), patience);
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
    QTRY_COMPARE_WITH_TIMEOUT(clock.count, taps, patience);
    QVERIFY(finger.waitForFinished());
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
    QTRY_VERIFY_WITH_TIMEOUT(MDialogPrivate::of(&first)->guard.isSeen(), patience);
    clock.time += delay;
    QTRY_VERIFY_WITH_TIMEOUT(first.isActive(), patience);
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
    xdotool({QStringLiteral("keyup"), QStringLiteral("Return")});
    QCOMPARE(question.result(), 0);
    QVERIFY(question.isVisible());
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
    QTRY_COMPARE_WITH_TIMEOUT(count.count, 10, patience);
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
