// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CONSOLEFACE_H
#define CONNUI_CLIENT_CONSOLEFACE_H

#include <optional>

#include "core/face.h"

class Terminal;

/**
 * Asks on the terminal.
 *
 * Our own words stand at the beginning of a line, those of others behind "> ", and the answers in brackets.
 * An answer is the text of a button, its number or name where there is an application to choose, or y or n.
 * A line that was entered before the question appeared does not answer it.
 */
class ConsoleFace : public Face
{
    Q_OBJECT

public:
    explicit ConsoleFace(Terminal *terminal);

    void show(const Question &question) override;
    void withdraw() override;
    void setWaiting(qsizetype waiting) override;
    void setProgress(quint64 received, quint64 size) override;
    void indicateTouch() override;

private:
    void printQuestion() const;
    void take(const QString &line);
    std::optional<Answer> understood(const QString &line) const;

    Terminal *const terminal;
    std::optional<Question> question;
    qsizetype waiting = 0;
    qsizetype linesAhead = 0; // entered before the question appeared
};

#endif
