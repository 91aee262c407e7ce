// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_COMMANDLINE_H
#define CONNUI_SUPPORT_COMMANDLINE_H

#include <optional>

#include <QCommandLineParser>

namespace Support {

/** How a program ends when it cannot do its work; 0 is success. The man pages say the same. */
enum ExitCode {
    NoBus = 1,
    AlreadyRunning = 2,
    NoDisplay = 3,
    BadArguments = 64,
    NoProgram = 69,
    CannotWrite = 74
};

/** The command line of a program that takes options and nothing else. */
class CommandLine
{
public:
    /** \a synopsis shows what may follow the program's name. */
    CommandLine(const QString &description, const QString &synopsis);

    /** Adds the option --\a name. It takes a value when \a valueName names one. */
    void addOption(const QString &name, const QString &description, const QString &valueName = {},
                   const QString &defaultValue = {});

    /**
     * Answers --help and --version, and ends the program. Call it before there is an application object,
     * which may need a display.
     */
    void answer(int argc, char *argv[]);

    /** Reads the arguments of the application. Returns what is wrong with them, if anything. */
    std::optional<QString> read();

    bool isSet(const QString &option) const;

    /** Returns every value that was given for \a option, in order; the default value if none was. */
    QStringList values(const QString &option) const;

    /** Returns the text to print when the options or their values are wrong. */
    QString usage() const;

private:
    QCommandLineParser parser;
    const QString synopsis;
};

/** Prints on standard error why the program ends, after the program's name, and returns \a code. */
int fail(int code, const QString &reason);

} // namespace Support

#endif
