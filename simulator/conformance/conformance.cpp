// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "conformance/conformance.h"

#include <cstdio>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QVariantMap>

namespace {

using Result = Conformance::Result;

const char agentPath[] = "/com/tavix/nfcUIAgent/conformance";

Result passIf(bool isTrue, const QString &otherwise)
{
    return isTrue ? Result() : Result{Result::Failed, otherwise};
}

bool isReply(const QDBusMessage &message)
{
    return message.type() == QDBusMessage::ReplyMessage;
}

// The reply, for a sentence.
QString described(const QDBusMessage &message)
{
    if (isReply(message))
        return QStringLiteral("it replied '%1'").arg(message.signature());
    return QStringLiteral("it answered %1: %2").arg(message.errorName(), message.errorMessage());
}

Result passIfReply(const QDBusMessage &message)
{
    return passIf(isReply(message), described(message));
}

// An answer of the daemon's own, not of the bus for a daemon that does not answer.
Result passIfRefused(const QDBusMessage &message)
{
    const bool isOwnError = message.type() == QDBusMessage::ErrorMessage &&
                            message.errorName() != QDBusError::errorString(QDBusError::NoReply);
    return passIf(isOwnError, described(message));
}

bool isMissing(const QDBusMessage &message)
{
    return message.errorName() == QDBusError::errorString(QDBusError::UnknownMethod) ||
           message.errorName() == QDBusError::errorString(QDBusError::UnknownInterface);
}

Result missing(const char *interface)
{
    return {Result::Skipped, QStringLiteral("there is no com.tavix.nfc.%1").arg(QLatin1String(interface))};
}

// Waits for what has to come about within five seconds.
template <typename Condition>
bool comesTrue(Condition condition)
{
    const QDeadlineTimer end(5000);
    while (!condition() && !end.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return condition();
}

QVariant path(const QString &path)
{
    return QVariant::fromValue(QDBusObjectPath(path));
}

} // namespace

Conformance::Conformance() = default;

bool Conformance::run()
{
    static constexpr Check checks[] = {
        {"names its adapter", &Conformance::namesItsAdapter},
        {"reports its state", &Conformance::reportsItsState},
        {"switches, and announces it", &Conformance::switchesAndAnnounces},
        {"refuses other states and properties", &Conformance::refusesOtherStates},
        {"registers an agent, also twice", &Conformance::registersAnAgent},
        {"refuses a second agent", &Conformance::refusesASecondAgent},
        {"lets no stranger unregister the agent", &Conformance::keepsTheAgentFromStrangers},
        {"has room for another agent once one is unregistered", &Conformance::letsTheAgentGo},
        {"drops the agent of a process that leaves", &Conformance::dropsTheAgentOfALeavingProcess},
        {"refuses a handover to a carrier that does not exist", &Conformance::refusesAnUnknownCarrier},
        {"refuses to cancel a handover that is not under way", &Conformance::refusesToCancelNoHandover},
        {"ignores the end of a transfer that is not under way", &Conformance::takesTheEndOfAnyTransfer},
        {"refuses to write bytes that are not a message", &Conformance::refusesToWriteJunk},
        {"keeps one message to write, until it is canceled", &Conformance::keepsOneMessageToWrite},
    };
    static constexpr const char *marks[] = {"passed ", "FAILED ", "skipped"};
    int counts[] = {0, 0, 0};
    for (const Check &check : checks) {
        const Result result = (this->*check.check)();
        ++counts[result.kind];
        const QByteArray reason = result.reason.isEmpty() ? QByteArray() : ": " + result.reason.toUtf8();
        std::printf("%s  %s%s\n", marks[result.kind], check.name, reason.constData());
    }
    std::printf("%d passed, %d failed, %d skipped\n", counts[Result::Passed], counts[Result::Failed],
                counts[Result::Skipped]);
    return counts[Result::Failed] == 0;
}

void Conformance::noteProperty(const QString &name, const QDBusVariant &value)
{
    if (name == QLatin1String("State"))
        announcedState = value.variant().toString();
}

Result Conformance::namesItsAdapter()
{
    const QDBusMessage reply = client.call("Manager", "DefaultAdapter");
    if (reply.signature() != QLatin1String("o"))
        return {Result::Failed, described(reply)};
    adapter = reply.arguments().constFirst().value<QDBusObjectPath>();
    client.setPath(adapter.path());
    stranger.setPath(adapter.path());
    client.connectAdapter(QStringLiteral("PropertyChanged"), this, SLOT(noteProperty(QString, QDBusVariant)));
    return {};
}

QString Conformance::state() const
{
    const QDBusMessage reply = client.call("Adapter", "GetProperties");
    if (reply.signature() != QLatin1String("a{sv}"))
        return described(reply);
    const auto properties = qdbus_cast<QVariantMap>(reply.arguments().constFirst());
    return properties.value(QStringLiteral("State")).toString();
}

QDBusMessage Conformance::setState(const QString &state) const
{
    return client.call("Adapter", "SetProperty",
                       {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(state))});
}

Result Conformance::reportsItsState()
{
    const QString reported = state();
    return passIf(reported == QLatin1String("on") || reported == QLatin1String("off"),
                  QStringLiteral("State is '%1'").arg(reported));
}

