// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>

#include "daemon/adapter.h"
#include "daemon/daemonservice.h"
#include "simulator.h"
#include "simulatoradaptor.h"

namespace {

enum ExitCode { Failed = 1, BadArguments = 64 };

int fail(ExitCode code, const QString &reason)
{
    std::fprintf(stderr, "nfcd-sim: %s\n", qUtf8Printable(reason));
    return code;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));

    // Each line of the daemon's log names the program.
    qSetMessagePattern(QStringLiteral("%{appname}: %{message}"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "The NFC daemon com.tavix.nfc, simulated: owns its name on the system bus and does without a "
        "reader. nfctap holds tags and devices against it."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this."));
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption handlers(
        QStringLiteral("handlers"),
        QStringLiteral(
            "Read the announcement files of handler applications from <folder> (may be repeated) instead "
            "of connui-nfc/handlers in the data folders."),
        QStringLiteral("folder"));
    const QCommandLineOption step(
        QStringLiteral("handover-step"),
        QStringLiteral("Let <ms> milliseconds pass between the steps of a handover."), QStringLiteral("ms"),
        QStringLiteral("300"));
    parser.addOptions({help, handlers, step});

    const bool understood = parser.parse(QCoreApplication::arguments());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (!understood)
        return fail(BadArguments, parser.errorText());
    bool isNumber = false;
    const int handoverStep = parser.value(step).toInt(&isNumber);
    const bool namelessFolder = parser.values(handlers).contains(QString());
    if (!isNumber || handoverStep < 0 || namelessFolder || !parser.positionalArguments().isEmpty())
        return fail(BadArguments, QStringLiteral("bad arguments; see nfcd-sim --help"));

    DaemonService service;
    Adapter adapter;
    Simulator simulator(&adapter, parser.values(handlers), handoverStep);
    new SimulatorAdaptor(&simulator);
    service.bus().registerObject(QStringLiteral("/com/tavix/nfc/simulator"), &simulator);
    QString reason;
    if (!service.start(&adapter, reason))
        return fail(Failed, reason);
    qInfo("ready");
    return application.exec();
}
