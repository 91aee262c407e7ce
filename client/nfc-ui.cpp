// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <MWindow>

#include "buswatch.h"
#include "console/console.h"
#include "console/consoleclient.h"
#include "remote/remotecontrol.h"
#include "screen/screenclient.h"
#include "terminationsignals.h"
#include "texts.h"

namespace {

enum ExitCode { Left = 0, NoBus = 1, AlreadyRunning = 2, BadArguments = 64 };

int fail(ExitCode code, const QString &reason)
{
    std::fprintf(stderr, "nfc-ui: %s\n", qUtf8Printable(reason));
    return code;
}

struct Options
{
    bool onTerminal = false;
    bool remoteControl = false;
    bool phone = false;
};

// Which face is wanted decides which application object is made, before anything can be parsed with its help.
bool wantsTerminal(int argc, char *argv[])
{
    return std::any_of(
        argv, argv + argc, [](const char *argument) { return qstrcmp(argument, "--console") == 0; });
}

std::unique_ptr<QCoreApplication> newApplication(int &argc, char *argv[])
{
    if (wantsTerminal(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    auto application = std::make_unique<QApplication>(argc, argv);
    // It stays when the last dialog goes.
    QApplication::setQuitOnLastWindowClosed(false);
    loadTexts();
    return application;
}

// Empty when the arguments make no sense.
std::optional<Options> parse(QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The person's side of NFC: answers the questions of the NFC daemon.\n\n"
                       "Exit codes: 0 input ended or asked to leave, 1 no system bus, or a bus has gone, "
                       "2 another nfc-ui runs in this session, 64 bad arguments."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this."));
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption console(QStringLiteral("console"),
                                     QStringLiteral("Ask on the terminal: y, n, or the number of a choice."));
    const QCommandLineOption remoteControl(
        QStringLiteral("remote-control"),
        QStringLiteral(
            "Tell on standard output what is on the screen, and do what standard input says: press TEXT, "
            "select TEXT, escape, close, turn ANGLE, picture FILE. For demos and tests."));
    const QCommandLineOption phone(QStringLiteral("phone"),
                                   QStringLiteral("Show everything in a window of a phone's size, which is "
                                                  "always there; leave when it is closed."));
    parser.addOptions({help, console, remoteControl, phone});

    const bool understood = parser.parse(QCoreApplication::arguments());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (!understood)
        *error = parser.errorText();
    else if (!parser.positionalArguments().isEmpty() ||
             (parser.isSet(console) && (parser.isSet(remoteControl) || parser.isSet(phone))))
        *error = QStringLiteral("usage: nfc-ui [--console | [--phone] [--remote-control]]");
    else
        return Options{parser.isSet(console), parser.isSet(remoteControl), parser.isSet(phone)};
    return {};
}

// Two of them would ask everything twice. A phone without a session bus has no session to share.
bool isFirstInSession()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    return !bus.isConnected() || bus.registerService(QStringLiteral("org.connui.NfcUi"));
}

// The empty screen of a phone, on a desktop.
std::unique_ptr<MWindow> newPhone()
{
    auto phone = std::make_unique<MWindow>();
    phone->setWindowTitle(QStringLiteral("Phone"));
    QApplication::setQuitOnLastWindowClosed(true);
    phone->show();
    return phone;
}

int runOnTerminal()
{
    ConsoleClient client;
    QObject::connect(&client, &ConsoleClient::finished, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    return QCoreApplication::exec();
}

int runOnScreen()
{
    const ScreenClient client;
    return QCoreApplication::exec();
}

int runWithRemoteControl()
{
    Console console;
    const RemoteControl reader(&console);
    QObject::connect(&console, &Console::ended, qApp, &QCoreApplication::quit);
    ScreenClient client;
    const auto tell = [&console](bool here) {
        console.print(here ? QStringLiteral("the NFC daemon is here")
                           : QStringLiteral("the NFC daemon has left"));
    };
    QObject::connect(&client, &ScreenClient::daemonHere, &console, tell);
    if (client.hasDaemon())
        tell(true);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    TerminationSignals termination;
    const std::unique_ptr<QCoreApplication> application = newApplication(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));

    QString error;
    const std::optional<Options> options = parse(&error);
    if (!options)
        return fail(BadArguments, error);
    // Has the D-Bus library register its own types now, not on its thread while a message is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    if (!QDBusConnection::systemBus().isConnected())
        return fail(NoBus, QDBusConnection::systemBus().lastError().message());
    if (!isFirstInSession())
        return fail(AlreadyRunning, QStringLiteral("another nfc-ui runs in this session"));

    QObject::connect(&termination, &TerminationSignals::received, application.get(), &QCoreApplication::quit);
    termination.watch();
    const BusWatch buses;
    QObject::connect(&buses, &BusWatch::lost, application.get(), [](const QString &bus) {
        QCoreApplication::exit(fail(NoBus, QStringLiteral("the %1 bus has gone").arg(bus)));
    });
    if (options->onTerminal)
        return runOnTerminal();
    const std::unique_ptr<MWindow> phone = options->phone ? newPhone() : nullptr;
    return options->remoteControl ? runWithRemoteControl() : runOnScreen();
}
