// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "panel/conversation.h"

#include <csignal>
#include <sys/prctl.h>

#include <QRegularExpression>

namespace {

constexpr QLatin1String daemonRole("daemon");
constexpr QLatin1String clientRole("client");
constexpr QLatin1String worldRole("world");
constexpr QLatin1String daemonName("com.tavix.nfc");

QStringList rules()
{
    QStringList rules = {QStringLiteral("type='method_return'"), QStringLiteral("type='error'")};
    for (const char *interface :
         {"Manager", "Adapter", "UIAgent", "HandoverRequestor", "Transfers", "TagWriter", "Simulator"})
        rules.append(QStringLiteral("interface='com.tavix.nfc.%1'").arg(QLatin1String(interface)));
    return rules;
}

// The fields of a message's first line: "sender=:1.4 -> destination=:1.2 serial=12 path=/; member=Release".
QHash<QString, QString> fieldsOf(const QString &line)
{
    static const QRegularExpression field(QStringLiteral("(\\w+)=([^ ;]+)"));
    QHash<QString, QString> fields;
    QRegularExpressionMatchIterator matches = field.globalMatch(line);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        fields.insert(match.captured(1), match.captured(2));
    }
    return fields;
}

QString key(const QString &caller, const QString &serial)
{
    return caller + QLatin1Char(' ') + serial;
}

} // namespace

Conversation::Conversation(QObject *parent) : QObject(parent)
{
    connect(&monitor, &QProcess::readyReadStandardOutput, this, &Conversation::read);
    // However the panel ends, its monitor does not stay behind.
    monitor.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    monitor.start(QStringLiteral("dbus-monitor"), QStringList{QStringLiteral("--system")} + rules());
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
        QByteArray line = monitor.readLine();
        line.chop(1);
        readLine(QString::fromUtf8(line));
    }
}

void Conversation::readLine(const QString &line)
{
    if (line.startsWith(QLatin1Char(' '))) {
        if (relevant)
            Q_EMIT detailed(line);
        return;
    }
    const QHash<QString, QString> fields = fieldsOf(line);
    const QString kind = line.section(QStringLiteral(" time="), 0, 0);
    const bool answers = fields.contains(QStringLiteral("reply_serial"));
    const QString sentence = answers ? answerSentence(fields, kind) : callSentence(fields, kind);
    relevant = !sentence.isEmpty();
    if (relevant)
        Q_EMIT said(sentence);
}

QString Conversation::callSentence(const QHash<QString, QString> &fields, const QString &kind)
{
    const QString sender = fields.value(QStringLiteral("sender"));
    const QString member = fields.value(QStringLiteral("member"));
    const QString interface = fields.value(QStringLiteral("interface"));
    // The bus's own news to the monitor.
    if (!interface.startsWith(daemonName))
        return {};
    if (kind == QLatin1String("signal"))
        return QStringLiteral("%1 announces: %2").arg(daemonRole, member);

    const bool asksClient = interface.endsWith(QLatin1String(".UIAgent")) ||
                            interface.endsWith(QLatin1String(".HandoverRequestor"));
    const bool fromWorld = interface.endsWith(QLatin1String(".Simulator"));
    const QString receiver = asksClient ? clientRole : daemonRole;
    const QString caller = fromWorld ? worldRole : clientRole;
    roles.insert(sender, asksClient ? daemonRole : caller);
    roles.insert(fields.value(QStringLiteral("destination")), receiver);
    calls.insert(key(sender, fields.value(QStringLiteral("serial"))), member);
    return QStringLiteral("%1 calls %2: %3").arg(roles.value(sender), receiver, member);
}

QString Conversation::answerSentence(const QHash<QString, QString> &fields, const QString &kind)
{
    const QString asker = fields.value(QStringLiteral("destination"));
    const QString member = calls.take(key(asker, fields.value(QStringLiteral("reply_serial"))));
    if (member.isEmpty())
        return {};
    const QString who = roles.value(asker) == daemonRole ? clientRole : daemonRole;
    const QString answer = kind == QLatin1String("error")
                               ? QStringLiteral("error %1").arg(fields.value(QStringLiteral("error_name")))
                               : QStringLiteral("done");
    return QStringLiteral("%1 answers %2: %3").arg(who, member, answer);
}
