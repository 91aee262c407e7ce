// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/consoleface.h"

#include <memory>
#include <utility>

#include <QFileInfo>
#include <QMetaObject>
#include <QTemporaryFile>

#include <NfcApplication>
#include <NfcForeignText>

#include "core/contactcard.h"
#include "core/terminal.h"

using ConnUi::NfcApplication;

namespace {

bool isWord(const QString &line, const QString &word)
{
    return !word.isEmpty() && line.compare(word, Qt::CaseInsensitive) == 0;
}

QString buttons(const Question &question)
{
    QStringList labels;
    for (const QString &label : {question.yes, question.direct, question.no})
        if (!label.isEmpty())
            labels.append(QStringLiteral("[%1]").arg(label));
    return labels.join(QLatin1Char(' '));
}

// A card stands for its name, as it does in the dialog about one.
QString foreignText(const Question &question)
{
    if (question.kind != Question::ContactCard)
        return question.data;
    const std::unique_ptr<QTemporaryFile> file = cardFile(question.card);
    return ConnUi::foreignName(nameOnCard(QFileInfo(file->fileName())), QString());
}

} // namespace

ConsoleFace::ConsoleFace(Terminal *terminal) : terminal(terminal)
{
    connect(terminal, &Terminal::lineEntered, this, &ConsoleFace::take);
}

void ConsoleFace::show(const Question &shown)
{
    question = shown;
    linesAhead = terminal->linesAhead();
    printQuestion();
    // A notice needs no answer: printing it was enough.
    if (shown.yes.isEmpty() && shown.kind != Question::Invitation && shown.kind != Question::Waiting) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (std::exchange(question, std::nullopt))
                    Q_EMIT answered({});
            },
            Qt::QueuedConnection);
    }
}

void ConsoleFace::printQuestion() const
{
    terminal->print(question->title);
    for (const QString &note : question->notes)
        terminal->print(note);
    const QString data = foreignText(*question);
    if (!data.isEmpty())
        for (const QString &line : data.split(QLatin1Char('\n')))
            terminal->print(QStringLiteral("> ") + line);
    int number = 0;
    for (const QString &application : question->applications)
        terminal->print(QStringLiteral("%1) %2").arg(++number).arg(NfcApplication(application).name()));
    terminal->print(buttons(*question));
}

void ConsoleFace::withdraw()
{
    if (std::exchange(question, std::nullopt))
        terminal->print(QStringLiteral("withdrawn"));
}

void ConsoleFace::setWaiting(qsizetype now)
{
    if (std::exchange(waiting, now) < now)
        terminal->print(qtTrId("qtn_nfc_waiting_more", int(now)).arg(now));
}

// Line upon line would push the question away.
void ConsoleFace::setProgress(quint64, quint64) {}

void ConsoleFace::indicateTouch()
{
    terminal->print(QStringLiteral("something touched"));
}

void ConsoleFace::take(const QString &line)
{
    const bool isAhead = linesAhead > 0;
    if (isAhead)
        --linesAhead;
    if (!question) {
        terminal->print(QStringLiteral("there is nothing to answer"));
        return;
    }
    const std::optional<Answer> answer = understood(line);
    // Nobody can have meant a question that was not there yet.
    if (!answer || isAhead) {
        printQuestion();
        return;
    }
    question.reset();
    Q_EMIT answered(*answer);
}

std::optional<Answer> ConsoleFace::understood(const QString &line) const
{
    if (isWord(line, question->no) || isWord(line, QStringLiteral("n")))
        return Answer{};
    if (isWord(line, question->direct))
        return Answer{Answer::Direct, {}};
    if (!question->yes.isEmpty() && (isWord(line, question->yes) || isWord(line, QStringLiteral("y"))))
        return Answer{Answer::Yes, question->applications.value(0)};
    int number = 0;
    for (const QString &application : question->applications)
        if (line == QString::number(++number) || isWord(line, NfcApplication(application).name()))
            return Answer{Answer::Yes, application};
    return {};
}
