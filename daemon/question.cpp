// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/question.h"

#include <utility>

#include <QDBusError>
#include <QHash>

#include "daemon/uiagent.h"

namespace {

QString errorOutcome(const QString &error)
{
    static const QHash<QString, QString> outcomes = {
        {QStringLiteral("com.tavix.nfc.UIAgent.Rejected"), QStringLiteral("rejected")},
        {QStringLiteral("com.tavix.nfc.UIAgent.Canceled"), QStringLiteral("canceled")},
        // The bus answers for a process that has left, before or during the call.
        {QDBusError::errorString(QDBusError::NoReply), QStringLiteral("canceled")},
        {QDBusError::errorString(QDBusError::ServiceUnknown), QStringLiteral("canceled")},
        {QDBusError::errorString(QDBusError::UnknownObject), QStringLiteral("no-agent")},
        {QDBusError::errorString(QDBusError::UnknownMethod), QStringLiteral("no-agent")},
    };
    return outcomes.value(error, error);
}

} // namespace

Question::Question(const UiAgent *agent, const QString &method, const QVariantList &arguments,
                   const QString &success, QObject *parent)
    : QDBusPendingCallWatcher(agent->call(method, arguments), parent)
    , success(success)
{
    connect(this, &QDBusPendingCallWatcher::finished, this, &Question::report);
    connect(agent, &UiAgent::putAside, this, [this] { end(QStringLiteral("canceled")); });
}

void Question::report()
{
    end(isError() ? errorOutcome(error().name()) : success);
}

void Question::end(const QString &outcome)
{
    if (std::exchange(isOver, true))
        return;
    deleteLater();
    Q_EMIT decided(outcome);
}
