// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QIcon>

#include <NfcTranslations>

#include "core/buswatch.h"
#include "core/terminal.h"
#include "core/terminationsignals.h"
#include "remote/remotecontrol.h"
#include "settings/settingswindow.h"
#include "support/commandline.h"
#include "support/windowapplication.h"

namespace {

constexpr QLatin1String remoteControl("remote-control");

// Lets another program see and touch the window until the input ends.
struct Remote
{
    Terminal terminal;
    RemoteControl control{&terminal};
};

} // namespace

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral(
            "Switches NFC on and off, and chooses whether the content of a tag is opened without a "
            "question.\n\n"
            "Exit codes: 0 closed, or a signal, 1 no system bus, or a bus disconnected, 3 no display, 64 "
            "invalid arguments."),
        QStringLiteral("[--remote-control]"));
    arguments.addOption(remoteControl,
                        QStringLiteral("Report on standard output what the screen shows, and take commands "
                                       "from standard input: press TEXT, "
                                       "escape, close, turn ANGLE, picture FILE. For demos and tests."));
    arguments.answer(argc, argv);

    TerminationSignals termination;
    const Support::ApplicationPointer application = Support::newApplication(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-settings"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("nfc-settings")));
    ConnUi::installTranslations();
    if (const std::optional<QString> fault = arguments.read())
        return Support::fail(Support::BadArguments, *fault);
    if (!QDBusConnection::systemBus().isConnected())
        return Support::fail(Support::NoBus, QDBusConnection::systemBus().lastError().message());

    termination.watch();
    const BusWatch buses;
    const auto remote = arguments.isSet(remoteControl) ? std::make_unique<Remote>() : nullptr;
    SettingsWindow window;
    window.show();
    return QCoreApplication::exec();
}
