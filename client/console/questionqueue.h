// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_QUESTIONQUEUE_H
#define CONNUI_CLIENT_QUESTIONQUEUE_H

#include <QList>
#include <QObject>

#include "console/question.h"

class Console;

/** Puts one question at a time to the person; the others wait their turn. */
class QuestionQueue : public QObject
{
    Q_OBJECT

public:
    explicit QuestionQueue(Console *console, QObject *parent = nullptr);

    /** Asks \a question, at once or after those that wait. */
    void ask(const Question &question);

    /** Takes back all questions, and says so. */
    void dropAll();

private:
    void show() const;
    void answer(const QString &line);
    int choiceOf(const QString &line) const;

    Console *const console;
    QList<Question> questions;
};

#endif
