// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <optional>

#include <QCoreApplication>

#include "daemon/adapter.h"
#include "daemon/daemonservice.h"
#include "daemon/handlerfolder.h"
#include "daemon/pcsc/cardreaders.h"
#include "daemon/polkitwatch.h"
#include "daemon/tagwriter.h"
#include "daemon/touch/touches.h"
#include "daemon/uiagent.h"
#include "support/commandline.h"

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral(
            "The NFC daemon com.tavix.nfc for the contactless readers of this computer: owns its name on "
            "the system bus, and reads and writes tags through pcscd.\n\n"
            "Exit codes: 0 the bus disconnected, 1 no system bus, or the name belongs to another process, 64 "
            "invalid arguments."),
        QStringLiteral("[--handlers FOLDER]..."));
    const auto handlers = QStringLiteral("handlers");
    arguments.addOption(
        handlers,
        QStringLiteral(
            "Read the announcement files of handler applications from <folder> (may be repeated) instead "
            "of connui-nfc/handlers in the data folders of the system and of the agent's user."),
        QStringLiteral("folder"));
    arguments.answer(argc, argv);

    QCoreApplication application(argc, argv);
    // Each line of the daemon's log names the program.
    qSetMessagePattern(QStringLiteral("%{appname}: %{message}"));
    if (const std::optional<QString> fault = arguments.read())
        return Support::fail(Support::BadArguments, *fault);
    const QStringList given = arguments.values(handlers);
    if (given.contains(QString()))
        return Support::fail(Support::BadArguments, arguments.usage());

    DaemonService service;
    Adapter adapter;
    auto *writer = new TagWriter(&adapter);
    CardReaders readers;
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
        return Support::fail(Support::NoBus, reason);
    qInfo("ready");
    return application.exec();
}
