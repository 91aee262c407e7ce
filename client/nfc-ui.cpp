// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <memory>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QIcon>

#include <ContactExporter>
#include <MWindow>
#include <NfcTranslations>

#include "console/consoleface.h"
#include "core/buswatch.h"
#include "core/session.h"
#include "core/statusadaptor.h"
#include "core/terminal.h"
#include "core/terminationsignals.h"
#include "remote/remotecontrol.h"
#include "screen/screenface.h"
#include "support/commandline.h"
#include "support/displaycheck.h"

namespace {

constexpr QLatin1String console("console");
constexpr QLatin1String remoteControl("remote-control");
constexpr QLatin1String phone("phone");

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
    const Support::DisplayCheck check;
    auto application = std::make_unique<QApplication>(argc, argv);
    // It stays when the last dialog goes.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("nfc-ui")));
    return application;
}

void addOptions(Support::CommandLine &arguments)
{
    arguments.addOption(console, QStringLiteral("Ask on the terminal."));
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

// Two of them would ask everything twice. A phone without a session bus has no session to share.
bool isFirstInSession()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    return !bus.isConnected() || bus.registerService(QStringLiteral("org.connui.NfcUi"));
}

// The empty screen of a phone, on a desktop.
std::unique_ptr<MWindow> newPhone()
{
    auto window = std::make_unique<MWindow>();
    window->setWindowTitle(QStringLiteral("Phone"));
    QApplication::setQuitOnLastWindowClosed(true);
    window->show();
    return window;
}

std::unique_ptr<Face> newFace(bool onTerminal, Terminal *terminal, const MWindow *phone)
{
    if (onTerminal)
        return std::make_unique<ConsoleFace>(terminal);
    return std::make_unique<ScreenFace>(phone);
}

void tellRegistration(const Session &session, Terminal *terminal)
{
    QObject::connect(
        &session, &Session::registeredChanged, terminal,
        [terminal](bool registered) {
            terminal->print(registered ? QStringLiteral("the NFC daemon is here")
                                       : QStringLiteral("the NFC daemon has left"));
        });
}

int run(const Support::CommandLine &arguments)
{
    const bool onTerminal = arguments.isSet(console);
    const bool isRemote = arguments.isSet(remoteControl);
    const std::unique_ptr<MWindow> window = arguments.isSet(phone) ? newPhone() : nullptr;
    const std::unique_ptr<Terminal> terminal =
        onTerminal || isRemote ? std::make_unique<Terminal>() : nullptr;
    const auto control = isRemote ? std::make_unique<RemoteControl>(terminal.get()) : nullptr;
    // The title of the windows that questions open.
    if (!onTerminal && !window)
        QGuiApplication::setApplicationDisplayName(qtTrId("qtn_nfc_touched"));
    const std::unique_ptr<Face> face = newFace(onTerminal, terminal.get(), window.get());
    Session session(face.get());
    const StatusAdaptor status(&session);
    if (terminal)
        tellRegistration(session, terminal.get());
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral(
            "Shows the questions of the NFC daemon to the user, and returns the answers.\n\n"
            "Exit codes: 0 end of input, or a signal, 1 no system bus, or a bus disconnected, 2 another "
            "nfc-ui runs in this session, 3 no display, 64 invalid arguments."),
        QStringLiteral("[--console | [--phone] [--remote-control]]"));
    addOptions(arguments);
    arguments.answer(argc, argv);

    TerminationSignals termination;
    const std::unique_ptr<QCoreApplication> application = newApplication(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-ui"));
    ConnUi::installTranslations();
    if (const std::optional<QString> fault = faultOf(arguments))
        return Support::fail(Support::BadArguments, *fault);
    // Makes QtDBus register its own types now, not on its thread while a message is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    if (!QDBusConnection::systemBus().isConnected())
        return Support::fail(Support::NoBus, QDBusConnection::systemBus().lastError().message());
    if (!isFirstInSession())
        return Support::fail(Support::AlreadyRunning, QStringLiteral("another nfc-ui runs in this session"));

    ConnUi::ContactExporter::removeLeftCopies();
    termination.watch();
    const BusWatch buses;
    return run(arguments);
}
