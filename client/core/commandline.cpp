// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/commandline.h"

#include <cstdio>
#include <unistd.h>

#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString programName()
{
    return QFileInfo(QCoreApplication::applicationFilePath()).fileName();
}

QCommandLineOption helpOption()
{
    return {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this.")};
}

QCommandLineOption versionOption()
{
    return {{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Print the version.")};
}

QtMessageHandler otherwise = nullptr;

// The platform plugin's last word; an abort would follow.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type != QtFatalMsg) {
        otherwise(type, context, message);
        return;
    }
    fail(NoDisplay, QStringLiteral("no display: %1").arg(message.section(QLatin1Char('\n'), 0, 0)));
    _exit(NoDisplay);
}

} // namespace

CommandLine::CommandLine(const QString &description, const QString &synopsis) : synopsis(synopsis)
{
    parser.setApplicationDescription(description);
    parser.addOptions({helpOption(), versionOption()});
}

void CommandLine::addOption(const QString &name, const QString &description)
{
    parser.addOption({name, description});
}

void CommandLine::answer(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));
    // What the parser does not know may be an option of the toolkit's.
    parser.parse(QCoreApplication::arguments());
    if (parser.isSet(helpOption()))
        parser.showHelp();
    if (parser.isSet(versionOption()))
        parser.showVersion();
}

std::optional<QString> CommandLine::read()
{
    if (!parser.parse(QCoreApplication::arguments()))
        return parser.errorText();
    if (!parser.positionalArguments().isEmpty())
        return usage();
    return {};
}

bool CommandLine::isSet(const QString &option) const
{
    return parser.isSet(option);
}

QString CommandLine::usage() const
{
    return QStringLiteral("usage: %1 %2").arg(programName(), synopsis);
}

int fail(ExitCode code, const QString &reason)
{
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(programName()), qUtf8Printable(reason));
    return code;
}

DisplayCheck::DisplayCheck()
{
    otherwise = qInstallMessageHandler(&endWithoutDisplay);
}

DisplayCheck::~DisplayCheck()
{
    qInstallMessageHandler(otherwise);
}
