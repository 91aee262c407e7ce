// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TERMINAL_H
#define CONNUI_CLIENT_TERMINAL_H

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

/** The terminal: a line in, a line out. Ends the application in good order when its input ends. */
class Terminal : public QObject
{
    Q_OBJECT

public:
    explicit Terminal(QObject *parent = nullptr);

    /**
     * Prints \a line at once.
     *
     * Characters that a terminal would act upon, or that reorder text, are replaced: the text may come from a
     * tag.
     */
    void print(const QString &line);

    /**
     * Returns how many lines the user has entered by now that lineEntered() still has to report. Does not
     * wait.
     */
    qsizetype linesAhead();

Q_SIGNALS:
    /** The user has entered \a line, here without blanks around it. */
    void lineEntered(const QString &line);

private:
    bool readInput();
    void reportLines();

    QSocketNotifier input;
    QByteArray unreported;
};

#endif
