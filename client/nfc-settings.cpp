// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>
#include <memory>
#include <optional>

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QDBusError>

#include "buswatch.h"
#include "console/console.h"
#include "remote/remotecontrol.h"
#include "settings/settingswindow.h"
#include "terminationsignals.h"
#include "texts.h"

namespace {

enum ExitCode { Left = 0, NoBus = 1, BadArguments = 64 };

struct Options
{
    bool remoteControl = false;
};

int fail(ExitCode code, const QString &reason)
{
    std::fprintf(stderr, "nfc-settings: %s\n", qUtf8Printable(reason));
    return code;
}

// Empty when the arguments make no sense.
std::optional<Options> parse(QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Switches NFC, and the question before what is on a tag is opened.\n\n"
                       "Exit codes: 0 closed or asked to leave, 1 no system bus, or a bus has gone, 64 bad "
                       "arguments."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this."));
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption remoteControl(
        QStringLiteral("remote-control"),
        QStringLiteral(
            "Tell on standard output what is on the screen, and do what standard input says: press "
            "TEXT, escape, close, turn ANGLE, picture FILE. For demos and tests."));
    parser.addOptions({help, remoteControl});

    const bool understood = parser.parse(QCoreApplication::arguments());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (!understood)
        *error = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        *error = QStringLiteral("usage: nfc-settings [--remote-control]");
    else
        return Options{parser.isSet(remoteControl)};
    return {};
}

// Reads the screen aloud until the input ends.
struct Aloud
{
    Aloud() : reader(&console) { QObject::connect(&console, &Console::ended, qApp, &QCoreApplication::quit); }

    Console console;
    RemoteControl reader;
};

} // namespace

int main(int argc, char *argv[])
{
    TerminationSignals termination;
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-settings"));
    loadTexts();

    QString error;
    const std::optional<Options> options = parse(&error);
    if (!options)
        return fail(BadArguments, error);
    if (!QDBusConnection::systemBus().isConnected())
        return fail(NoBus, QDBusConnection::systemBus().lastError().message());

    QObject::connect(&termination, &TerminationSignals::received, &application, &QCoreApplication::quit);
    termination.watch();
    const BusWatch buses;
    QObject::connect(&buses, &BusWatch::lost, &application, [](const QString &bus) {
        QCoreApplication::exit(fail(NoBus, QStringLiteral("the %1 bus has gone").arg(bus)));
    });
    const auto aloud = options->remoteControl ? std::make_unique<Aloud>() : nullptr;
    SettingsWindow window;
    window.show();
    return QCoreApplication::exec();
}
