// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "support/commandline.h"

#include <cstdio>

#include <QCoreApplication>
#include <QFileInfo>

namespace Support {

namespace {

QString programName()
{
    return QFileInfo(QCoreApplication::applicationFilePath()).fileName();
}

QCommandLineOption helpOption()
{
    return {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and exit.")};
}

QCommandLineOption versionOption()
{
    return {{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Show the version and exit.")};
}

} // namespace

CommandLine::CommandLine(const QString &description, const QString &synopsis) : synopsis(synopsis)
{
    parser.setApplicationDescription(description);
    parser.addOptions({helpOption(), versionOption()});
}

void CommandLine::addOption(const QString &name, const QString &description, const QString &valueName,
                            const QString &defaultValue)
{
    parser.addOption({name, description, valueName, defaultValue});
}

void CommandLine::answer(int argc, char *argv[])
{
    if (argc < 2)
        return;
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));
    // An option that the parser does not know may be one of Qt's.
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

QStringList CommandLine::values(const QString &option) const
{
    return parser.values(option);
}

QString CommandLine::usage() const
{
    return QStringLiteral("usage: %1 %2").arg(programName(), synopsis).trimmed();
}

int fail(int code, const QString &reason)
{
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(programName()), qUtf8Printable(reason));
    return code;
}

} // namespace Support
