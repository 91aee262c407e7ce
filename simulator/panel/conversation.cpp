// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "panel/conversation.h"

#include <csignal>
#include <sys/prctl.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "panel/busvalue.h"

namespace {

constexpr QLatin1String daemonRole("daemon");
constexpr QLatin1String clientRole("client");
constexpr QLatin1String worldRole("world");
constexpr QLatin1String daemonName("com.tavix.nfc.");

QStringList arguments()
{
    QStringList arguments = {QStringLiteral("monitor"), QStringLiteral("--system"),
                             QStringLiteral("--json=short"), QStringLiteral("--match=type='method_return'"),
                             QStringLiteral("--match=type='error'")};
    for (const char *interface :
         {"Manager", "Adapter", "UIAgent", "HandoverRequestor", "Transfers", "TagWriter", "Simulator"})
        arguments.append(
            QStringLiteral("--match=interface='com.tavix.nfc.%1'").arg(QLatin1String(interface)));
    return arguments;
}

QString field(const QJsonObject &message, const char *name)
{
    return message[QLatin1String(name)].toString();
}

QString key(const QString &caller, const QJsonValue &serial)
{
    return QStringLiteral("%1 %2").arg(caller).arg(serial.toInteger());
}

QStringList valuesOf(const QJsonObject &message)
{
    QStringList values;
    const QJsonArray data = message[QLatin1String("payload")][QLatin1String("data")].toArray();
    for (const QJsonValueConstRef value : data)
        values.append(BusValue::text(value));
    return values;
}

Conversation::Message callOrSignal(const QJsonObject &message)
{
    const QString interface = field(message, "interface");
    const QString member = field(message, "member");
    const QStringList values = valuesOf(message);
    if (field(message, "type") == QLatin1String("signal"))
        return {daemonRole, QStringLiteral("all"), false, member, values};
    if (interface.endsWith(QLatin1String(".UIAgent")) ||
        interface.endsWith(QLatin1String(".HandoverRequestor")))
        return {daemonRole, clientRole, false, member, values};
    const QString caller = interface.endsWith(QLatin1String(".Simulator")) ? worldRole : clientRole;
    return {caller, daemonRole, false, member, values};
}

} // namespace

Conversation::Conversation(QObject *parent) : QObject(parent)
{
    connect(&monitor, &QProcess::readyReadStandardOutput, this, &Conversation::read);
    connect(&monitor, &QProcess::errorOccurred, this, &Conversation::failed);
    // However the panel ends, its monitor does not stay behind.
    monitor.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    monitor.start(QStringLiteral("busctl"), arguments());
}

Conversation::~Conversation()
{
    monitor.disconnect(this);
    // It keeps nothing that could be lost, and may hang.
    monitor.kill();
    monitor.waitForFinished();
}

void Conversation::read()
{
    while (monitor.canReadLine()) {
        const QJsonObject message = QJsonDocument::fromJson(monitor.readLine()).object();
        if (message.contains(QLatin1String("reply_cookie")))
            readAnswer(message);
        else if (field(message, "interface").startsWith(daemonName)) // not the bus's own news to the monitor
            readCall(message);
    }
}

void Conversation::readCall(const QJsonObject &message)
{
    const Message call = callOrSignal(message);
    if (field(message, "type") == QLatin1String("method_call"))
        calls.insert(key(field(message, "sender"), message[QLatin1String("cookie")]), call);
    Q_EMIT said(call);
}

void Conversation::readAnswer(const QJsonObject &message)
{
    Message answer = calls.take(key(field(message, "destination"), message[QLatin1String("reply_cookie")]));
    if (answer.what.isEmpty())
        return;
    const QString error = field(message, "error_name");
    const QString outcome = error.isEmpty() ? QStringLiteral("done") : QStringLiteral("error %1").arg(error);
    answer.isAnswer = true;
    answer.what += QStringLiteral(": %1").arg(outcome);
    answer.values = valuesOf(message);
    Q_EMIT said(answer);
}
