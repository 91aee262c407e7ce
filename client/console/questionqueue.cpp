// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/questionqueue.h"

#include "console/console.h"

namespace {

constexpr int notUnderstood = -1;

} // namespace

QuestionQueue::QuestionQueue(Console *console, QObject *parent) : QObject(parent), console(console)
{
    connect(console, &Console::lineEntered, this, &QuestionQueue::answer);
}

void QuestionQueue::ask(const Question &question)
{
    questions.append(question);
    if (questions.size() == 1)
        show();
    else
        console->print(QStringLiteral("waiting (%1): %2").arg(questions.size() - 1).arg(question.subject));
}

void QuestionQueue::dropAll()
{
    for (const Question &question : std::as_const(questions))
        console->print(QStringLiteral("dropped: %1").arg(question.subject));
    questions.clear();
}

void QuestionQueue::show() const
{
    const Question &question = questions.first();
    for (int i = 0; i < question.choices.size(); ++i)
        console->print(QStringLiteral("  %1) %2").arg(i + 1).arg(question.choices[i]));
    const QString answers = question.choices.size() > 1
                                ? QStringLiteral("1-%1/n").arg(question.choices.size())
                                : QStringLiteral("y/n");
    console->print(QStringLiteral("%1? [%2]").arg(question.subject, answers));
}

void QuestionQueue::answer(const QString &line)
{
    if (questions.isEmpty()) {
        console->print(QStringLiteral("there is nothing to answer"));
        return;
    }
    const bool refused = line.compare(QLatin1String("n"), Qt::CaseInsensitive) == 0;
    const int choice = choiceOf(line);
    if (!refused && choice == notUnderstood) {
        show();
        return;
    }
    // Out of the queue first: an answer may take its time, and may bring new questions.
    const Question question = questions.takeFirst();
    if (refused)
        question.refuse();
    else
        question.grant(choice);
    if (!questions.isEmpty())
        show();
}

// "y" takes the first choice.
int QuestionQueue::choiceOf(const QString &line) const
{
    if (line.compare(QLatin1String("y"), Qt::CaseInsensitive) == 0)
        return 0;
    const int number = line.toInt();
    return number >= 1 && number <= questions.first().choices.size() ? number - 1 : notUnderstood;
}
