// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QTemporaryFile>
#include <QTest>
#include <QThread>

#include "console/consoleface.h"
#include "core/terminal.h"

namespace {

constexpr int patience = 30000; // ms

Question named(const QString &title)
{
    Question question;
    question.title = title;
    question.yes = QStringLiteral("OK");
    question.no = QStringLiteral("Cancel");
    return question;
}

/** Another file in place of one of the standard ones, until this object goes. */
class Replacement
{
public:
    Replacement(int standard, int file) : standard(standard), original(::dup(standard))
    {
        std::fflush(stdout);
        ::dup2(file, standard);
    }
    ~Replacement()
    {
        std::fflush(stdout);
        ::dup2(original, standard);
        ::close(original);
    }
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

private:
    const int standard;
    const int original;
};

/** A user who enters lines, at a terminal or through a pipe. */
class User
{
public:
    explicit User(bool isAtTerminal)
    {
        if (isAtTerminal) {
            ends[1] = ::posix_openpt(O_RDWR | O_NOCTTY);
            if (::grantpt(ends[1]) != 0 || ::unlockpt(ends[1]) != 0)
                qFatal("There is no terminal");
            ends[0] = ::open(::ptsname(ends[1]), O_RDWR | O_NOCTTY);
        } else if (::pipe(ends) != 0) {
            qFatal("There is no pipe");
        }
        input = std::make_unique<Replacement>(STDIN_FILENO, ends[0]);
    }
    ~User()
    {
        input.reset();
        ::close(ends[0]);
        ::close(ends[1]);
    }
    User(const User &) = delete;
    User &operator=(const User &) = delete;

    /** Enters \a lines, which can be read on return. */
    void enter(const QByteArray &lines)
    {
        if (::write(ends[1], lines.constData(), size_t(lines.size())) != lines.size())
            qFatal("Nothing can be entered");
        const QDeadlineTimer deadline(patience);
        for (int size = 0; size < lines.size(); ::ioctl(ends[0], FIONREAD, &size)) {
            if (deadline.hasExpired())
                qFatal("What was entered does not arrive");
            QThread::msleep(1);
        }
    }

private:
    int ends[2] = {-1, -1}; // to read, and to write
    std::unique_ptr<Replacement> input;
};

} // namespace

class TestConsoleFace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void secondOfTwoLinesDoesNotAnswerTheNextQuestion_data() { addInputs(); }
    void secondOfTwoLinesDoesNotAnswerTheNextQuestion();
    void lineBeforeAQuestionDoesNotAnswerIt_data() { addInputs(); }
    void lineBeforeAQuestionDoesNotAnswerIt();

private:
    static void addInputs();
    void watch(ConsoleFace *face, const std::function<void()> &answered = {});
    bool hasAnswers(int number) const;

    QList<Answer::Choice> answers;
};

void TestConsoleFace::addInputs()
{
    QTest::addColumn<bool>("isAtTerminal");
    QTest::newRow("pipe") << false;
    QTest::newRow("terminal") << true;
}

void TestConsoleFace::watch(ConsoleFace *face, const std::function<void()> &answered)
{
    answers.clear();
    connect(face, &Face::answered, this, [this, answered](const Answer &answer) {
        answers.append(answer.choice);
        if (answered)
            answered();
    });
}

bool TestConsoleFace::hasAnswers(int number) const
{
    return QTest::qWaitFor([this, number] { return answers.size() >= number; }, patience);
}

void TestConsoleFace::secondOfTwoLinesDoesNotAnswerTheNextQuestion()
{
    QFETCH(bool, isAtTerminal);
    User user(isAtTerminal);
    QTemporaryFile printed;
    QVERIFY(printed.open());
    bool isAnswered = false;
    {
        const Replacement output(STDOUT_FILENO, printed.handle());
        Terminal terminal;
        ConsoleFace face(&terminal);
        watch(&face, [this, &face] {
            if (answers.size() == 1)
                face.show(named(QStringLiteral("second")));
        });
        face.show(named(QStringLiteral("first")));
        user.enter("y\ny\n");
        isAnswered = hasAnswers(1);
        user.enter("n\n");
        isAnswered = isAnswered && hasAnswers(2);
    }
    QVERIFY(isAnswered);
    QCOMPARE(answers, (QList<Answer::Choice>{Answer::Yes, Answer::No}));
    QVERIFY(printed.seek(0));
    QCOMPARE(printed.readAll(), QByteArray("first\n[OK] [Cancel]\n"
                                           "second\n[OK] [Cancel]\n"
                                           "second\n[OK] [Cancel]\n"));
}

void TestConsoleFace::lineBeforeAQuestionDoesNotAnswerIt()
{
    QFETCH(bool, isAtTerminal);
    User user(isAtTerminal);
    QTemporaryFile printed;
    QVERIFY(printed.open());
    bool isAnswered = false;
    {
        const Replacement output(STDOUT_FILENO, printed.handle());
        Terminal terminal;
        ConsoleFace face(&terminal);
        watch(&face);
        user.enter("y\n");
        face.show(named(QStringLiteral("question")));
        user.enter("n\n");
        isAnswered = hasAnswers(1);
    }
    QVERIFY(isAnswered);
    QCOMPARE(answers, QList<Answer::Choice>{Answer::No});
    QVERIFY(printed.seek(0));
    QCOMPARE(printed.readAll(), QByteArray("question\n[OK] [Cancel]\nquestion\n[OK] [Cancel]\n"));
}

QTEST_GUILESS_MAIN(TestConsoleFace)
#include "tst_consoleface.moc"
