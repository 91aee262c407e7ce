// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>
#include <limits>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QHash>

#include "conformance/conformance.h"
#include "support/commandline.h"
#include "tapcommand.h"

namespace {

using Support::BadArguments;
using Support::fail;

enum Outcome { Granted = 0, Rejected = 1, Canceled = 2, Nobody = 3 };

int finish(int code)
{
    if (std::fflush(stdout) == 0 && !std::ferror(stdout))
        return code;
    return fail(Support::CannotWrite, QStringLiteral("cannot write: %1").arg(qt_error_string()));
}

int printVersion()
{
    std::printf("nfctap %s\n", CONNUI_VERSION);
    return finish(Granted);
}

int printHelp()
{
    std::printf("Usage: nfctap COMMAND [ARGUMENT...]\n"
                "Holds a tag, a device or a phone against the simulated NFC daemon, and prints the user's "
                "decision.\n\n");
    for (const TapCommand &command : TapCommand::all()) {
        const QByteArray usage = QByteArray(command.name) + ' ' + command.synopsis;
        std::printf("  %-26s %s\n", usage.constData(), command.help);
    }
    std::printf("\nExit codes: %d granted, %d rejected, %d canceled, %d no agent or no daemon, %d invalid "
                "arguments,\n"
                "%d output that cannot be written.\n",
                Granted, Rejected, Canceled, Nobody, BadArguments, Support::CannotWrite);
    return finish(Granted);
}

// The daemon's words for an outcome, and their exit codes. Anything else is an error name of the client's
// own.
Outcome exitCode(const QString &outcome)
{
    static const QHash<QString, Outcome> codes = {
        {QStringLiteral("granted"), Granted},   {QStringLiteral("announced"), Granted},
        {QStringLiteral("completed"), Granted}, {QStringLiteral("done"), Granted},
        {QStringLiteral("written"), Granted},   {QStringLiteral("canceled"), Canceled},
        {QStringLiteral("no-agent"), Nobody},   {QStringLiteral("off"), Nobody},
        {QStringLiteral("no-writer"), Nobody},
    };
    return codes.value(outcome, Rejected);
}

QString explanation(const QString &outcome)
{
    static const QHash<QString, QString> explanations = {
        {QStringLiteral("no-agent"), QStringLiteral("no agent is registered with the daemon")},
        {QStringLiteral("off"), QStringLiteral("the adapter is switched off")},
        {QStringLiteral("no-writer"), QStringLiteral("the daemon writes no tags")},
    };
    return explanations.value(outcome, outcome);
}

bool isDeath(const QDBusMessage &reply)
{
    return reply.errorName() == QDBusError::errorString(QDBusError::NoReply);
}

QDBusMessage call(const QString &path, const char *interface, const QString &method,
                  const QVariantList &arguments)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("com.tavix.nfc"), path,
                                       QStringLiteral("com.tavix.nfc.") + QLatin1String(interface), method);
    call.setArguments(arguments);
    // A tag does not start a daemon.
    call.setAutoStartService(false);
    QDBusConnection bus = QDBusConnection::systemBus();
    // The connection hands on nothing before: a call that waits would not end when the bus goes.
    QCoreApplication::processEvents();
    constexpr int noTimeLimit = std::numeric_limits<int>::max();
    return bus.call(call, QDBus::Block, noTimeLimit);
}

// The outcome of writing a message, as nfctap prints it.
QString writingOutcome(const QString &error)
{
    static const QHash<QString, QString> outcomes = {
        {QString(), QStringLiteral("written")},
        {QStringLiteral("com.tavix.nfc.Error.Canceled"), QStringLiteral("canceled")},
        {QStringLiteral("com.tavix.nfc.Error.Off"), QStringLiteral("off")},
        {QDBusError::errorString(QDBusError::UnknownMethod), QStringLiteral("no-writer")},
        {QDBusError::errorString(QDBusError::UnknownInterface), QStringLiteral("no-writer")},
    };
    return outcomes.value(error, error);
}

int report(const QString &outcome, const QString &what)
{
    const Outcome code = exitCode(outcome);
    if (code == Nobody)
        return fail(code, QStringLiteral("%1: %2").arg(what, explanation(outcome)));
    std::printf("%s: %s\n", qUtf8Printable(outcome), qUtf8Printable(what));
    return finish(code);
}

int write(const Tap &tap)
{
    const QDBusMessage adapter = call(QStringLiteral("/"), "Manager", QStringLiteral("DefaultAdapter"), {});
    if (adapter.type() == QDBusMessage::ErrorMessage)
        return fail(Nobody, QStringLiteral("%1: no daemon: %2").arg(tap.what, adapter.errorMessage()));
    const auto path = adapter.arguments().value(0).value<QDBusObjectPath>();
    const QDBusMessage reply = call(path.path(), "TagWriter", tap.method, tap.arguments);
    if (isDeath(reply))
        return fail(Nobody, QStringLiteral("%1: the daemon has died").arg(tap.what));
    return report(writingOutcome(reply.errorName()), tap.what);
}

int hold(const Tap &tap)
{
    const QDBusMessage reply =
        call(QStringLiteral("/com/tavix/nfc/simulator"), "Simulator", tap.method, tap.arguments);
    if (isDeath(reply) && tap.method == QLatin1String("Crash")) {
        std::printf("done: %s\n", qUtf8Printable(tap.what));
        return finish(Granted);
    }
    if (isDeath(reply))
        return fail(Nobody, QStringLiteral("%1: the daemon has died").arg(tap.what));
    if (reply.type() == QDBusMessage::ErrorMessage)
        return fail(Nobody,
                    QStringLiteral("%1: no simulated daemon: %2").arg(tap.what, reply.errorMessage()));

    return report(reply.arguments().value(0).toString(), tap.what);
}

int check()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(QStringLiteral("com.tavix.nfc")))
        return fail(Nobody, QStringLiteral("conformance: no daemon"));
    return finish(Conformance().run() ? Granted : Rejected);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    // Makes QtDBus register its own types now, not on its thread while a reply is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments == QStringList{QStringLiteral("--help")} || arguments == QStringList{QStringLiteral("-h")})
        return printHelp();
    if (arguments == QStringList{QStringLiteral("--version")} ||
        arguments == QStringList{QStringLiteral("-v")})
        return printVersion();
    if (arguments.isEmpty())
        return fail(BadArguments, QStringLiteral("no command; see nfctap --help"));

    const TapCommand *command = TapCommand::named(arguments.first());
    if (!command)
        return fail(BadArguments,
                    QStringLiteral("no command '%1'; see nfctap --help").arg(arguments.first()));
    const QStringList own = arguments.mid(1);
    if (!command->accepts(own)) {
        return fail(BadArguments, QStringLiteral("usage: nfctap %1 %2")
                                      .arg(QLatin1String(command->name), QLatin1String(command->synopsis)));
    }
    QString fault;
    const std::optional<Tap> tap = command->make(own, fault);
    if (!tap)
        return fail(BadArguments, fault);
    switch (tap->kind) {
    case Tap::Writing:
        return write(*tap);
    case Tap::Check:
        return check();
    default:
        return hold(*tap);
    }
}