Result Conformance::switchesAndAnnounces()
{
    const QString before = state();
    const QString after = before == QLatin1String("on") ? QStringLiteral("off") : QStringLiteral("on");
    const QDBusMessage reply = setState(after);
    if (!isReply(reply))
        return {Result::Failed, described(reply)};
    const bool isAnnounced = comesTrue([this, after] { return announcedState == after; });
    const QString reported = state();
    setState(before);
    if (!isAnnounced)
        return {Result::Failed, QStringLiteral("no PropertyChanged came within 5 s")};
    return passIf(reported == after, QStringLiteral("State is '%1' after it was set").arg(reported));
}

Result Conformance::refusesOtherStates()
{
    const Result otherState = passIfRefused(setState(QStringLiteral("perhaps")));
    if (otherState.kind == Result::Failed)
        return otherState;
    return passIfRefused(client.call(
        "Adapter", "SetProperty",
        {QStringLiteral("NoSuchProperty"), QVariant::fromValue(QDBusVariant(QStringLiteral("on")))}));
}

QDBusMessage Conformance::registerAgent(const Peer &peer, const QString &agent)
{
    return peer.call("Adapter", "RegisterUIAgent", {path(agent)});
}

Result Conformance::registersAnAgent()
{
    const QString agent = QLatin1String(agentPath);
    const QDBusMessage first = registerAgent(client, agent);
    return isReply(first) ? passIfReply(registerAgent(client, agent)) : passIfReply(first);
}

Result Conformance::refusesASecondAgent()
{
    return passIfRefused(registerAgent(stranger, QLatin1String(agentPath)));
}

Result Conformance::keepsTheAgentFromStrangers()
{
    stranger.call("Adapter", "UnregisterUIAgent", {path(QLatin1String(agentPath))});
    return passIfRefused(registerAgent(stranger, QLatin1String(agentPath)));
}

Result Conformance::letsTheAgentGo()
{
    const QVariantList agent = {path(QLatin1String(agentPath))};
    const QDBusMessage farewell = client.call("Adapter", "UnregisterUIAgent", agent);
    if (!isReply(farewell))
        return {Result::Failed, described(farewell)};
    const QDBusMessage next = registerAgent(stranger, QLatin1String(agentPath));
    stranger.call("Adapter", "UnregisterUIAgent", agent);
    return passIfReply(next);
}

Result Conformance::dropsTheAgentOfALeavingProcess()
{
    {
        Peer leaving;
        leaving.setPath(adapter.path());
        const QDBusMessage reply = registerAgent(leaving, QLatin1String(agentPath));
        if (!isReply(reply))
            return {Result::Failed, described(reply)};
    }
    const auto hasRoom = [this] { return isReply(registerAgent(client, QLatin1String(agentPath))); };
    const bool isDropped = comesTrue(hasRoom);
    client.call("Adapter", "UnregisterUIAgent", {path(QLatin1String(agentPath))});
    return passIf(isDropped, QStringLiteral("it was still there after 5 s"));
}

Result Conformance::refusesAnUnknownCarrier()
{
    return passIfRefused(client.call("Adapter", "RequestHandover",
                                     {path(QStringLiteral("/com/tavix/nfcHandoverRequestor")),
                                      QStringLiteral("no-such-carrier"), QString()}));
}

Result Conformance::refusesToCancelNoHandover()
{
    return passIfRefused(
        client.call("Adapter", "CancelHandoverRequest", {QStringLiteral("no-such-carrier")}));
}

Result Conformance::takesTheEndOfAnyTransfer()
{
    const QDBusMessage reply = client.call("Transfers", "CancelTransfer", {0xFFFFFFFFU});
    return isMissing(reply) ? missing("Transfers") : passIfReply(reply);
}

Result Conformance::refusesToWriteJunk()
{
    const QDBusMessage reply = client.call("TagWriter", "WriteNdef", {QByteArray("junk")});
    if (isMissing(reply))
        return missing("TagWriter");
    return passIf(reply.errorName() == QLatin1String("com.tavix.nfc.Error.InvalidMessage"), described(reply));
}

Result Conformance::keepsOneMessageToWrite()
{
    const QVariantList message = {QByteArray::fromHex("d10102550061")};
    if (isMissing(client.call("TagWriter", "Cancel")))
        return missing("TagWriter");
    const QString before = state();
    setState(QStringLiteral("on"));
    const QDBusPendingCall waiting = client.callLater("TagWriter", "WriteNdef", message);
    const QDBusMessage second = client.call("TagWriter", "WriteNdef", message);
    const QDBusMessage farewell = client.call("TagWriter", "Cancel");
    const bool isAnswered = comesTrue([&waiting] { return waiting.isFinished(); });
    setState(before);
    if (second.errorName() != QLatin1String("com.tavix.nfc.Error.Busy"))
        return {Result::Failed, QStringLiteral("to a second message %1").arg(described(second))};
    if (!isReply(farewell) || !isAnswered)
        return {Result::Failed, QStringLiteral("to Cancel %1").arg(described(farewell))};
    return passIf(waiting.error().name() == QLatin1String("com.tavix.nfc.Error.Canceled"),
                  QStringLiteral("to the canceled message %1").arg(described(waiting.reply())));
}
