// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <optional>

#include <QCoreApplication>
#include <QDBusConnection>

#include "daemon/adapter.h"
#include "daemon/daemonservice.h"
#include "simulator.h"
#include "simulatoradaptor.h"
#include "support/commandline.h"

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral("Simulates the NFC daemon com.tavix.nfc: owns its name on the system bus and needs no "
                       "reader. nfctap holds tags and devices against it.\n\n"
                       "Exit codes: 0 the bus disconnected, 1 no system bus, or the name belongs to another "
                       "process, 64 invalid "
                       "arguments."),
        QStringLiteral("[--handlers FOLDER]... [--handover-step MS]"));
    const auto handlers = QStringLiteral("handlers");
    const auto step = QStringLiteral("handover-step");
    arguments.addOption(
        handlers,
        QStringLiteral(
            "Read the announcement files of handler applications from <folder> (may be repeated) instead "
            "of connui-nfc/handlers in the data folders."),
        QStringLiteral("folder"));
    arguments.addOption(step, QStringLiteral("Wait <ms> milliseconds between the steps of a handover."),
                        QStringLiteral("ms"), QStringLiteral("300"));
    arguments.answer(argc, argv);

    QCoreApplication application(argc, argv);
    // Each line of the daemon's log names the program.
    qSetMessagePattern(QStringLiteral("%{appname}: %{message}"));
    if (const std::optional<QString> fault = arguments.read())
        return Support::fail(Support::BadArguments, *fault);
    const QStringList folders = arguments.values(handlers);
    bool isNumber = false;
    const int handoverStep = arguments.values(step).constLast().toInt(&isNumber);
    if (!isNumber || handoverStep < 0 || folders.contains(QString()))
        return Support::fail(Support::BadArguments, arguments.usage());

    DaemonService service;
    Adapter adapter;
    Simulator simulator(&adapter, folders, handoverStep);
    new SimulatorAdaptor(&simulator);
    service.bus().registerObject(QStringLiteral("/com/tavix/nfc/simulator"), &simulator);
    QString reason;
    if (!service.start(&adapter, reason))
        return Support::fail(Support::NoBus, reason);
    qInfo("ready");
    return application.exec();
}
