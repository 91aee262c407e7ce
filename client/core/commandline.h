// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_COMMANDLINE_H
#define CONNUI_CLIENT_COMMANDLINE_H

#include <optional>

#include <QCommandLineParser>

/** How a program of the client ends. The man pages say the same. */
enum ExitCode { Left = 0, NoBus = 1, AlreadyRunning = 2, NoDisplay = 3, BadArguments = 64 };

/** The command line of a program that has options, and nothing else. */
class CommandLine
{
public:
    /** \a synopsis is what may follow the program's name. */
    CommandLine(const QString &description, const QString &synopsis);

    /** Adds the option --\a name. */
    void addOption(const QString &name, const QString &description);

    /**
     * Answers --help and --version, and ends the program. Before there is an application object: that needs a
     * display.
     */
    void answer(int argc, char *argv[]);

    /** Reads the arguments of the application. Returns what is wrong with them, if anything. */
    std::optional<QString> read();

    bool isSet(const QString &option) const;

    /** Returns what is wrong when options do not go together. */
    QString usage() const;

private:
    QCommandLineParser parser;
    const QString synopsis;
};

/** Says on standard error why the program ends, and returns \a code. */
int fail(ExitCode code, const QString &reason);

/** Ends the program with NoDisplay instead of a crash when the platform plugin has no display, while it
 * lives. */
class DisplayCheck
{
public:
    DisplayCheck();
    ~DisplayCheck();
    Q_DISABLE_COPY_MOVE(DisplayCheck)
};

#endif
