// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>

#include <QCommandLineParser>
#include <QCoreApplication>

#include "daemon/adapter.h"
#include "daemon/daemonservice.h"
#include "daemon/handlerfolder.h"
#include "daemon/pcsc/cardreaders.h"
#include "daemon/polkitwatch.h"
#include "daemon/tagwriter.h"
#include "daemon/touch/touches.h"
#include "daemon/uiagent.h"

namespace {

enum ExitCode { Failed = 1, BadArguments = 64 };

int fail(ExitCode code, const QString &reason)
{
    std::fprintf(stderr, "nfcd-pcsc: %s\n", qUtf8Printable(reason));
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
        "The NFC daemon com.tavix.nfc for the contactless readers of this computer: owns its name on "
        "the system bus, and reads and writes tags through pcscd."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this."));
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption handlers(
        QStringLiteral("handlers"),
        QStringLiteral(
            "Read the announcement files of handler applications from <folder> (may be repeated) instead "
            "of connui-nfc/handlers in the data folders of the system and of the agent's user."),
        QStringLiteral("folder"));
    parser.addOptions({help, handlers});
    const bool understood = parser.parse(QCoreApplication::arguments());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (!understood)
        return fail(BadArguments, parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return fail(BadArguments, QStringLiteral("bad arguments; see nfcd-pcsc --help"));

    DaemonService service;
    Adapter adapter;
    auto *writer = new TagWriter(&adapter);
    CardReaders readers;
    const QStringList given = parser.values(handlers);
    const Touches touches(&adapter, writer, &readers, [&](const QString &kind) {
        const QStringList folders =
            given.isEmpty() ? HandlerFolder::standardFolders(adapter.agent()->user()) : given;
        return HandlerFolder(folders).handlersFor(kind);
    });
    // pcscd may ask polkit whether to let the daemon in.
    const PolkitWatch polkit;
    QObject::connect(&polkit, &PolkitWatch::changed, &readers, &CardReaders::tryAgain);
    QString reason;
    if (!service.start(&adapter, reason))
        return fail(Failed, reason);
    qInfo("ready");
    return application.exec();
}
