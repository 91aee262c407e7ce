// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <memory>
#include <optional>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>

#include <MWindow>
#include <NfcTranslations>

#include "core/clientrun.h"
#include "core/session.h"
#include "core/statusadaptor.h"
#include "core/terminal.h"
#include "core/terminationsignals.h"
#include "remote/remotecontrol.h"
#include "screen/phonewindow.h"
#include "screen/screenface.h"
#include "support/commandline.h"
#include "support/windowapplication.h"

namespace {

constexpr QLatin1String console("console");
constexpr QLatin1String remoteControl("remote-control");
constexpr QLatin1String phone("phone");

// Decides which application object is made, before anything can be parsed with its help.
bool wantsTerminal(int argc, char *argv[])
{
    return std::any_of(
        argv, argv + argc, [](const char *argument) { return qstrcmp(argument, "--console") == 0; });
}

Support::ApplicationPointer newApplication(int &argc, char *argv[])
{
    auto application = Support::newApplication(argc, argv);
    // It stays when the last dialog goes.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("nfc-ui")));
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-ui"));
    return application;
}

void addOptions(Support::CommandLine &arguments)
{
    arguments.addOption(console, QStringLiteral("Ask on the terminal: starts nfc-agent."));
    arguments.addOption(
        remoteControl,
        QStringLiteral("Report on standard output what the screen shows, and take commands from standard "
                       "input: press TEXT, "
                       "select TEXT, escape, close, turn ANGLE, picture FILE. For demos and tests."));
    arguments.addOption(phone,
                        QStringLiteral("Show everything in a permanent window of a phone's size, and exit "
                                       "when it is closed."));
}

std::optional<QString> faultOf(Support::CommandLine &arguments)
{
    const std::optional<QString> fault = arguments.read();
    if (fault)
        return fault;
    if (arguments.isSet(console) && (arguments.isSet(remoteControl) || arguments.isSet(phone)))
        return arguments.usage();
    return {};
}

// The screen of a phone, on a desktop.
std::unique_ptr<MWindow> newPhone()
{
    auto window = std::make_unique<PhoneWindow>();
    QApplication::setQuitOnLastWindowClosed(true);
    window->show();
    return window;
}

int run(const Support::CommandLine &arguments)
{
    const bool isRemote = arguments.isSet(remoteControl);
    const std::unique_ptr<MWindow> window = arguments.isSet(phone) ? newPhone() : nullptr;
    const std::unique_ptr<Terminal> terminal = isRemote ? std::make_unique<Terminal>() : nullptr;
    const auto control = isRemote ? std::make_unique<RemoteControl>(terminal.get()) : nullptr;
    // The title of the windows that questions open.
    if (!window)
        QGuiApplication::setApplicationDisplayName(qtTrId("qtn_nfc_touched"));
    ScreenFace face(window.get());
    Session session(&face);
    const StatusAdaptor status(&session);
    if (terminal)
        printRegistration(session, terminal.get());
    return QCoreApplication::exec();
}

// The program without windows is beside this one. Returns only when it cannot be started.
int startAgent()
{
    const QString program =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("nfc-agent"));
    const QByteArray file = QFile::encodeName(program);
    ::execl(file.constData(), file.constData(), nullptr);
    return Support::fail(Support::NoProgram,
                         QStringLiteral("unable to start %1: %2").arg(program, qt_error_string()));
}

int askOnTerminal(int argc, char *argv[], Support::CommandLine &arguments)
{
    const QCoreApplication application(argc, argv);
    if (const std::optional<QString> fault = faultOf(arguments))
        return Support::fail(Support::BadArguments, *fault);
    return startAgent();
}

} // namespace

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral(
            "Shows the questions of the NFC daemon to the user, and returns the answers.\n\n"
            "Exit codes: 0 end of input, or a signal, 1 no system bus, or a bus disconnected, 2 another "
            "nfc-ui runs in this session, 3 no display, 64 invalid arguments, 69 no nfc-agent."),
        QStringLiteral("[--console | [--phone] [--remote-control]]"));
    addOptions(arguments);
    arguments.answer(argc, argv);
    if (wantsTerminal(argc, argv))
        return askOnTerminal(argc, argv, arguments);

    TerminationSignals termination;
    const Support::ApplicationPointer application = newApplication(argc, argv);
    ConnUi::installTranslations();
    if (const std::optional<QString> fault = faultOf(arguments))
        return Support::fail(Support::BadArguments, *fault);
    return runClient(&termination, [&arguments] { return run(arguments); });
}
