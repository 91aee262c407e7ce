// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>

#include "consoleclient.h"
#include "terminationsignals.h"

namespace {

enum ExitCode { Left = 0, NoBus = 1, BadArguments = 64 };

int fail(ExitCode code, const QString &reason)
{
    std::fprintf(stderr, "nfc-ui: %s\n", qUtf8Printable(reason));
    return code;
}

} // namespace

int main(int argc, char *argv[])
{
    TerminationSignals termination;
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The person's side of NFC: answers the questions of the NFC daemon.\n\n"
                       "Exit codes: 0 input ended or asked to leave, 1 no system bus, 64 bad arguments."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this."));
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption console(QStringLiteral("console"),
                                     QStringLiteral("Ask on the terminal: y, n, or the number of a choice."));
    parser.addOptions({help, console});

    const bool understood = parser.parse(QCoreApplication::arguments());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (!understood)
        return fail(BadArguments, parser.errorText());
    if (!parser.isSet(console) || !parser.positionalArguments().isEmpty())
        return fail(BadArguments, QStringLiteral("usage: nfc-ui --console"));
    if (!QDBusConnection::systemBus().isConnected())
        return fail(NoBus, QDBusConnection::systemBus().lastError().message());

    ConsoleClient client;
    QObject::connect(&client, &ConsoleClient::finished, &application, &QCoreApplication::quit);
    QObject::connect(&termination, &TerminationSignals::received, &application, &QCoreApplication::quit);
    termination.watch();
    return application.exec();
}
