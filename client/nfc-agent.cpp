// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <optional>

#include <QCoreApplication>

#include <NfcTranslations>

#include "console/consoleface.h"
#include "core/clientrun.h"
#include "core/session.h"
#include "core/statusadaptor.h"
#include "core/terminal.h"
#include "core/terminationsignals.h"
#include "support/commandline.h"

namespace {

int run()
{
    Terminal terminal;
    ConsoleFace face(&terminal);
    Session session(&face);
    const StatusAdaptor status(&session);
    printRegistration(session, &terminal);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral("Shows the questions of the NFC daemon on the terminal, and returns the answers.\n\n"
                       "Exit codes: 0 end of input, or a signal, 1 no system bus, or a bus disconnected, 2 "
                       "another nfc-agent or nfc-ui runs in this session, 64 invalid arguments."),
        QString());
    arguments.answer(argc, argv);

    TerminationSignals termination;
    const QCoreApplication application(argc, argv);
    if (const std::optional<QString> fault = arguments.read())
        return Support::fail(Support::BadArguments, *fault);
    ConnUi::installTranslations();
    return runClient(&termination, run);
}
